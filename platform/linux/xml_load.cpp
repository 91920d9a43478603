#include "platform/linux/xml_load.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
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
constexpr const char* TOO_LARGE = "The document is larger than 2 GB.";

struct ContextDeleter {
    void operator()(xmlParserCtxt* context) const { xmlFreeParserCtxt(context); }
};

std::string reasonFor(const XmlBuilder& builder) {
    if (builder.metDtd()) {
        return "DTD is prohibited.";
    }
    return builder.firstError().empty() ? "The document is not well-formed." : builder.firstError();
}

LoadedXml parse(xmlInputReadCallback read, void* source, const char* charset) {
    LoadedXml loaded;
    const std::unique_ptr<xmlParserCtxt, ContextDeleter> context(xmlNewParserCtxt());
    XmlBuilder builder(context.get());
    XmlDoc document(xmlCtxtReadIO(context.get(), read, nullptr, source, nullptr, charset, OPTIONS));
    loaded.preservesSpace = builder.preservesSpace();
    if (document != nullptr && context->wellFormed != 0 && !builder.metDtd()) {
        loaded.document = std::move(document);
    } else {
        loaded.reason = reasonFor(builder);
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

int readFile(void* source, char* buffer, int capacity) {
    ssize_t length = 0;
    do {
        length = ::read(*static_cast<const int*>(source), buffer, static_cast<size_t>(capacity));
    } while (length < 0 && errno == EINTR);
    return static_cast<int>(length);
}

LoadedXml refused(const std::string& reason) {
    LoadedXml loaded;
    loaded.reason = reason;
    return loaded;
}

LoadedXml loadOpenFile(int file) {
    struct stat status {};
    if (fstat(file, &status) != 0) {
        return refused(std::system_category().message(errno));
    }
    if (!S_ISREG(status.st_mode)) {
        return refused("It is not a file.");
    }
    if (static_cast<size_t>(status.st_size) > MAX_SIZE) {
        return refused(TOO_LARGE);
    }
    return parse(readFile, &file, nullptr);
}

}  // namespace

LoadedXml loadXmlFile(const std::string& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0) {
        return refused(std::system_category().message(errno));
    }
    LoadedXml loaded = loadOpenFile(file);
    ::close(file);
    return loaded;
}

LoadedXml loadXmlText(std::string_view text, const std::string& charset) {
    if (text.size() > MAX_SIZE) {
        return refused(TOO_LARGE);
    }
    return parse(readText, &text, charset.empty() ? nullptr : charset.c_str());
}

}  // namespace intake
