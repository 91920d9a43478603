// A fetch that nobody waits for any more gives up, wherever it is.

#include <thread>

#include "platform/linux/curl/CurlHttpClient.h"
#include "tests/http/support/HttpTest.h"
#include "tests/http/support/ScriptedServer.h"
#include "tests/http/support/linux/StalledProxyScript.h"
#include "tests/support/eventually.h"

namespace intake {

namespace {

class HttpEndTest : public HttpTest {
protected:
    /// Fetches a URL and sets the end mark when a request has arrived at `server`.
    Fetched fetchAndEnd(const std::string& url, ScriptedServer& server) {
        std::thread host([&] {
            eventually([&] { return !server.requests().empty(); });
            endMark_.set();
        });
        const Fetched fetched = fetch(url);
        host.join();
        return fetched;
    }

    void expectThatItsScriptIsGivenUp(int32_t proxyMode) {
        StalledProxyScript script;
        useProxy(proxyMode);

        const Fetched fetched = fetchAndEnd("http://data.example/", script.server());

        EXPECT_FALSE(fetched.success);
        EXPECT_EQ(fetched.out + fetched.err, "");
    }
};

TEST_F(HttpEndTest, AServerThatDoesNotAnswerIsGivenUp) {
    ScriptedServer server({{"", Then::STALL}});

    const Fetched fetched = fetchAndEnd(server.url("/"), server);

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, "");
}

TEST_F(HttpEndTest, AServerThatStopsWithinTheBodyIsGivenUp) {
    ScriptedServer server({{"HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n[1,", Then::STALL}});

    const Fetched fetched = fetchAndEnd(server.url("/"), server);

    EXPECT_FALSE(fetched.success);
    EXPECT_TRUE(fetched.out == RETRIEVED || fetched.out.empty()) << fetched.out;
}

TEST_F(HttpEndTest, AProxyThatDoesNotAnswerIsGivenUp) {
    ScriptedServer proxy({{"", Then::STALL}});
    useProxy(MANUAL, proxy.address());

    const Fetched fetched = fetchAndEnd("https://data.example/", proxy);

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, "");
}

TEST_F(HttpEndTest, AProxyThatOpensATunnelAndThenStallsIsGivenUp) {
    ScriptedServer proxy({{"HTTP/1.1 200 Connection established\r\n\r\n", Then::STALL}});
    useProxy(MANUAL, proxy.address());

    const Fetched fetched = fetchAndEnd("https://data.example/", proxy);

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, "");
    ASSERT_EQ(proxy.requests().size(), 1U);
    EXPECT_TRUE(proxy.requests()[0].starts_with("CONNECT data.example:443 HTTP/1.1\r\n"));
}

TEST_F(HttpEndTest, AScriptOfTheSystemsProxyThatNeverComesIsGivenUp) {
    expectThatItsScriptIsGivenUp(SYSTEM_SETTINGS);
}

TEST_F(HttpEndTest, AScriptOfADetectedProxyThatNeverComesIsGivenUp) {
    expectThatItsScriptIsGivenUp(AUTO_DETECT);
}

TEST_F(HttpEndTest, AScriptThatComesTooLateIsAsGoodAsNoProxyAndTheReasonIsKnown) {
    const StalledProxyScript script;
    CurlConnections connections;
    CurlHttpClient client(connections, endMark_, std::chrono::milliseconds(1));
    std::string proxy, bypass;

    EXPECT_FALSE(client.systemProxy("http://data.example", proxy, bypass));
    EXPECT_EQ(proxy, "");
    EXPECT_EQ(client.lastError(), HTTP_ERROR_TIMEOUT);
    EXPECT_EQ(client.lastErrorText(),
              "The system does not say in time which proxy to use for http://data.example");

    EXPECT_FALSE(client.systemProxy("http://data.example", proxy, bypass));
    EXPECT_EQ(client.lastError(), HTTP_ERROR_TIMEOUT);
    EXPECT_EQ(client.lastErrorText(), "An earlier search for a proxy has not ended yet");
}

TEST_F(HttpEndTest, AMarkThatIsSetBeforehandLetsNothingBeSent) {
    ScriptedServer server({reply("200 OK", "[1]")});
    endMark_.set();

    const Fetched fetched = fetch(server.url("/"));

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, "");
    EXPECT_EQ(server.requests().size(), 0U);
}

}  // namespace

}  // namespace intake
