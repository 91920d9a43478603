// fetch_url URL: fetches a URL and prints how many bytes came, and on a second line the most memory
// in bytes that the process ever had resident.

#include <cstdio>
#include <fstream>
#include <string>

#include "pipeline/RDR_HTTP.h"
#include "platform/Platform.h"

namespace {

size_t peakBytes() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "VmHWM:") {
            size_t kilobytes = 0;
            status >> kilobytes;
            return kilobytes * 1024;
        }
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        return 2;
    }
    const intake::Platform& platform = intake::systemPlatform();
    intake::EndMark endMark;
    intake::ReaderLogger logger(platform.clock, intake::systemPlatform().textFiles);
    const auto connections = platform.http.keepConnections();
    const auto client = platform.http.create(*connections, endMark);
    intake::ByteBuffer body;
    if (!intake::RDR_HTTP(*client, logger, platform.diagnostics).Fetch(argv[1], {}, body)) {
        return 1;
    }
    std::printf("%zu\n%zu\n", body.size(), peakBytes());
    return 0;
}
