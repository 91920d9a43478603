#include "formats/xml/xml_load.h"

#include <array>
#include <new>

#include "formats/text/byte_order_mark.h"
#include "formats/xml/XmlBuilder.h"
#include "formats/xml/XmlInput.h"

namespace intake {

namespace {

// With DTDs refused there are no entities to expand, so the library's limits on size and depth
// protect from nothing.
constexpr int OPTIONS = XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_COMPACT;

constexpr uint64_t MAX_SIZE = 0x7FFFFFFF;  // the library counts in int

bool isKnown(const std::string& charset) {
    xmlCharEncodingHandler* const handler =
        charset.empty() ? nullptr : xmlFindCharEncodingHandler(charset.c_str());
    xmlCharEncCloseFunc(handler);
    return handler != nullptr;
}

struct ContextDeleter {
    void operator()(xmlParserCtxt* context) const { xmlFreeParserCtxt(context); }
};

/// `encoding` is null when the document itself says it.
LoadedXml parse(const ByteSource& source, uint64_t offset, const char* encoding,
                const EndMark& endMark) {
    LoadedXml loaded;
    const std::unique_ptr<xmlParserCtxt, ContextDeleter> context(xmlNewParserCtxt());
    if (context == nullptr) {
        throw std::bad_alloc();
    }
    XmlBuilder builder(context.get(), endMark);
    XmlInput input(source, offset, builder);
    const int options = encoding == nullptr ? OPTIONS : OPTIONS | XML_PARSE_IGNORE_ENC;
    XmlDoc document(xmlCtxtReadIO(context.get(), XmlInput::onRead, nullptr, &input, nullptr,
                                  encoding, options));
    input.throwFailure();
    if (document != nullptr && context->wellFormed != 0 && builder.error().empty()) {
        loaded.document = std::move(document);
    } else {
        loaded.reason =
            builder.error().empty() ? "The document is not well-formed" : builder.error();
    }
    return loaded;
}

}  // namespace

LoadedXml loadXml(const ByteSource& source, const EndMark& endMark, const std::string& charset) {
    if (source.size() > MAX_SIZE) {
        return {nullptr, "The document is larger than 2 GB"};
    }
    std::array<char, LONGEST_MARK> start{};
    const size_t length = source.read(0, start.data(), start.size());
    const ByteOrderMark mark = byteOrderMarkOf({start.data(), length});
    const bool isTold = mark.encoding == nullptr && isKnown(charset);
    return parse(source, mark.bytes.size(), isTold ? charset.c_str() : mark.encoding, endMark);
}

}  // namespace intake
