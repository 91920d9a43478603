#include "tests/http/support/ForwardProxy.h"

#include <fstream>
#include <iterator>

#include "tests/http/support/loopback.h"

namespace intake {

ForwardProxy::ForwardProxy(const std::string& settings) {
    withRetries([&] {
        port_ = freePort();
        const std::string configuration =
            directory_.write("tinyproxy.conf", "Listen 127.0.0.1\nPort " + std::to_string(port_) +
                                                   "\nTimeout 60\nLogLevel Connect\n" + settings);
        process_ = std::make_unique<ServerProcess>(
            "/usr/bin/tinyproxy", std::vector<std::string>{"-d", "-c", configuration}, Ports{port_},
            directory_.path() / "output");
    });
}

std::string ForwardProxy::log() const {
    std::ifstream stream(directory_.path() / "output", std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace intake
