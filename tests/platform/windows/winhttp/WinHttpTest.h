#pragma once

#include <gtest/gtest.h>

#include "pipeline/RDR_HTTP.h"
#include "platform/Platform.h"
#include "platform/windows/winhttp/WinHttpClient.h"
#include "tests/fakes/platform/FakeClock.h"
#include "tests/fakes/platform/FakeDiagnostics.h"
#include "tests/platform/windows/winhttp/WinHttpDouble.h"

namespace intake {

// The calls that fetches have in common.
inline const std::string OPEN =
    "WinHttpOpen(\"NXR/1.0\", 0x0, null, null, 0x0)\n"
    "WinHttpSetOption(session, 0x54, 0x2800)\n"  // TLS 1.2 and 1.3
    "WinHttpConnect(session, \"www.example.com\", 80, 0x0)\n"
    "WinHttpOpenRequest(connection, \"GET\", \"/feed.json\", null, null, null, 0x0)\n";
inline const std::string SEND =
    "WinHttpSendRequest(request, null, 0x0, null, 0x0, 0x0)\n"
    "WinHttpReceiveResponse(request, null)\n"
    "WinHttpQueryHeaders(request, 0x20000013, null)\n";
inline const std::string NO_MORE = "WinHttpQueryDataAvailable(request)\n";
inline const std::string CLOSE =
    "WinHttpCloseHandle(request)\n"
    "WinHttpCloseHandle(connection)\n"
    "WinHttpCloseHandle(session)\n";

inline const std::string MANUAL_PROXY =
    "WinHttpSetOption(request, 0x26, 0x3 \"proxy:3128\" \"<local>\")\n"
    "WinHttpSetOption(request, 0x1002, \"pat\", 0x4)\n"
    "WinHttpSetOption(request, 0x1003, \"hidden\", 0x7)\n";

/// Fetches by the adapter to WinHTTP: which calls are made, and what becomes of what they return.
class WinHttpTest : public testing::Test {
protected:
    /// Whether the fetch of a URL succeeds. What the system gave is given back whatever happens.
    bool fetch(const std::string& url = "http://www.example.com/feed.json") {
        testing::internal::CaptureStdout();
        const bool fetched = http_.Fetch(url, request_, body_);
        output_ = testing::internal::GetCapturedStdout();
        EXPECT_EQ(system_.openHandles(), 0U);
        EXPECT_EQ(system_.livingTexts(), 0U);
        return fetched;
    }

    void useProxy(int32_t mode) {
        request_.enableProxy = true;
        request_.proxyMode = mode;
        request_.proxyUrl = "proxy:3128";
        request_.proxyUser = "pat";
        request_.proxyPwd = "hidden";
    }

    /// Fetches an empty body and expects these calls between the opening and the sending.
    void expectSetUp(const std::string& calls) {
        EXPECT_TRUE(fetch());
        EXPECT_EQ(system_.calls(), OPEN + calls + SEND + NO_MORE + CLOSE);
    }

    WinHttpDouble system_;
    FakeClock clock_;
    ReaderLogger logger_{clock_, systemPlatform().textFiles};
    FakeDiagnostics diagnostics_;
    WinHttpClient client_;
    RDR_HTTP http_{client_, logger_, diagnostics_};
    RequestRecord request_;
    ByteBuffer body_;
    std::string output_;
};

}  // namespace intake
