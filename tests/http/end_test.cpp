// A fetch that nobody waits for any more gives up, wherever it is.

#include <thread>

#include "tests/http/support/HttpTest.h"
#include "tests/http/support/ScriptedServer.h"
#include "tests/support/eventually.h"

namespace intake {

namespace {

class HttpEndTest : public HttpTest {
protected:
    /// Fetches from `server` and sets the end mark when the request has arrived there.
    Fetched fetchAndEnd(ScriptedServer& server) {
        std::thread host([&] {
            eventually([&] { return !server.requests().empty(); });
            endMark_.set();
        });
        const Fetched fetched = fetch(server.url("/"));
        host.join();
        return fetched;
    }
};

TEST_F(HttpEndTest, AServerThatDoesNotAnswerIsGivenUp) {
    ScriptedServer server({{"", Then::STALL}});

    const Fetched fetched = fetchAndEnd(server);

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, error(12017));
}

TEST_F(HttpEndTest, AServerThatStopsWithinTheBodyIsGivenUp) {
    ScriptedServer server({{"HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n[1,", Then::STALL}});

    const Fetched fetched = fetchAndEnd(server);

    EXPECT_FALSE(fetched.success);
    EXPECT_THAT(fetched.out, testing::AnyOf(RETRIEVED + errorWithinBody(12017), error(12017)));
}

TEST_F(HttpEndTest, AProxyThatDoesNotAnswerIsGivenUp) {
    ScriptedServer proxy({{"", Then::STALL}});
    useProxy(MANUAL, proxy.address());
    std::thread host([&] {
        eventually([&] { return !proxy.requests().empty(); });
        endMark_.set();
    });

    const Fetched fetched = fetch("https://data.example/");
    host.join();

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, error(12017));
}

TEST_F(HttpEndTest, AMarkThatIsSetBeforehandLetsNothingBeSent) {
    ScriptedServer server({reply("200 OK", "[1]")});
    endMark_.set();

    EXPECT_FALSE(fetch(server.url("/")).success);
    EXPECT_EQ(server.requests().size(), 0U);
}

}  // namespace

}  // namespace intake
