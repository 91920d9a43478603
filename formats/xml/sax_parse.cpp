#include "formats/xml/sax_parse.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>

#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "formats/text/byte_order_mark.h"
#include "formats/xml/libxml_setup.h"

namespace intake {

namespace {

// References in attributes are told as what they stand for; without a DTD there are no others.
constexpr int OPTIONS = XML_PARSE_NONET | XML_PARSE_NOENT;

constexpr size_t MAX_DEPTH = 1000;

std::string_view view(const xmlChar* text) {
    return text == nullptr ? std::string_view() : reinterpret_cast<const char*>(text);
}

struct ContextDeleter {
    void operator()(xmlParserCtxt* context) const { xmlFreeParserCtxt(context); }
};

/// Passes libxml2's events on. Nothing that is thrown passes through the library: it is kept, and
/// thrown again when the library has returned.
class SaxParser {
public:
    SaxParser(XmlEvents& events, const EndMark& endMark);
    void parse(ByteStream& stream);

private:
    static SaxParser& of(void* context) {
        return *static_cast<SaxParser*>(static_cast<xmlParserCtxt*>(context)->_private);
    }
    static void onStartElement(void* context, const xmlChar* name, const xmlChar* prefix,
                               const xmlChar* space, int, const xmlChar**, int attributeCount, int,
                               const xmlChar** attributes);
    static void onEndElement(void* context, const xmlChar*, const xmlChar*, const xmlChar*);
    static void onText(void* context, const xmlChar* text, int length);
    static void onDtd(void* context, const xmlChar*, const xmlChar*, const xmlChar*);
    static void onError(void*, xmlErrorPtr) {}

    void feed(const char* bytes, size_t length, bool last);
    void setAttributes(const xmlChar** attributes, int count);
    void enter();
    void stop();

    template <class Step>
    void guarded(Step step) {
        if (stopped_) {
            return;
        }
        try {
            step();
        } catch (...) {
            thrown_ = std::current_exception();
            stop();
        }
    }

    XmlEvents& events_;
    const EndMark& endMark_;
    std::unique_ptr<xmlParserCtxt, ContextDeleter> context_;
    std::vector<XmlAttribute> attributes_;
    std::vector<std::string> names_;  // of the attributes in a namespace
    std::string rootSpace_;
    size_t depth_ = 0;
    bool begun_ = false;
    bool rootSeen_ = false;
    bool stopped_ = false;
    std::exception_ptr thrown_;
};

SaxParser::SaxParser(XmlEvents& events, const EndMark& endMark)
    : events_(events),
      endMark_(endMark),
      context_(xmlCreatePushParserCtxt(nullptr, nullptr, nullptr, 0, nullptr)) {
    if (context_ == nullptr) {
        throw std::bad_alloc();
    }
    xmlCtxtUseOptions(context_.get(), OPTIONS);
    xmlSAXHandler& handler = *context_->sax;
    handler = {};
    handler.initialized = XML_SAX2_MAGIC;
    handler.startElementNs = onStartElement;
    handler.endElementNs = onEndElement;
    handler.characters = onText;
    handler.ignorableWhitespace = onText;
    handler.cdataBlock = onText;
    handler.internalSubset = onDtd;
    handler.serror = onError;
    context_->_private = this;
}

void SaxParser::parse(ByteStream& stream) {
    events_.startDocument();
    std::vector<char> buffer(64 << 10);
    size_t length = buffer.size();
    while (!stopped_ && length == buffer.size()) {
        endMark_.throwIfSet();
        length = stream.read(buffer.data(), buffer.size());
        if (!begun_ && byteOrderMarkOf({buffer.data(), length}).encoding != nullptr) {
            // The mark says it; what the declaration says may name the same in a way that is
            // refused behind a mark.
            xmlCtxtUseOptions(context_.get(), OPTIONS | XML_PARSE_IGNORE_ENC);
        }
        begun_ = true;
        feed(buffer.data(), length, length < buffer.size());
    }
}

void SaxParser::feed(const char* bytes, size_t length, bool last) {
    xmlParseChunk(context_.get(), bytes, static_cast<int>(length), last ? 1 : 0);
    if (thrown_ != nullptr) {
        std::rethrow_exception(thrown_);
    }
    if (!stopped_ && context_->wellFormed == 0) {
        const int line = context_->lastError.line;
        std::string message(view(reinterpret_cast<const xmlChar*>(context_->lastError.message)));
        message.erase(message.find_last_not_of('\n') + 1);
        throw XmlFault("is no well-formed XML: " + message + " (line " + std::to_string(line) +
                       ")");
    }
}

void SaxParser::enter() {
    if (++depth_ > MAX_DEPTH) {
        throw XmlFault("is nested deeper than " + std::to_string(MAX_DEPTH) + " elements");
    }
}

void SaxParser::stop() {
    stopped_ = true;
    xmlStopParser(context_.get());
}

void SaxParser::setAttributes(const xmlChar** attributes, int count) {
    attributes_.clear();
    names_.clear();
    names_.reserve(static_cast<size_t>(count));  // views of them are taken
    for (int i = 0; i < count; ++i, attributes += 5) {
        std::string_view name = view(attributes[0]);
        if (attributes[1] != nullptr) {
            name = names_.emplace_back(":").append(name);
        }
        const auto* const value = reinterpret_cast<const char*>(attributes[3]);
        attributes_.push_back({name, {value, static_cast<size_t>(attributes[4] - attributes[3])}});
    }
}

void SaxParser::onStartElement(void* context, const xmlChar* name, const xmlChar*,
                               const xmlChar* space, int, const xmlChar**, int attributeCount, int,
                               const xmlChar** attributes) {
    SaxParser& parser = of(context);
    parser.guarded([&] {
        if (!parser.rootSeen_) {
            parser.rootSeen_ = true;
            parser.rootSpace_ = view(space);
        }
        parser.enter();
        parser.setAttributes(attributes, attributeCount);
        parser.events_.startElement(
            view(space) == parser.rootSpace_ ? view(name) : std::string_view(),
            XmlAttributes(parser.attributes_.data(), parser.attributes_.size()));
    });
}

void SaxParser::onEndElement(void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
    SaxParser& parser = of(context);
    parser.guarded([&] {
        --parser.depth_;
        if (!parser.events_.endElement()) {
            parser.stop();
        }
    });
}

void SaxParser::onText(void* context, const xmlChar* text, int length) {
    SaxParser& parser = of(context);
    parser.guarded([&] {
        parser.events_.text({reinterpret_cast<const char*>(text), static_cast<size_t>(length)});
    });
}

void SaxParser::onDtd(void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
    of(context).guarded(
        [] { throw XmlFault("has a document type declaration, which is refused"); });
}

}  // namespace

void saxParse(ByteStream& stream, XmlEvents& events, const EndMark& endMark) {
    setUpLibxml();
    SaxParser(events, endMark).parse(stream);
}

}  // namespace intake
