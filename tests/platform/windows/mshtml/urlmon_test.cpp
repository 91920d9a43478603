// What the system's own urlmon opens, written into a stand-in for a document.

#include "tests/platform/windows/mshtml/OnePageServer.h"
// What Windows calls a network stands before everything else of Windows.
#include <gtest/gtest.h>

#include "platform/windows/mshtml/MshtmlServices.h"
#include "tests/fakes/platform/FakeConnections.h"
#include "tests/platform/windows/mshtml/PageDouble.h"
#include "tests/support/AsWorker.h"
#include "tests/support/TempDirectory.h"

namespace intake {
namespace {

constexpr const char* PAGE = "<html><table><tr><td>code</td></tr></table></html>";
constexpr const wchar_t* WIDE_PAGE = L"<html><table><tr><td>code</td></tr></table></html>";

class Urlmon : public testing::Test {
protected:
    /// What arrives in the document; the reason where the source cannot be opened.
    std::wstring written(const std::string& source) {
        PageDouble page;
        MshtmlServices services(page.factory());
        FakeConnections connections;
        const EndMark endMark;
        const bool opened = services.open(source, connections, endMark, reason_) != nullptr;
        EXPECT_EQ(opened, reason_.empty());
        EXPECT_EQ(page.calls.living(), 0);
        return page.written;
    }

    const AsWorker worker_;
    TempDirectory directory_;
    std::string reason_;
};

TEST_F(Urlmon, OpensAFileByItsPath) {
    EXPECT_EQ(written(directory_.write("page.html", PAGE)), WIDE_PAGE);
}

TEST_F(Urlmon, OpensALargeFileWhole) {
    EXPECT_EQ(written(directory_.write("page.html", std::string(3000000, 'x'))),
              std::wstring(3000000, L'x'));
}

TEST_F(Urlmon, OpensAFileByItsUrl) {
    std::string path = directory_.write("page.html", PAGE);
    for (char& each : path) {
        each = each == '\\' ? '/' : each;
    }
    EXPECT_EQ(written("file:///" + path), WIDE_PAGE);
}

TEST_F(Urlmon, OpensAWebPage) {
    const OnePageServer server(std::string("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\n"
                                           "Content-Length: 51\r\nConnection: close\r\n\r\n") +
                               PAGE);
    EXPECT_EQ(written(server.url()), WIDE_PAGE);
}

TEST_F(Urlmon, OpensAWebPageThatDoesNotTellItsLength) {
    const OnePageServer server(std::string("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\n"
                                           "Connection: close\r\n\r\n") +
                               PAGE);
    EXPECT_EQ(written(server.url()), WIDE_PAGE);
}

TEST_F(Urlmon, SaysWhyAFileCannotBeOpened) {
    EXPECT_EQ(written((directory_.path() / "missing.html").string()), L"");
    EXPECT_NE(reason_, "");
}

TEST_F(Urlmon, SaysThatASourceIsNoneAtAll) {
    EXPECT_EQ(written("/page.html"), L"");
    EXPECT_EQ(reason_, "This is neither a URL nor a full path");
}

TEST_F(Urlmon, SaysWhyAWebPageCannotBeOpened) {
    std::string url;
    {
        const OnePageServer server("");
        url = server.url();
    }
    EXPECT_EQ(written(url), L"");
    EXPECT_NE(reason_, "");
}

}  // namespace
}  // namespace intake
