// Fetches through a proxy that the user names.

#include "tests/http/support/HttpTest.h"
#include "tests/http/support/ScriptedServer.h"

namespace intake {

namespace {

using HttpProxyTest = HttpTest;

void expectRetrieved(const Fetched& fetched) {
    EXPECT_TRUE(fetched.success);
    EXPECT_EQ(fetched.body, "[1]");
    EXPECT_EQ(fetched.out, RETRIEVED);
}

TEST_F(HttpProxyTest, AManualProxyIsAskedForTheWholeUrl) {
    ScriptedServer proxy({reply("200 OK", "[1]")});
    useProxy(MANUAL, proxy.address());

    expectRetrieved(fetch("http://data.example:8080/list.json?n=1"));
    ASSERT_EQ(proxy.requests().size(), 1U);
    EXPECT_TRUE(proxy.requests()[0].starts_with(
        "GET http://data.example:8080/list.json?n=1 HTTP/1.1\r\nHost: data.example:8080\r\n"))
        << proxy.requests()[0];
}

TEST_F(HttpProxyTest, HostsWithoutADotAreReachedWithoutTheManualProxy) {
    ScriptedServer server({reply("200 OK", "[1]")});
    useProxy(MANUAL, "127.0.0.1:1");

    expectRetrieved(fetch("http://localhost:" + std::to_string(server.port()) + "/"));
}

TEST_F(HttpProxyTest, AManualProxyThatIsNotThereFails) {
    ScriptedServer server({reply("200 OK", "[1]")});
    useProxy(MANUAL, "127.0.0.1:1");

    const Fetched fetched = fetch(server.url("/"));

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, error(12029));
    EXPECT_EQ(server.requests().size(), 0U);
}

TEST_F(HttpProxyTest, AManualProxyWithoutAnAddressFails) {
    useProxy(MANUAL, "");

    const Fetched fetched = fetch("http://127.0.0.1:1/");

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, error(87));
}

TEST_F(HttpProxyTest, TheStatusWithWhichAProxyRefusesATunnelIsNoFailure) {
    ScriptedServer proxy({reply("403 Forbidden", "no tunnels")});
    useProxy(MANUAL, proxy.address());

    const Fetched fetched = fetch("https://data.example/");

    EXPECT_TRUE(fetched.success);
    EXPECT_EQ(fetched.out, otherStatus(403));
}

TEST_F(HttpProxyTest, AnyOtherModeIsWithoutAProxy) {
    ScriptedServer server({reply("200 OK", "[1]")});
    useProxy(3, "127.0.0.1:1");

    expectRetrieved(fetch(server.url("/")));
}

}  // namespace

}  // namespace intake
