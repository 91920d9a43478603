#include "formats/xml/xml_load.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <exception>
#include <new>

#include "formats/text/byte_order_mark.h"
#include "formats/xml/TreeReader.h"
#include "formats/xml/XmlBuilder.h"

namespace intake {

namespace {

// With DTDs refused there are no entities to expand, so the library's limits on size and depth
// protect from nothing.
constexpr int OPTIONS = XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_COMPACT;

bool isKnown(const std::string& charset) {
    errno = 0;
    xmlCharEncodingHandler* const handler =
        charset.empty() ? nullptr : xmlFindCharEncodingHandler(charset.c_str());
    xmlCharEncCloseFunc(handler);
    if (handler == nullptr && errno == ENOMEM) {
        throw std::bad_alloc();
    }
    return handler != nullptr;
}

/// Whether the library says that there was too little memory since its error was cleared.
bool saysMemoryIsShort() {
    const xmlError* const last = xmlGetLastError();
    return last != nullptr && last->code == XML_ERR_NO_MEMORY;
}

/// Whether something that went wrong since errno was cleared may have done so for want of memory,
/// of which the library does not always tell: it ends a document where its buffer cannot grow, and
/// knows no encoding that it cannot set up. An allocation that succeeds at its second attempt, in
/// another arena, leaves the same errno; so what went well is never judged by it.
bool memoryMayBeShort() {
    return errno == ENOMEM;
}

/// Only XML has marks of UTF-32, one of which begins like one of UTF-16.
ByteOrderMark markOf(std::string_view start) {
    using std::string_view_literals::operator""sv;
    constexpr std::array<ByteOrderMark, 2> MARKS{{
        {"\xFF\xFE\0\0"sv, "UTF-32LE"},
        {"\0\0\xFE\xFF"sv, "UTF-32BE"},
    }};
    for (const ByteOrderMark& mark : MARKS) {
        if (start.starts_with(mark.bytes)) {
            return mark;
        }
    }
    return byteOrderMarkOf(start);
}

constexpr size_t LONGEST_XML_MARK = 4;

struct ContextDeleter {
    void operator()(xmlParserCtxt* context) const { xmlFreeParserCtxt(context); }
};

/// What a parser reads from, piece by piece. Made for one parse; borrows both.
class XmlInput {
public:
    /// Reads from `offset` on, as long as the builder wants more.
    XmlInput(const ByteSource& source, uint64_t offset, XmlBuilder& builder)
        : source_(source), offset_(offset), builder_(builder) {}

    /// What libxml2 calls; `input` is an XmlInput.
    static int onRead(void* input, char* buffer, int capacity);

    /// Throws again what the source threw, since nothing may fly through the library.
    void throwFailure() const;

    bool isAtEnd() const { return offset_ == source_.size(); }

private:
    int read(char* buffer, int capacity);

    const ByteSource& source_;
    uint64_t offset_;
    XmlBuilder& builder_;
    std::exception_ptr failure_;
};

int XmlInput::onRead(void* input, char* buffer, int capacity) {
    return static_cast<XmlInput*>(input)->read(buffer, capacity);
}

int XmlInput::read(char* buffer, int capacity) {
    try {
        if (!builder_.wantsMore()) {
            return -1;
        }
        const size_t length = source_.read(offset_, buffer, static_cast<size_t>(capacity));
        offset_ += length;
        return static_cast<int>(length);
    } catch (...) {
        failure_ = std::current_exception();
        return -1;
    }
}

void XmlInput::throwFailure() const {
    if (failure_ != nullptr) {
        std::rethrow_exception(failure_);
    }
}

/// The library takes a zero, and what cannot be half of a character, for the end of a document.
/// Zeros at its end do no harm.
bool endsInside(const xmlParserInput& parsed, const XmlInput& input) {
    const std::string_view rest(reinterpret_cast<const char*>(parsed.cur),
                                static_cast<size_t>(parsed.end - parsed.cur));
    const bool isCut = parsed.buf->raw != nullptr && xmlBufUse(parsed.buf->raw) > 0;
    return isCut || rest.find_first_not_of('\0') != std::string_view::npos ||
           (!rest.empty() && !input.isAtEnd());
}

/// `encoding` is null when the document itself says it.
LoadedXml parse(const ByteSource& source, uint64_t offset, const char* encoding,
                const EndMark& endMark, uint64_t mostNodes) {
    LoadedXml loaded;
    const std::unique_ptr<xmlParserCtxt, ContextDeleter> context(xmlNewParserCtxt());
    if (context == nullptr) {
        throw std::bad_alloc();
    }
    XmlBuilder builder(context.get(), endMark, mostNodes);
    XmlInput input(source, offset, builder);
    const int options = encoding == nullptr ? OPTIONS : OPTIONS | XML_PARSE_IGNORE_ENC;
    xmlResetLastError();
    errno = 0;
    XmlDoc document(xmlCtxtReadIO(context.get(), XmlInput::onRead, nullptr, &input, nullptr,
                                  encoding, options));
    const bool wasShort = memoryMayBeShort();
    input.throwFailure();
    if (builder.isOutOfMemory() || saysMemoryIsShort()) {
        throw std::bad_alloc();
    }
    if (builder.hasTooManyNodes()) {
        throw TooManyNodes(mostNodes);
    }
    if (document != nullptr && context->wellFormed != 0 && builder.error().empty()) {
        if (endsInside(*context->input, input)) {
            builder.refuse("Extra content at the end of the document");
        } else {
            loaded.document = std::move(document);
        }
    }
    if (loaded.document == nullptr) {
        if (wasShort) {
            throw std::bad_alloc();
        }
        loaded.reason =
            builder.error().empty() ? "The document is not well-formed" : builder.error();
    }
    return loaded;
}

}  // namespace

LoadedXml loadXml(const ByteSource& source, const EndMark& endMark, const std::string& charset,
                  uint64_t mostNodes, KeptAttributes attributes) {
    if (source.size() <= LARGEST_XML) {
        XmlDoc document = scanTree(source, charset, endMark, mostNodes, attributes);
        if (document != nullptr) {
            return {std::move(document), ""};
        }
    }
    return parseXml(source, endMark, charset, mostNodes);
}

LoadedXml parseXml(const ByteSource& source, const EndMark& endMark, const std::string& charset,
                   uint64_t mostNodes) {
    if (source.size() > LARGEST_XML) {
        return {nullptr, "The document is larger than 2 GB"};
    }
    std::array<char, LONGEST_XML_MARK> start{};
    const size_t length = source.read(0, start.data(), start.size());
    const ByteOrderMark mark = markOf({start.data(), length});
    const bool isTold = mark.encoding == nullptr && isKnown(charset);
    return parse(source, mark.bytes.size(), isTold ? charset.c_str() : mark.encoding, endMark,
                 mostNodes);
}

}  // namespace intake
