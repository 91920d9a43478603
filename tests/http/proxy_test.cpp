// The three modes of the proxy, with a real one.

#include "tests/http/support/ForwardProxy.h"
#include "tests/http/support/HttpTest.h"
#include "tests/http/support/ScriptedServer.h"

namespace intake {

namespace {

using HttpProxyTest = HttpTest;

void expectThroughTinyproxy(ScriptedServer& server) {
    ASSERT_EQ(server.requests().size(), 1U);
    EXPECT_NE(server.requests()[0].find("tinyproxy"), std::string::npos) << server.requests()[0];
}

void expectDirect(ScriptedServer& server) {
    ASSERT_EQ(server.requests().size(), 1U);
    EXPECT_EQ(server.requests()[0].find("tinyproxy"), std::string::npos) << server.requests()[0];
}

void expectRetrieved(const Fetched& fetched) {
    EXPECT_TRUE(fetched.success);
    EXPECT_EQ(fetched.body, "[1]");
    EXPECT_EQ(fetched.out, RETRIEVED);
}

TEST_F(HttpProxyTest, AManualProxyFetchesForUs) {
    ScriptedServer server({reply("200 OK", "[1]")});
    const ForwardProxy proxy;
    useProxy(MANUAL, proxy.address());

    expectRetrieved(fetch(server.url("/")));
    expectThroughTinyproxy(server);
}

TEST_F(HttpProxyTest, AManualProxyMayBeGivenAsAUrl) {
    ScriptedServer server({reply("200 OK", "[1]")});
    const ForwardProxy proxy;
    useProxy(MANUAL, "http://" + proxy.address() + "/");

    expectRetrieved(fetch(server.url("/")));
    expectThroughTinyproxy(server);
}

TEST_F(HttpProxyTest, AManualProxyOpensATunnelForHttps) {
    const CertificateAuthority authority;
    const EnvironmentVariable trusted("SSL_CERT_FILE", authority.certificate());
    const TlsFiles tls = authority.issue();
    ScriptedServer server({reply("200 OK", "[1]")}, &tls);
    const ForwardProxy proxy;
    useProxy(MANUAL, proxy.address());

    expectRetrieved(fetch(server.url("/")));
    EXPECT_NE(proxy.log().find("CONNECT " + server.address()), std::string::npos) << proxy.log();
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

TEST_F(HttpProxyTest, AManualProxyWithoutAPortIsAskedOnPort80) {
    useProxy(MANUAL, "127.77.7.7");

    const Fetched fetched = fetch("http://data.example/");

    EXPECT_EQ(fetched.out, error(12029));
    EXPECT_NE(fetched.err.find("127.77.7.7 port 80 "), std::string::npos) << fetched.err;
}

TEST_F(HttpProxyTest, AManualProxyWithoutAnAddressFails) {
    useProxy(MANUAL, "");

    const Fetched fetched = fetch("http://127.0.0.1:1/");

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, error(87));
    EXPECT_EQ(fetched.err, "ERROR: RDR_HTTP: The proxy has no address\n");
}

TEST_F(HttpProxyTest, TheStatusWithWhichAProxyRefusesATunnelIsNoFailure) {
    ScriptedServer proxy({reply("403 Forbidden", "no tunnels")});
    useProxy(MANUAL, proxy.address());

    const Fetched fetched = fetch("https://data.example/");

    EXPECT_TRUE(fetched.success);
    EXPECT_EQ(fetched.out, otherStatus(403));
}

TEST_F(HttpProxyTest, TheSystemsProxyIsUsed) {
    ScriptedServer server({reply("200 OK", "[1]")});
    const ForwardProxy proxy;
    const EnvironmentVariable configured("http_proxy", "http://" + proxy.address());
    useProxy(SYSTEM_SETTINGS);

    expectRetrieved(fetch(server.url("/")));
    expectThroughTinyproxy(server);
}

TEST_F(HttpProxyTest, ExceptionsOfTheSystemsProxyAreReachedWithoutIt) {
    ScriptedServer server({reply("200 OK", "[1]")});
    const ForwardProxy proxy;
    const EnvironmentVariable configured("http_proxy", "http://" + proxy.address());
    const EnvironmentVariable exceptions("no_proxy", "127.0.0.1");
    useProxy(SYSTEM_SETTINGS);

    expectRetrieved(fetch(server.url("/")));
    expectDirect(server);
}

TEST_F(HttpProxyTest, WithoutAProxyInTheSystemsSettingsTheRequestGoesOnWithoutOne) {
    ScriptedServer server({reply("200 OK", "[1]")});
    useProxy(SYSTEM_SETTINGS);

    expectRetrieved(fetch(server.url("/")));
    expectDirect(server);
}

TEST_F(HttpProxyTest, TheSystemsProxyForHttpsIsUsedForHttps) {
    const CertificateAuthority authority;
    const EnvironmentVariable trusted("SSL_CERT_FILE", authority.certificate());
    const TlsFiles tls = authority.issue();
    ScriptedServer server({reply("200 OK", "[1]")}, &tls);
    const ForwardProxy proxy;
    const EnvironmentVariable configured("https_proxy", "http://" + proxy.address());
    const EnvironmentVariable other("http_proxy", "http://127.0.0.1:1");
    useProxy(SYSTEM_SETTINGS);

    expectRetrieved(fetch(server.url("/")));
    EXPECT_NE(proxy.log().find("CONNECT " + server.address()), std::string::npos) << proxy.log();
}

TEST_F(HttpProxyTest, TheSystemsProxyForHttpsIsNotUsedForHttp) {
    ScriptedServer server({reply("200 OK", "[1]")});
    const EnvironmentVariable other("https_proxy", "http://127.0.0.1:1");
    useProxy(SYSTEM_SETTINGS);

    expectRetrieved(fetch(server.url("/")));
}

TEST_F(HttpProxyTest, AProxyThatIsItselfReachedByHttpsMustBeTrustedAsServersAre) {
    const CertificateAuthority authority;
    const TlsFiles tls = authority.issue();
    ScriptedServer proxy({reply("200 OK", "[1]")}, &tls);
    const EnvironmentVariable configured("http_proxy", "https://" + proxy.address());
    useProxy(SYSTEM_SETTINGS);

    EXPECT_EQ(fetch("http://data.example/").out, error(12175));
    EXPECT_EQ(proxy.requests().size(), 0U);

    const EnvironmentVariable trusted("SSL_CERT_FILE", authority.certificate());
    expectRetrieved(fetch("http://data.example/"));
    EXPECT_EQ(proxy.requests().size(), 1U);
}

TEST_F(HttpProxyTest, ADetectedProxyIsUsed) {
    ScriptedServer server({reply("200 OK", "[1]")});
    const ForwardProxy proxy;
    const EnvironmentVariable configured("http_proxy", "http://" + proxy.address());
    useProxy(AUTO_DETECT);

    expectRetrieved(fetch(server.url("/")));
    expectThroughTinyproxy(server);
}

TEST_F(HttpProxyTest, WhenNoProxyIsDetectedTheRequestGoesOnWithoutOneAndTheReasonIsReported) {
    ScriptedServer server({reply("200 OK", "[1]")});
    useProxy(AUTO_DETECT);

    const Fetched fetched = fetch(server.url("/"));

    expectRetrieved(fetched);
    EXPECT_EQ(fetched.err, "ERROR: RDR_HTTP: No proxy was found for http://127.0.0.1\n");
    expectDirect(server);
}

TEST_F(HttpProxyTest, AnyOtherModeIsWithoutAProxy) {
    ScriptedServer server({reply("200 OK", "[1]")});
    useProxy(3, "127.0.0.1:1");

    expectRetrieved(fetch(server.url("/")));
}

}  // namespace

}  // namespace intake
