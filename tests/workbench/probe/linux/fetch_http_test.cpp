// What is asked for over HTTP, and what comes of it.

#include "tests/http/support/linux/packed.h"
#include "tests/http/support/loopback.h"
#include "tests/workbench/probe/linux/FetchTest.h"

namespace probe {

namespace {

using FetchedOverHttp = FetchTest;
constexpr const char* anyType = "Content-Type: text/plain\r\n";

TEST_F(FetchedOverHttp, IsAskedForAsJson) {
    ScriptedServer server(
        {reply("200 OK", "[1]", "Content-Type: application/json; charset=x\r\n")});

    const Fetched fetched = fetch(settingsFor(QueryType::Json, server.url("/a b.json")), patience);

    EXPECT_EQ(fetched.body, "[1]");
    EXPECT_EQ(fetched.status, 200);
    EXPECT_EQ(fetched.contentType, "application/json; charset=x");
    EXPECT_EQ(fetched.encoding, "");
    EXPECT_EQ(fetched.address, server.url("/a%20b.json?q=34464"));
    EXPECT_FALSE(fetched.credentialsRefused);
    EXPECT_EQ(server.requests()[0], "GET /a%20b.json?q=34464 HTTP/1.1\r\nHost: " +
                                        server.address() + "\r\nUser-Agent: NXR/1.0\r\n\r\n");
}

TEST_F(FetchedOverHttp, IsAskedForAsXml) {
    ScriptedServer server({reply("200 OK", "<a/>", anyType)});
    Settings settings = settingsFor(QueryType::Xml, server.url("/a.xml"));
    settings.avoidCache = true;

    EXPECT_EQ(fetch(settings, patience).body, "<a/>");

    EXPECT_EQ(server.requests()[0],
              "GET /a.xml?q=0 HTTP/1.1\r\nHost: " + server.address() +
                  "\r\nUser-Agent: NXR/1.0\r\nAccept: */*\r\nAccept-Encoding: gzip, deflate\r\n"
                  "Cache-Control: no-cache\r\nPragma: no-cache\r\n"
                  "If-Modified-Since: Sat, 1 Jan 2000 00:00:00 GMT\r\n\r\n");
}

TEST_F(FetchedOverHttp, IsAskedForAsHtml) {
    ScriptedServer server({reply("200 OK", "<p>", anyType)});
    Settings settings = withUser(QueryType::Html, server.url("/"));
    settings.avoidCache = settings.useCustomHeaders = true;
    settings.customHeaders = "X-Key: 1";

    EXPECT_EQ(fetch(settings, patience).body, "<p>");

    const std::string request = server.requests()[0];
    EXPECT_EQ(request.find("GET / HTTP/1.1"), 0U);
    EXPECT_NE(request.find("User-Agent: Mozilla/5.0 (compatible; NXR/1.0)"), std::string::npos);
    EXPECT_EQ(request.find("X-Key"), std::string::npos);
    EXPECT_EQ(request.find("Pragma"), std::string::npos);
}

TEST_F(FetchedOverHttp, IsAskedForWithTheHeadersOfTheUser) {
    ScriptedServer server({reply("200 OK", ""), reply("200 OK", "")});
    for (const QueryType type : {QueryType::Json, QueryType::Xml}) {
        Settings settings = settingsFor(type, server.url("/?"));
        settings.useCustomHeaders = true;
        settings.customHeaders = "X-Key: 1\r\nX-At: 12:30\nno header\nX-Late: 2";
        fetch(settings, patience);
    }
    const std::string json = server.requests()[0], xml = server.requests()[1];
    EXPECT_NE(json.find("X-Key: 1\r\nX-At: 12:30\r\n\r\n"), std::string::npos) << json;
    EXPECT_NE(xml.find("X-Key: 1\r\nX-At: 12\r\nX-Late: 2\r\n\r\n"), std::string::npos) << xml;
}

TEST_F(FetchedOverHttp, IsAnAnswerWhateverItsStatus) {
    ScriptedServer server({reply("404 Not Found", "no such page", anyType)});
    const Fetched fetched = fetch(settingsFor(QueryType::Html, server.url("/")), patience);
    EXPECT_EQ(fetched.status, 404);
    EXPECT_EQ(fetched.body, "no such page");
}

TEST_F(FetchedOverHttp, IsNotUnpackedForJsonAndSaysByWhatItIsPacked) {
    const std::string packed = intake::packed("[1]");
    ScriptedServer server({reply("200 OK", packed, "Content-Encoding: gzip\r\n")});
    const Fetched fetched = fetch(settingsFor(QueryType::Json, server.url("/")), patience);
    EXPECT_EQ(fetched.body, packed);
    EXPECT_EQ(fetched.encoding, "gzip");
}

TEST_F(FetchedOverHttp, IsUnpackedForXmlAndHtml) {
    for (const QueryType type : {QueryType::Xml, QueryType::Html}) {
        ScriptedServer server(
            {reply("200 OK", intake::packed("<a/>"), "Content-Encoding: gzip\r\n")});
        const Fetched fetched = fetch(settingsFor(type, server.url("/")), patience);
        EXPECT_EQ(fetched.body, "<a/>");
        EXPECT_EQ(fetched.encoding, "");
    }
}

TEST_F(FetchedOverHttp, IsTakenAsItComesWhenItIsNotPackedAsItSays) {
    const auto wrong = reply("200 OK", "<a/>", "Content-Encoding: gzip\r\n");
    ScriptedServer server({wrong, wrong});
    const Fetched fetched = fetch(settingsFor(QueryType::Xml, server.url("/")), patience);
    EXPECT_EQ(fetched.body, "<a/>");
    EXPECT_EQ(fetched.encoding, "gzip");
}

TEST_F(FetchedOverHttp, IsFollowedThroughRedirectsWithCookies) {
    ScriptedServer other({reply("200 OK", "[1]")});
    const std::string there = "http://me:pass@" + other.address() + "/b";
    ScriptedServer server({reply("302 Found", "", "Set-Cookie: seen=1\r\nLocation: /here\r\n"),
                           reply("307 Temporary Redirect", "", "Location: " + there + "\r\n")});

    const Fetched fetched = fetch(settingsFor(QueryType::Json, server.url("/?")), patience);

    EXPECT_EQ(fetched.body, "[1]");
    EXPECT_EQ(fetched.address, other.url("/b"));
    ASSERT_EQ(fetched.redirects.size(), 2U);
    EXPECT_EQ(fetched.redirects[0].status, 302);
    EXPECT_EQ(fetched.redirects[0].address, server.url("/here"));
    EXPECT_EQ(fetched.redirects[1].status, 307);
    EXPECT_EQ(fetched.redirects[1].address, fetched.address);
    EXPECT_NE(server.requests()[1].find("Cookie: seen=1"), std::string::npos);
}

TEST_F(FetchedOverHttp, MayBeARedirectThatLeadsNowhere) {
    ScriptedServer server({reply("302 Found", "moved")});
    const Fetched fetched = fetch(settingsFor(QueryType::Json, server.url("/")), patience);
    EXPECT_EQ(fetched.status, 302);
    EXPECT_EQ(fetched.body, "moved");
    EXPECT_TRUE(fetched.redirects.empty());
}

TEST_F(FetchedOverHttp, HasTheHeadsOfItsLastRequestAndAnswer) {
    ScriptedServer server({reply("302 Found", "", "Location: /b\r\n"),
                           reply("200 OK", "[1]", "Content-Type: application/json\r\n")});

    const Exchange last = fetch(settingsFor(QueryType::Json, server.url("/a")), patience).exchange;

    EXPECT_EQ(last.request,
              "GET /b HTTP/1.1\nHost: " + server.address() + "\nUser-Agent: NXR/1.0\n");
    EXPECT_EQ(last.answer, "HTTP/1.1 200 OK\nContent-Type: application/json\nContent-Length: 3\n");
}

}  // namespace

}  // namespace probe
