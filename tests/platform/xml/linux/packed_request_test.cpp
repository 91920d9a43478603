// Documents that come packed.

#include <sstream>

#include "tests/http/support/ScriptedServer.h"
#include "tests/http/support/linux/packed.h"
#include "tests/platform/xml/XmlRequestTest.h"

namespace intake {

namespace {

using XmlPackedRequests = XmlRequestTest;

Reply packedReply(const std::string& body) {
    return reply("200 OK", packed(body, true, Z_BEST_COMPRESSION), "Content-Encoding: gzip\r\n");
}

Reply replyInOneChunk(const std::string& body) {
    std::ostringstream response;
    response << "HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\nTransfer-Encoding: chunked\r\n\r\n"
             << std::hex << body.size() << "\r\n"
             << body << "\r\n0\r\n\r\n";
    return {response.str()};
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

TEST_F(XmlPackedRequests, ThatAreNotPackedAsTheyClaimAreTakenAsTheyCome) {
    const auto claimed = [](const std::string& body, const std::string& packing) {
        return reply("200 OK", body, "Content-Encoding: " + packing + "\r\n");
    };
    ScriptedServer server({claimed("<a>1</a>", "UTF-8"), claimed("<a>1</a>", "UTF-8"),
                           claimed("<a>2</a>", "gzip"), reply("200 OK", "<a>2</a>"),
                           packedReply("<a>3</a>")});
    fetch(server.url("/"));
    EXPECT_EQ(texts("/a"), "1|");
    fetch(server.url("/"));
    EXPECT_EQ(texts("/a"), "2|");
    fetch(server.url("/"));
    EXPECT_EQ(texts("/a"), "3|");
    EXPECT_EQ(server.requests().at(3).find("Accept-Encoding"), std::string::npos);
}

TEST_F(XmlPackedRequests, ThatUnpackToFarMoreThanTheyAreAreRefused) {
    ScriptedServer server({packedReply("<a>" + std::string(60'000'000, ' ') + "</a>"),
                           packedReply("<a>" + std::string(30'000'000, ' ') + "</a>")});
    const PlatformError error = errorOf([&] { fetch(server.url("/")); });
    EXPECT_EQ(error.description(), "The response unpacks to more than 250 times its size");
    fetch(server.url("/"));
    EXPECT_EQ(texts("/a"), "|");
}

TEST_F(XmlPackedRequests, InChunksMayUnpackToAsMuchAsOthers) {
    const std::string text(120, 'x');
    std::string rows;
    for (int row = 0; row < 140'000; ++row) {
        rows += "<r><text>" + text + "</text><n>" + std::to_string(row / 40) + "</n></r>";
    }
    const std::string body = packed("<a>" + rows + "</a>", true, Z_BEST_COMPRESSION);
    ASSERT_GT(rows.size(), 200 * body.size());
    ScriptedServer server({replyInOneChunk(body)});
    fetch(server.url("/"));
    EXPECT_EQ(texts("/a/r[140000]/n"), "3499|");
}

TEST_F(XmlPackedRequests, ThatUnpackToFarMoreNodesThanTheyAreBytesAreRefused) {
    std::string elements;
    for (int i = 0; i < 3'000'000; ++i) {
        elements += "<a/>";
    }
    ScriptedServer server(
        {packedReply("<r>" + elements + "</r>"), reply("200 OK", "<r>" + elements + "</r>")});
    const PlatformError error = errorOf([&] { fetch(server.url("/")); });
    EXPECT_EQ(error.description(), "The document has more than 3000000 nodes");
    fetch(server.url("/"));
    EXPECT_EQ(count("/r/a"), 3'000'000U);
}

}  // namespace

}  // namespace intake
