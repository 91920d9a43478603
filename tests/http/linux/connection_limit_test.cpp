// How many workers keep connections at a time.

#include <gtest/gtest.h>

#include <list>

#include "platform/linux/curl/ReceivedBody.h"
#include "tests/http/support/WebServer.h"

namespace intake {

namespace {

class ConnectionLimit : public testing::Test {
protected:
    ConnectionLimit() { server_.write("data.json", "[1]"); }

    /// Whether a worker keeps the connection of a load.
    bool isKept(CurlConnections& connections) {
        {
            CurlTransfer transfer(connections, endMark_);
            ReceivedBody body(transfer, 1000, nullptr);
            curl_easy_setopt(transfer.handle(), CURLOPT_URL, server_.url("/data.json").c_str());
            body.receive();
            EXPECT_EQ(body.bytes(), "[1]");
        }
        return !connections.sockets().areNone();
    }

    const WebServer server_{""};
    const EndMark endMark_;
};

TEST_F(ConnectionLimit, ClosesThoseOfMoreWorkersWithTheirLoad) {
    std::list<CurlConnections> keepers(CurlConnections::MOST_KEEPERS);
    for (CurlConnections& keeper : keepers) {
        EXPECT_TRUE(isKept(keeper));
    }
    CurlConnections late;
    EXPECT_FALSE(isKept(late));
    EXPECT_TRUE(isKept(keepers.front()));

    keepers.front().close();
    EXPECT_TRUE(isKept(late));
    EXPECT_FALSE(isKept(keepers.front()));
}

TEST_F(ConnectionLimit, IsNotUsedUpByLoadsThatAreClosed) {
    for (int i = 0; i <= CurlConnections::MOST_KEEPERS; ++i) {
        CurlConnections connections;
        EXPECT_TRUE(isKept(connections));
    }
}

}  // namespace

}  // namespace intake
