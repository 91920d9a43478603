// How much of a body is taken.

#include "platform/linux/curl/ReceivedBody.h"

#include <gtest/gtest.h>

#include "tests/http/support/ScriptedServer.h"

namespace intake {

namespace {

TEST(ReceivedBody, MayBeAsLargeAsTheLimitAndNoLarger) {
    const std::string five = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n";
    ScriptedServer server({{five + "2\r\nde\r\n0\r\n\r\n"}, {five + "3\r\ndef\r\n0\r\n\r\n"}});
    const EndMark endMark;
    CurlConnections connections;
    CurlTransfer transfer(connections, endMark);
    ReceivedBody body(transfer, 5, nullptr);
    curl_easy_setopt(transfer.handle(), CURLOPT_URL, server.url("/").c_str());

    EXPECT_TRUE(body.receive());
    EXPECT_FALSE(body.isTooLarge());
    EXPECT_EQ(body.bytes(), "abcde");
    EXPECT_EQ(transfer.result(), CURLE_OK);

    EXPECT_TRUE(body.receive());
    EXPECT_TRUE(body.isTooLarge());
    EXPECT_EQ(transfer.result(), CURLE_WRITE_ERROR);
}

}  // namespace

}  // namespace intake
