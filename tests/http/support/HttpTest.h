#pragma once

#include <gtest/gtest.h>

#include <list>
#include <memory>
#include <string>

#include "formats/source/EndMark.h"
#include "pipeline/RequestRecord.h"
#include "platform/Platform.h"
#include "tests/http/support/EnvironmentVariable.h"
#include "tests/http/support/messages.h"
#include "tests/support/TempDirectory.h"

namespace intake {

constexpr int32_t AUTO_DETECT = 0;
constexpr int32_t SYSTEM_SETTINGS = 1;
constexpr int32_t MANUAL = 2;

/// What came of one fetch.
struct Fetched {
    bool success = false;
    std::string body;
    std::string out;     // what it printed on standard output
    std::string err;     // what it printed on standard error
    std::string thrown;  // the text of the exception that ended it
};

/// A test of fetches with the system's own HTTP client. It runs in a directory of its own, and no
/// proxy or ticket of its environment counts.
class HttpTest : public testing::Test {
protected:
    HttpTest();

    /// Fetches `url` as a worker does, on a thread of its own, with the settings of `request_`.
    Fetched fetch(const std::string& url);

    void useProxy(int32_t mode, const std::string& url = "");

    /// What was logged, without the time stamps.
    std::string log() const;

    std::unique_ptr<KeptConnections> connections_ = systemPlatform().http.keepConnections();
    RequestRecord request_;
    EndMark endMark_;
    TempWorkingDirectory directory_;

private:
    std::list<EnvironmentVariable> environment_;
};

}  // namespace intake
