// Requests that fail, and with which error.

#include <thread>

#include "platform/linux/xml/CurlXmlRequest.h"
#include "tests/http/support/ScriptedServer.h"
#include "tests/http/support/loopback.h"
#include "tests/platform/xml/XmlRequestTest.h"
#include "tests/support/eventually.h"

namespace intake {

namespace {

constexpr uint32_t ABORTED = 0x80004004;
constexpr uint32_t INVALID_ARGUMENT = 0x80070057;
constexpr uint32_t NOT_FOUND = 0x800C0005;
constexpr uint32_t DOWNLOAD_FAILED = 0x800C0008;
constexpr uint32_t INVALID_RESPONSE = 0x800C000C;
constexpr uint32_t REDIRECT_FAILED = 0x800C0014;

using XmlRequestFailure = XmlRequestTest;

TEST_F(XmlRequestFailure, OpeningFailsForAUrlThatIsNoneAndQuotesIt) {
    for (const char* const wrong : {"see http://127.0.0.1/", "http://", "http://[::/",
                                    "http://a b/", "http://127.0.0.1:99999/", "smb://127.0.0.1/"}) {
        const PlatformError error = errorOf([&] { request_->open(wrong, nullptr, nullptr); });
        EXPECT_EQ(error.code(), INVALID_ARGUMENT) << wrong;
        EXPECT_NE(error.description().find(wrong), std::string::npos) << error.description();
    }
}

TEST_F(XmlRequestFailure, AServerThatIsNotThereFailsOnlyWhenTheRequestIsSent) {
    const std::string address = "127.0.0.1:" + std::to_string(freePort());
    for (const std::string scheme : {"http://", "https://", "ftp://"}) {
        request_->open(scheme + address + "/a.xml", nullptr, nullptr);
        const PlatformError error = errorOf([&] { request_->send(); });
        EXPECT_EQ(error.code(), NOT_FOUND) << scheme;
        EXPECT_EQ(error.meaning(), "The system cannot locate the resource specified.");
        EXPECT_EQ(error.source(), "libcurl");
        EXPECT_NE(error.description().find("127.0.0.1"), std::string::npos) << error.description();
    }
}

TEST_F(XmlRequestFailure, AHostWithoutAnAddressIsNotFound) {
    request_->open("http://no-such-host.invalid/", nullptr, nullptr);
    const PlatformError error = errorOf([&] { request_->send(); });
    EXPECT_EQ(error.code(), NOT_FOUND);
    EXPECT_NE(error.description().find("no-such-host.invalid"), std::string::npos);
}

TEST_F(XmlRequestFailure, AConnectionThatBreaksOffIsAFailure) {
    ScriptedServer server({{"", Then::CUT},
                           {"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n<a/>", Then::CLOSE},
                           {"HTTP/1.1 200 OK\r\nContent-", Then::CLOSE}});
    EXPECT_EQ(errorOf([&] { fetch(server.url("/")); }).code(), DOWNLOAD_FAILED);
    EXPECT_EQ(errorOf([&] { fetch(server.url("/")); }).code(), DOWNLOAD_FAILED);
    EXPECT_EQ(errorOf([&] { fetch(server.url("/")); }).code(), DOWNLOAD_FAILED);
}

TEST_F(XmlRequestFailure, WhatDoesNotSpeakHttpIsAnInvalidResponse) {
    ScriptedServer server({{"<a/>\r\n", Then::CLOSE}});
    EXPECT_EQ(errorOf([&] { fetch(server.url("/")); }).code(), INVALID_RESPONSE);
}

TEST_F(XmlRequestFailure, RedirectsThatNeverEndFail) {
    ScriptedServer server(
        [](const std::string&) { return reply("302 Found", "", "Location: /\r\n"); });
    EXPECT_EQ(errorOf([&] { fetch(server.url("/")); }).code(), REDIRECT_FAILED);
}

TEST_F(XmlRequestFailure, ANameOrValueThatIsNoHeaderIsAnError) {
    EXPECT_EQ(errorOf([&] { request_->setHeader("", "1"); }).code(), INVALID_ARGUMENT);
    EXPECT_EQ(errorOf([&] { request_->setHeader("X Y", "1"); }).code(), INVALID_ARGUMENT);
    EXPECT_EQ(errorOf([&] { request_->setHeader("X", "1\r\nY: 2"); }).code(), INVALID_ARGUMENT);
}

TEST_F(XmlRequestFailure, AWrongHeaderIsNamedWithoutItsValueWhichMayBeASecret) {
    const PlatformError error = errorOf([&] { request_->setHeader("X Token", "s3cret"); });
    EXPECT_NE(error.description().find("X Token"), std::string::npos) << error.description();
    EXPECT_EQ(error.description().find("s3cret"), std::string::npos) << error.description();
}

TEST_F(XmlRequestFailure, ARequestThatNobodyWaitsForIsGivenUp) {
    ScriptedServer server({{"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n<a>", Then::STALL}});
    std::thread host([&] {
        eventually([&] { return !server.requests().empty(); });
        endMark_.set();
    });
    EXPECT_EQ(errorOf([&] { fetch(server.url("/")); }).code(), ABORTED);
    host.join();
}

TEST_F(XmlRequestFailure, NothingIsPrinted) {
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    ScriptedServer server({reply("200 OK", "<a><b></a>")});
    fetch(server.url("/"));
    errorOf([&] { request_->open("http://", nullptr, nullptr); });
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(XmlRequestFailure, AResponseThatIsTooLargeIsRefused) {
    constexpr size_t MOST = 8;
    request_ = std::make_unique<CurlXmlRequest>(static_cast<CurlConnections&>(*connections_),
                                                endMark_, MOST);
    ScriptedServer server({reply("200 OK", "<a>1</a>"), reply("200 OK", "<a>12</a>")});
    fetch(server.url("/"));
    EXPECT_EQ(names("/*"), "a|");
    const PlatformError error = errorOf([&] { fetch(server.url("/")); });
    EXPECT_EQ(error.description(), "The response is larger than 2 GB");
}

}  // namespace

}  // namespace intake
