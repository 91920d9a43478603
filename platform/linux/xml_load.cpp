#include "platform/linux/xml_load.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <new>
#include <system_error>

#include "platform/linux/XmlBuilder.h"
#include "platform/linux/XmlInput.h"

namespace intake {

namespace {

// With DTDs refused there are no entities to expand, so the library's limits on size and depth
// protect from nothing.
constexpr int OPTIONS = XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_COMPACT;

constexpr size_t MAX_SIZE = 0x7FFFFFFF;  // the library counts in int
constexpr const char* TOO_LARGE = "The document is larger than 2 GB";

struct ByteOrderMark {
    std::string_view bytes;
    const char* encoding;
};
constexpr std::array<ByteOrderMark, 3> BYTE_ORDER_MARKS{{
    {"\xEF\xBB\xBF", "UTF-8"},
    {"\xFF\xFE", "UTF-16LE"},
    {"\xFE\xFF", "UTF-16BE"},
}};
constexpr size_t LONGEST_MARK = 3;

/// The mark that a document begins with; one of no bytes when there is none.
ByteOrderMark findMark(std::string_view start) {
    const auto found =
        std::find_if(BYTE_ORDER_MARKS.begin(), BYTE_ORDER_MARKS.end(),
                     [start](const ByteOrderMark& mark) { return start.starts_with(mark.bytes); });
    return found == BYTE_ORDER_MARKS.end() ? ByteOrderMark{"", nullptr} : *found;
}

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
LoadedXml parse(XmlInput& input, const char* encoding, const EndMark& endMark) {
    LoadedXml loaded;
    const std::unique_ptr<xmlParserCtxt, ContextDeleter> context(xmlNewParserCtxt());
    if (context == nullptr) {
        throw std::bad_alloc();
    }
    XmlBuilder builder(context.get(), endMark);
    input.attach(builder);
    const int options = encoding == nullptr ? OPTIONS : OPTIONS | XML_PARSE_IGNORE_ENC;
    XmlDoc document(xmlCtxtReadIO(context.get(), XmlInput::onRead, nullptr, &input, nullptr,
                                  encoding, options));
    if (document != nullptr && context->wellFormed != 0 && builder.error().empty()) {
        loaded.document = std::move(document);
    } else {
        loaded.reason =
            builder.error().empty() ? "The document is not well-formed" : builder.error();
    }
    return loaded;
}

LoadedXml refused(const std::string& reason) {
    LoadedXml loaded;
    loaded.reason = reason;
    return loaded;
}

LoadedXml refusedBySystem(int error) {
    return refused(std::system_category().message(error));
}

LoadedXml parseFile(int descriptor, const EndMark& endMark) {
    std::array<char, LONGEST_MARK> start{};
    const ssize_t length = pread(descriptor, start.data(), start.size(), 0);
    if (length < 0) {
        return refusedBySystem(errno);
    }
    const ByteOrderMark mark = findMark({start.data(), static_cast<size_t>(length)});
    lseek(descriptor, static_cast<off_t>(mark.bytes.size()), SEEK_SET);
    FileInput file(descriptor);
    LoadedXml loaded = parse(file, mark.encoding, endMark);
    return file.error() == 0 ? std::move(loaded) : refusedBySystem(file.error());
}

LoadedXml loadOpenFile(int descriptor, const EndMark& endMark) {
    struct stat status {};
    if (fstat(descriptor, &status) != 0) {
        return refusedBySystem(errno);
    }
    if (S_ISDIR(status.st_mode)) {
        return refusedBySystem(EISDIR);
    }
    if (!S_ISREG(status.st_mode)) {
        return refused("It is not a file");
    }
    if (static_cast<size_t>(status.st_size) > MAX_SIZE) {
        return refused(TOO_LARGE);
    }
    return parseFile(descriptor, endMark);
}

}  // namespace

LoadedXml loadXmlFile(const std::string& path, const EndMark& endMark) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        return refusedBySystem(errno);
    }
    LoadedXml loaded = loadOpenFile(descriptor, endMark);
    ::close(descriptor);
    return loaded;
}

LoadedXml loadXmlText(std::string_view text, const EndMark& endMark, const std::string& charset) {
    if (text.size() > MAX_SIZE) {
        return refused(TOO_LARGE);
    }
    const ByteOrderMark mark = findMark(text);
    text.remove_prefix(mark.bytes.size());
    TextInput input(text);
    const bool isTold = mark.encoding == nullptr && isKnown(charset);
    return parse(input, isTold ? charset.c_str() : mark.encoding, endMark);
}

}  // namespace intake
