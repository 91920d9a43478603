// Where pages come from.

#include <filesystem>

#include "tests/http/support/EnvironmentVariable.h"
#include "tests/http/support/ScriptedServer.h"
#include "tests/platform/html/HtmlTest.h"
#include "tests/platform/xml/FtpServer.h"

namespace intake {
namespace {

constexpr auto PAGE = "<table><tr><td>x</table>";

using HtmlSources = HtmlTest;

TEST_F(HtmlSources, AreLocalPaths) {
    open(directory_.write("a page.html", PAGE));
    EXPECT_EQ(cell(), "x");
}

TEST_F(HtmlSources, AreFileUrls) {
    open("file://" + directory_.write("page.html", PAGE));
    EXPECT_EQ(cell(), "x");
    const std::string path = directory_.write("a page.html", "<table><tr><td>y</table>");
    open("FILE://" + path.substr(0, path.size() - 11) + "a%20page.html");
    EXPECT_EQ(cell(), "y");
}

TEST_F(HtmlSources, ThatAreNoFilesDoNotOpen) {
    EXPECT_NE(reasonOf(directory_.path() / "missing.html"), "");
    EXPECT_NE(reasonOf("file://" + (directory_.path() / "missing.html").string()), "");
    EXPECT_NE(reasonOf(directory_.path()), "");
    EXPECT_NE(reasonOf(""), "");
    EXPECT_NE(reasonOf("gopher://127.0.0.1/"), "");
}

TEST_F(HtmlSources, AreFetchedOverHttp) {
    ScriptedServer server({reply("200 OK", PAGE)});
    open(server.url("/results?day=1"));
    EXPECT_EQ(cell(), "x");
    const std::string sent = server.requests().at(0);
    EXPECT_EQ(sent.rfind("GET /results?day=1 HTTP/1.1\r\n", 0), 0U) << sent;
}

TEST_F(HtmlSources, MayBeWrittenWithBlanksAndAccents) {
    ScriptedServer server({reply("200 OK", PAGE)});
    open(server.url("/a page/r\xC3\xA9sultats.html"));
    EXPECT_EQ(server.requests().at(0).rfind("GET /a%20page/r%c3%a9sultats.html HTTP/1.1\r\n", 0),
              0U)
        << server.requests().at(0);
    EXPECT_NE(reasonOf("http://"), "");
    EXPECT_NE(reasonOf("http://[::1/"), "");
}

TEST_F(HtmlSources, TakeTheirEncodingFromTheServerBeforeTheMetaElement) {
    ScriptedServer server({reply("200 OK", "<meta charset=utf-8><table><tr><td>\xE9</table>",
                                 "Content-Type: text/html; charset=iso-8859-1\r\n"),
                           reply("200 OK", "<meta charset=koi8-r><table><tr><td>\xC1</table>",
                                 "Content-Type: text/html; charset=nonsense\r\n")});
    open(server.url("/"));
    EXPECT_EQ(cell(), "\xC3\xA9");
    open(server.url("/"));
    EXPECT_EQ(cell(), "\xD0\xB0");
}

TEST_F(HtmlSources, MayRedirect) {
    ScriptedServer server({reply("302 Found", "", "Location: /new\r\n"), reply("200 OK", PAGE)});
    open(server.url("/old"));
    EXPECT_EQ(cell(), "x");
    EXPECT_EQ(server.requests().at(1).rfind("GET /new HTTP/1.1\r\n", 0), 0U);
}

TEST_F(HtmlSources, MustNotRedirectToFiles) {
    const std::string path = directory_.write("page.html", PAGE);
    ScriptedServer server({reply("302 Found", "", "Location: file://" + path + "\r\n")});
    EXPECT_NE(reasonOf(server.url("/")), "");
}

TEST_F(HtmlSources, OfAStatusOf400AndAboveDoNotOpen) {
    for (const char* status : {"400 Bad", "403 No", "404 Not Found", "500 Failed", "503 Busy"}) {
        ScriptedServer server({reply(status, PAGE)});
        EXPECT_NE(reasonOf(server.url("/")), "") << status;
    }
    ScriptedServer server({reply("203 Changed", PAGE)});
    open(server.url("/"));
    EXPECT_EQ(cell(), "x");
}

TEST_F(HtmlSources, ThatCannotBeReachedOrBreakOffDoNotOpen) {
    std::string gone;
    {
        const ScriptedServer server(std::vector<Reply>{});
        gone = server.url("/");
    }
    EXPECT_NE(reasonOf(gone), "");
    ScriptedServer server(
        {Reply{"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n<table>", Then::CLOSE}});
    EXPECT_NE(reasonOf(server.url("/")), "");
}

TEST_F(HtmlSources, AreFetchedOverFtp) {
    FtpServer server("anonymous", "ftp@example.com", "page.html", PAGE);
    open(server.url("/page.html"));
    EXPECT_EQ(cell(), "x");
}

TEST_F(HtmlSources, ThatAnFtpServerDoesNotHaveDoNotOpen) {
    FtpServer server("anonymous", "ftp@example.com", "page.html", PAGE);
    EXPECT_NE(reasonOf(server.url("/other.html")), "");
}

TEST_F(HtmlSources, DoNotOpenOnceNobodyWaits) {
    ScriptedServer server({Reply{"", Then::STALL}});
    endMark_.set();
    EXPECT_NE(reasonOf(server.url("/")), "");
}

}  // namespace
}  // namespace intake
