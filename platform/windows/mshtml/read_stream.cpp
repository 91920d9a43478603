#include "platform/windows/mshtml/read_stream.h"

#include <array>

#include "formats/html/PageError.h"
#include "platform/PlatformError.h"

namespace intake {

namespace {

/// As other systems say it of a page that is too large.
size_t checkedSize(ULONGLONG size) {
    try {
        html::checkPageSize(size);
    } catch (const html::PageError& error) {
        throw PlatformError(static_cast<uint32_t>(E_FAIL), "Unspecified error", "HTML parser",
                            error.what());
    }
    return static_cast<size_t>(size);
}

size_t sizeOf(const ComPointer<IStream>& stream) {
    STATSTG status{};
    checkCom(stream->Stat(&status, STATFLAG_NONAME));
    return checkedSize(status.cbSize.QuadPart);
}

/// How much was read into the buffer: all of it, except at the end of the stream.
size_t readInto(const ComPointer<IStream>& stream, char* buffer, size_t size) {
    size_t filled = 0;
    ULONG got = 1;
    while (filled < size && got > 0) {
        got = 0;
        checkCom(stream->Read(buffer + filled, static_cast<ULONG>(size - filled), &got));
        filled += got;
    }
    return filled;
}

}  // namespace

std::string readStream(const ComPointer<IStream>& stream) {
    std::string content(sizeOf(stream), '\0');
    content.resize(readInto(stream, content.data(), content.size()));
    // While it is still being loaded, a stream tells less than it is going to hold.
    std::array<char, 65536> rest{};
    size_t more = readInto(stream, rest.data(), rest.size());
    while (more > 0) {
        checkedSize(content.size() + more);
        content.append(rest.data(), more);
        more = readInto(stream, rest.data(), rest.size());
    }
    return content;
}

}  // namespace intake
