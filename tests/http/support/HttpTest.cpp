#include "tests/http/support/HttpTest.h"

#include <filesystem>
#include <fstream>
#include <thread>

#include "pipeline/RDR_HTTP.h"
#include "platform/Platform.h"

namespace intake {

HttpTest::HttpTest() {
    for (const char* const name : {"http_proxy", "HTTP_PROXY", "https_proxy", "HTTPS_PROXY",
                                   "all_proxy", "ALL_PROXY", "no_proxy", "NO_PROXY"}) {
        environment_.emplace_back(name, std::nullopt);
    }
    environment_.emplace_back("KRB5CCNAME", "FILE:/no/tickets");
}

void HttpTest::useProxy(int32_t mode, const std::string& url) {
    request_.enableProxy = true;
    request_.proxyMode = mode;
    request_.proxyUrl = url;
}

Fetched HttpTest::fetch(const std::string& url) {
    const Platform& platform = systemPlatform();
    Fetched fetched;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    std::thread([&] {
        platform.threads.enterWorker();
        ReaderLogger logger(platform.clock, systemPlatform().textFiles);
        const auto client = platform.http.create(*connections_, endMark_);
        RDR_HTTP http(*client, logger, platform.diagnostics);
        ByteBuffer body;
        try {
            fetched.success = http.Fetch(url, request_, body);
        } catch (const std::exception& failure) {
            fetched.thrown = failure.what();
        }
        fetched.body.assign(body.data(), body.size());
    }).join();
    fetched.out = testing::internal::GetCapturedStdout();
    fetched.err = testing::internal::GetCapturedStderr();
    return fetched;
}

std::string HttpTest::log() const {
    std::string messages;
    for (const auto& entry : std::filesystem::directory_iterator(directory_.path())) {
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            const size_t date = line.find(' ');
            messages += line.substr(line.find(' ', date + 1) + 1) + "\n";
        }
    }
    return messages;
}

}  // namespace intake
