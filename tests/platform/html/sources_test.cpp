// Where pages come from.

#include <algorithm>
#include <functional>
#include <random>

#include "tests/http/support/EnvironmentVariable.h"
#include "tests/http/support/ScriptedServer.h"
#include "tests/http/support/linux/packed.h"
#include "tests/http/support/linux/tls.h"
#include "tests/platform/html/HtmlTest.h"
#include "tests/platform/xml/FtpServer.h"
#include "tests/support/linux/next_handle.h"

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

TEST_F(HtmlSources, ThatAreFilesAreClosedAgain) {
    const int before = nextHandle();
    open(directory_.write("page.html", PAGE));
    reasonOf(directory_.path());
    EXPECT_EQ(nextHandle(), before);
}

TEST_F(HtmlSources, AreFetchedOverHttp) {
    ScriptedServer server({reply("200 OK", PAGE)});
    open(server.url("/results?day=1"));
    EXPECT_EQ(cell(), "x");
    const std::string sent = server.requests().at(0);
    EXPECT_EQ(sent.rfind("GET /results?day=1 HTTP/1.1\r\n", 0), 0U) << sent;
    EXPECT_NE(sent.find("\r\nUser-Agent: Mozilla/5.0 (compatible; NXR/1.0)\r\n"), std::string::npos)
        << sent;
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

TEST_F(HtmlSources, BreakOffOnceNobodyWaits) {
    ScriptedServer server([this](const std::string&) {
        endMark_.set();
        return Reply{"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n<table>", Then::STALL};
    });
    EXPECT_EQ(reasonOf(server.url("/")), "The load was given up");
}

/// What the refusal of a page says.
std::string refusalOf(const std::function<void()>& open) {
    try {
        open();
    } catch (const PlatformError& error) {
        return error.description();
    }
    return "it was not refused";
}

TEST_F(HtmlSources, OfMoreThan100MegabytesAreRefused) {
    ScriptedServer server({reply("200 OK", std::string(101'000'000, ' '))});
    EXPECT_EQ(refusalOf([&] { open(server.url("/")); }), "The page is larger than 100 MB");
}

TEST_F(HtmlSources, MayComePacked) {
    ScriptedServer server({reply("200 OK", packed(PAGE), "Content-Encoding: gzip\r\n")});
    open(server.url("/"));
    EXPECT_EQ(cell(), "x");
}

TEST_F(HtmlSources, ThatUnpackToMoreThan100MegabytesAreRefused) {
    std::string block(1'000'000, ' ');
    std::minstd_rand random(1);
    std::generate(block.begin(), block.end(),
                  [&] { return static_cast<char>('a' + random() % 4); });
    std::string page;
    for (int blocks = 0; blocks < 101; ++blocks) {
        page += block;
    }
    ScriptedServer server({reply("200 OK", packed(page), "Content-Encoding: gzip\r\n")});
    EXPECT_EQ(refusalOf([&] { open(server.url("/")); }), "The page is larger than 100 MB");
}

TEST_F(HtmlSources, ThatUnpackToFarMoreThanTheyAreAreRefused) {
    const auto packedBlanks = [](size_t count) {
        return reply("200 OK", packed(std::string(count, ' '), true, Z_BEST_COMPRESSION),
                     "Content-Encoding: gzip\r\n");
    };
    ScriptedServer server({packedBlanks(30'000'000), packedBlanks(60'000'000)});
    open(server.url("/"));
    EXPECT_EQ(refusalOf([&] { open(server.url("/")); }),
              "The page unpacks to more than 250 times its size");
}

TEST_F(HtmlSources, ThatRedirectInACircleDoNotOpen) {
    ScriptedServer server(
        [](const std::string&) { return reply("302 Found", "", "Location: /\r\n"); });
    EXPECT_NE(reasonOf(server.url("/")), "");
    EXPECT_EQ(server.requests().size(), 11U);
}

TEST_F(HtmlSources, MustNotRedirectFromHttpsToHttp) {
    const CertificateAuthority authority;
    const TlsFiles tls = authority.issue();
    const EnvironmentVariable trusted("SSL_CERT_FILE", authority.certificate());
    ScriptedServer plain({reply("200 OK", PAGE)});
    ScriptedServer server(
        {reply("302 Found", "", "Location: " + plain.url("/") + "\r\n"), reply("200 OK", PAGE)},
        overTls(tls));
    EXPECT_NE(reasonOf(server.url("/")), "");
    EXPECT_EQ(plain.requests().size(), 0U);
    open(server.url("/"));
    EXPECT_EQ(cell(), "x");
}

TEST_F(HtmlSources, TakeTheirEncodingFromAServerInEveryForm) {
    const auto read = [this](const std::string& charset, const std::string& page) {
        ScriptedServer server(
            {reply("200 OK", page, "Content-Type: text/html; charset=" + charset + "\r\n")});
        open(server.url("/"));
        return cell();
    };
    const std::string start = "<table><tr><td>";
    EXPECT_EQ(read("\"koi8-r\"", start + "\xC1"), "\xD0\xB0");
    EXPECT_EQ(read("Shift_JIS", start + "\x93\xFA\x96\x7B"), "\xE6\x97\xA5\xE6\x9C\xAC");
    EXPECT_EQ(read("koi8-r", "\xEF\xBB\xBF" + start + "\xC3\xA9"), "\xC3\xA9");
    std::string wide;
    for (const char each : start) {
        wide += std::string{each, '\0'};
    }
    EXPECT_EQ(read("utf-16", wide + "\xE9" + std::string(1, '\0')), "\xC3\xA9");
    EXPECT_EQ(read("utf-16le", wide + "\xAC\x20"), "\xE2\x82\xAC");
}

}  // namespace
}  // namespace intake
