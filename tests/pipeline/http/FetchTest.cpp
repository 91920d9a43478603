#include "tests/pipeline/http/FetchTest.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace intake {

std::ostream& operator<<(std::ostream& out, const Fetched& fetched) {
    return out << (fetched.succeeded ? "success" : "failure") << ", body '" << fetched.body
               << "', output:\n"
               << fetched.output;
}

Fetched FetchTest::fetch(const std::string& url) {
    testing::internal::CaptureStdout();
    ByteBuffer body;
    const bool succeeded = transport_.Fetch(url, request_, body);
    const std::string output = testing::internal::GetCapturedStdout();
    return {succeeded, std::string(body.data(), body.size()), output};
}

std::string FetchTest::log() const {
    std::string text;
    for (const auto& entry : std::filesystem::directory_iterator(directory_.path())) {
        std::ifstream file(entry.path());
        text.append(std::istreambuf_iterator<char>(file), {});
    }
    return text;
}

}  // namespace intake
