// Documents that come packed.

#include "tests/http/support/ScriptedServer.h"
#include "tests/http/support/linux/packed.h"
#include "tests/platform/xml/XmlRequestTest.h"

namespace intake {

namespace {

using XmlPackedRequests = XmlRequestTest;

Reply packedReply(const std::string& body) {
    return reply("200 OK", packed(body, true, Z_BEST_COMPRESSION), "Content-Encoding: gzip\r\n");
}

TEST_F(XmlPackedRequests, AreAskedForAndUnpacked) {
    ScriptedServer server({packedReply("<a>1</a>"), reply("200 OK", packed("<a>2</a>", false),
                                                          "Content-Encoding: deflate\r\n")});
    fetch(server.url("/"));
    EXPECT_EQ(texts("/a"), "1|");
    fetch(server.url("/"));
    EXPECT_EQ(texts("/a"), "2|");
    EXPECT_NE(server.requests().at(0).find("\r\nAccept-Encoding: gzip, deflate\r\n"),
              std::string::npos);
}

TEST_F(XmlPackedRequests, ThatUnpackToFarMoreThanTheyAreAreRefused) {
    ScriptedServer server({packedReply("<a>" + std::string(20'000'000, ' ') + "</a>"),
                           packedReply("<a>" + std::string(10'000'000, ' ') + "</a>")});
    const PlatformError error = errorOf([&] { fetch(server.url("/")); });
    EXPECT_EQ(error.description(), "The response unpacks to more than 250 times its size");
    fetch(server.url("/"));
    EXPECT_EQ(texts("/a"), "|");
}

}  // namespace

}  // namespace intake
