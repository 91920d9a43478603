#include "platform/linux/xml_load.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <system_error>

#include "platform/linux/XmlBuilder.h"

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
LoadedXml parse(xmlInputReadCallback read, void* source, const char* encoding) {
    LoadedXml loaded;
    const std::unique_ptr<xmlParserCtxt, ContextDeleter> context(xmlNewParserCtxt());
    XmlBuilder builder(context.get());
    const int options = encoding == nullptr ? OPTIONS : OPTIONS | XML_PARSE_IGNORE_ENC;
    XmlDoc document(
        xmlCtxtReadIO(context.get(), read, nullptr, source, nullptr, encoding, options));
    if (document != nullptr && context->wellFormed != 0 && builder.error().empty()) {
        loaded.document = std::move(document);
    } else {
        loaded.reason =
            builder.error().empty() ? "The document is not well-formed" : builder.error();
    }
    return loaded;
}

int readText(void* source, char* buffer, int capacity) {
    auto& rest = *static_cast<std::string_view*>(source);
    const size_t length = std::min(rest.size(), static_cast<size_t>(capacity));
    std::memcpy(buffer, rest.data(), length);
    rest.remove_prefix(length);
    return static_cast<int>(length);
}

struct OpenFile {
    int descriptor;
    int error = 0;  // of the read that failed
};

int readFile(void* source, char* buffer, int capacity) {
    auto& file = *static_cast<OpenFile*>(source);
    const ssize_t length = ::read(file.descriptor, buffer, static_cast<size_t>(capacity));
    file.error = length < 0 ? errno : 0;
    return static_cast<int>(length);
}

LoadedXml refused(const std::string& reason) {
    LoadedXml loaded;
    loaded.reason = reason;
    return loaded;
}

LoadedXml refusedBySystem(int error) {
    return refused(std::system_category().message(error));
}

LoadedXml parseFile(OpenFile file) {
    std::array<char, LONGEST_MARK> start{};
    const ssize_t length = pread(file.descriptor, start.data(), start.size(), 0);
    if (length < 0) {
        return refusedBySystem(errno);
    }
    const ByteOrderMark mark = findMark({start.data(), static_cast<size_t>(length)});
    lseek(file.descriptor, static_cast<off_t>(mark.bytes.size()), SEEK_SET);
    LoadedXml loaded = parse(readFile, &file, mark.encoding);
    return file.error == 0 ? std::move(loaded) : refusedBySystem(file.error);
}

LoadedXml loadOpenFile(int descriptor) {
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
    return parseFile({descriptor});
}

}  // namespace

LoadedXml loadXmlFile(const std::string& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        return refusedBySystem(errno);
    }
    LoadedXml loaded = loadOpenFile(descriptor);
    ::close(descriptor);
    return loaded;
}

LoadedXml loadXmlText(std::string_view text, const std::string& charset) {
    if (text.size() > MAX_SIZE) {
        return refused(TOO_LARGE);
    }
    const ByteOrderMark mark = findMark(text);
    text.remove_prefix(mark.bytes.size());
    return parse(readText, &text,
                 mark.encoding == nullptr && isKnown(charset) ? charset.c_str() : mark.encoding);
}

}  // namespace intake
