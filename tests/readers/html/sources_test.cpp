// Loads from where pages are, through the reader.

#include <gtest/gtest.h>

#include "tests/http/support/ScriptedServer.h"
#include "tests/readers/html/read.h"
#include "tests/support/TempDirectory.h"

namespace intake {
namespace {

constexpr auto PAGE = "<h2>Prices</h2><table><tr><td>k<tr><td>x</table>";
const HtmlQuery QUERY{
    .selector = "TEXT Prices", .mode = DATA_FIELD_ARRAY, .key = "k", .fromRow = 1};
constexpr auto SCRIPT = R"(T[0-0]=""x""; READER_NUM_RECORDS=1;)";

TEST(HtmlSource, IsAServer) {
    ScriptedServer server({reply("200 OK", PAGE)});
    EXPECT_EQ(sourceScript(server.url("/prices.html"), QUERY), SCRIPT);
}

TEST(HtmlSource, IsAskedForWithoutAQueryThatAvoidsCaches) {
    ScriptedServer server({reply("200 OK", PAGE), reply("200 OK", PAGE)});
    sourceScript(server.url("/prices.html"), QUERY);
    sourceScript(server.url("/prices.html"), QUERY);
    for (const std::string& sent : server.requests()) {
        EXPECT_EQ(sent.rfind("GET /prices.html HTTP/1.1\r\n", 0), 0U) << sent;
    }
}

TEST(HtmlSource, ThatCannotBeOpenedFailsWithItsName) {
    ScriptedServer server({reply("404 Not Found", PAGE)});
    const std::string url = server.url("/prices.html");
    EXPECT_EQ(sourceScript(url, QUERY), "failed: HTML: Failed to open URL \"" + url + "\"");
    EXPECT_EQ(sourceScript("/nowhere/prices.html", QUERY),
              "failed: HTML: Failed to open URL \"/nowhere/prices.html\"");
    EXPECT_EQ(sourceScript("", QUERY), "failed: HTML: Failed to open URL \"\"");
}

TEST(HtmlSource, ThatCannotBeParsedFailsWithTheSystemsReport) {
    std::string page;
    for (int depth = 0; depth < 3000; ++depth) {
        page += "<div>";
    }
    const TempDirectory directory;
    EXPECT_EQ(sourceScript(directory.write("deep.html", page), QUERY),
              "failed: Error\n"
              "\tCode = 0x80004005\n"
              "\tCode meaning = Unspecified error\n"
              "\tSource = HTML parser\n"
              "\tDescription = The page is nested deeper than 2000 elements\n");
}

}  // namespace
}  // namespace intake
