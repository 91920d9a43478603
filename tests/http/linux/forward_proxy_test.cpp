// The three modes of the proxy, with a real one.

#include "tests/http/support/ForwardProxy.h"
#include "tests/http/support/HttpTest.h"
#include "tests/http/support/ScriptedServer.h"
#include "tests/http/support/linux/tls.h"

namespace intake {

namespace {

using HttpForwardProxyTest = HttpTest;

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

TEST_F(HttpForwardProxyTest, AManualProxyFetchesForUs) {
    ScriptedServer server({reply("200 OK", "[1]")});
    const ForwardProxy proxy;
    useProxy(MANUAL, proxy.address());

    expectRetrieved(fetch(server.url("/")));
    expectThroughTinyproxy(server);
}

TEST_F(HttpForwardProxyTest, AManualProxyMayBeGivenAsAUrl) {
    ScriptedServer server({reply("200 OK", "[1]")});
    const ForwardProxy proxy;
    useProxy(MANUAL, "http://" + proxy.address() + "/");

    expectRetrieved(fetch(server.url("/")));
    expectThroughTinyproxy(server);
}

TEST_F(HttpForwardProxyTest, AManualProxyOpensATunnelForHttps) {
    const CertificateAuthority authority;
    const EnvironmentVariable trusted("SSL_CERT_FILE", authority.certificate());
    const TlsFiles tls = authority.issue();
    ScriptedServer server({reply("200 OK", "[1]")}, overTls(tls));
    const ForwardProxy proxy;
    useProxy(MANUAL, proxy.address());

    expectRetrieved(fetch(server.url("/")));
    EXPECT_NE(proxy.log().find("CONNECT " + server.address()), std::string::npos) << proxy.log();
}

TEST_F(HttpForwardProxyTest, AManualProxyWithoutAPortIsAskedOnPort80) {
    useProxy(MANUAL, "127.77.7.7");

    const Fetched fetched = fetch("http://data.example/");

    EXPECT_EQ(fetched.out, error(12029));
    EXPECT_NE(fetched.err.find("127.77.7.7 port 80 "), std::string::npos) << fetched.err;
}

TEST_F(HttpForwardProxyTest, TheSystemsProxyIsUsed) {
    ScriptedServer server({reply("200 OK", "[1]")});
    const ForwardProxy proxy;
    const EnvironmentVariable configured("http_proxy", "http://" + proxy.address());
    useProxy(SYSTEM_SETTINGS);

    expectRetrieved(fetch(server.url("/")));
    expectThroughTinyproxy(server);
}

TEST_F(HttpForwardProxyTest, ExceptionsOfTheSystemsProxyAreReachedWithoutIt) {
    ScriptedServer server({reply("200 OK", "[1]")});
    const ForwardProxy proxy;
    const EnvironmentVariable configured("http_proxy", "http://" + proxy.address());
    const EnvironmentVariable exceptions("no_proxy", "127.0.0.1");
    useProxy(SYSTEM_SETTINGS);

    expectRetrieved(fetch(server.url("/")));
    expectDirect(server);
}

TEST_F(HttpForwardProxyTest, AnExceptionOfTheSystemsProxyForAllHostsIsOne) {
    ScriptedServer server({reply("200 OK", "[1]")});
    const ForwardProxy proxy;
    const EnvironmentVariable configured("http_proxy", "http://" + proxy.address());
    const EnvironmentVariable exceptions("no_proxy", "*");
    useProxy(SYSTEM_SETTINGS);

    expectRetrieved(fetch(server.url("/")));
    expectDirect(server);
}

TEST_F(HttpForwardProxyTest, TheSystemsProxyMayBeGivenWithoutAScheme) {
    ScriptedServer server({reply("200 OK", "[1]")});
    const ForwardProxy proxy;
    const EnvironmentVariable configured("http_proxy", proxy.address());
    useProxy(SYSTEM_SETTINGS);

    expectRetrieved(fetch(server.url("/")));
    expectThroughTinyproxy(server);
}

TEST_F(HttpForwardProxyTest, TheSystemsProxyMayBeGivenWithoutASchemeForHttpsToo) {
    const CertificateAuthority authority;
    const EnvironmentVariable trusted("SSL_CERT_FILE", authority.certificate());
    const TlsFiles tls = authority.issue();
    ScriptedServer server({reply("200 OK", "[1]")}, overTls(tls));
    const ForwardProxy proxy;
    const EnvironmentVariable configured("HTTPS_PROXY", proxy.address());
    const EnvironmentVariable other("http_proxy", "127.0.0.1:1");
    useProxy(SYSTEM_SETTINGS);

    expectRetrieved(fetch(server.url("/")));
    EXPECT_NE(proxy.log().find("CONNECT " + server.address()), std::string::npos) << proxy.log();
}

TEST_F(HttpForwardProxyTest, ExceptionsHoldForASystemsProxyWithoutASchemeToo) {
    ScriptedServer server({reply("200 OK", "[1]")});
    const ForwardProxy proxy;
    const EnvironmentVariable configured("http_proxy", proxy.address());
    const EnvironmentVariable exceptions("NO_PROXY", "other.example, 127.0.0.1");
    useProxy(SYSTEM_SETTINGS);

    expectRetrieved(fetch(server.url("/")));
    expectDirect(server);
}

TEST_F(HttpForwardProxyTest, LocalHostsAreAnExceptionOfASystemsProxyWithoutASchemeToo) {
    ScriptedServer server({reply("200 OK", "[1]")});
    const EnvironmentVariable configured("http_proxy", "127.0.0.1:1");
    const EnvironmentVariable exceptions("no_proxy", "other.example,<local>");
    useProxy(SYSTEM_SETTINGS);

    expectRetrieved(fetch("http://localhost:" + std::to_string(server.port()) + "/"));
    expectDirect(server);
}

TEST_F(HttpForwardProxyTest, DomainsWithAStarAreExceptionsOfASystemsProxyWithoutASchemeToo) {
    ScriptedServer server({reply("200 OK", "[1]")});
    const EnvironmentVariable configured("http_proxy", "127.0.0.1:1");
    const EnvironmentVariable exceptions("no_proxy", "other.example,*.localhost");
    useProxy(SYSTEM_SETTINGS);

    expectRetrieved(fetch("http://data.localhost:" + std::to_string(server.port()) + "/"));
    expectDirect(server);
}

TEST_F(HttpForwardProxyTest, WithoutAProxyInTheSystemsSettingsTheRequestGoesOnWithoutOne) {
    ScriptedServer server({reply("200 OK", "[1]")});
    useProxy(SYSTEM_SETTINGS);

    expectRetrieved(fetch(server.url("/")));
    expectDirect(server);
}

TEST_F(HttpForwardProxyTest, TheSystemsProxyForHttpsIsUsedForHttps) {
    const CertificateAuthority authority;
    const EnvironmentVariable trusted("SSL_CERT_FILE", authority.certificate());
    const TlsFiles tls = authority.issue();
    ScriptedServer server({reply("200 OK", "[1]")}, overTls(tls));
    const ForwardProxy proxy;
    const EnvironmentVariable configured("https_proxy", "http://" + proxy.address());
    const EnvironmentVariable other("http_proxy", "http://127.0.0.1:1");
    useProxy(SYSTEM_SETTINGS);

    expectRetrieved(fetch(server.url("/")));
    EXPECT_NE(proxy.log().find("CONNECT " + server.address()), std::string::npos) << proxy.log();
}

TEST_F(HttpForwardProxyTest, TheSystemsProxyForHttpsIsNotUsedForHttp) {
    ScriptedServer server({reply("200 OK", "[1]")});
    const EnvironmentVariable other("https_proxy", "http://127.0.0.1:1");
    useProxy(SYSTEM_SETTINGS);

    expectRetrieved(fetch(server.url("/")));
}

TEST_F(HttpForwardProxyTest, AProxyThatIsItselfReachedByHttpsMustBeTrustedAsServersAre) {
    const CertificateAuthority authority;
    const TlsFiles tls = authority.issue();
    ScriptedServer proxy({reply("200 OK", "[1]")}, overTls(tls));
    const EnvironmentVariable configured("http_proxy", "https://" + proxy.address());
    useProxy(SYSTEM_SETTINGS);

    EXPECT_EQ(fetch("http://data.example/").out, error(12175));
    EXPECT_EQ(proxy.requests().size(), 0U);

    const EnvironmentVariable trusted("SSL_CERT_FILE", authority.certificate());
    expectRetrieved(fetch("http://data.example/"));
    EXPECT_EQ(proxy.requests().size(), 1U);
}

TEST_F(HttpForwardProxyTest, ADetectedProxyIsUsed) {
    ScriptedServer server({reply("200 OK", "[1]")});
    const ForwardProxy proxy;
    const EnvironmentVariable configured("http_proxy", "http://" + proxy.address());
    useProxy(AUTO_DETECT);

    expectRetrieved(fetch(server.url("/")));
    expectThroughTinyproxy(server);
}

TEST_F(HttpForwardProxyTest,
       WhenNoProxyIsDetectedTheRequestGoesOnWithoutOneAndTheReasonIsReported) {
    ScriptedServer server({reply("200 OK", "[1]")});
    useProxy(AUTO_DETECT);

    const Fetched fetched = fetch(server.url("/"));

    expectRetrieved(fetched);
    EXPECT_EQ(fetched.err, "ERROR: RDR_HTTP: No proxy was found for http://127.0.0.1\n");
    expectDirect(server);
}

TEST_F(HttpForwardProxyTest, ARealProxyAcceptsBasicCredentials) {
    ScriptedServer server({reply("200 OK", "[1]")});
    const ForwardProxy proxy("BasicAuth designer secret\n");
    useProxy(MANUAL, proxy.address());
    request_.proxyUser = "designer";
    request_.proxyPwd = "secret";

    const Fetched fetched = fetch(server.url("/"));

    EXPECT_EQ(fetched.body, "[1]");
    EXPECT_EQ(fetched.out, PROXY_ASKS + RETRIEVED);
    EXPECT_EQ(server.requests().size(), 1U);
}

TEST_F(HttpForwardProxyTest, ARealProxyAcceptsBasicCredentialsForATunnel) {
    const CertificateAuthority authority;
    const EnvironmentVariable trusted("SSL_CERT_FILE", authority.certificate());
    const TlsFiles tls = authority.issue();
    ScriptedServer server({reply("200 OK", "[1]")}, overTls(tls));
    const ForwardProxy proxy("BasicAuth designer secret\n");
    useProxy(MANUAL, proxy.address());
    request_.proxyUser = "designer";
    request_.proxyPwd = "secret";

    const Fetched fetched = fetch(server.url("/"));

    EXPECT_EQ(fetched.body, "[1]");
    EXPECT_EQ(fetched.out, PROXY_ASKS + RETRIEVED);
}

TEST_F(HttpForwardProxyTest, ARealProxyRefusesAWrongPassword) {
    ScriptedServer server({reply("200 OK", "[1]")});
    const ForwardProxy proxy("BasicAuth designer other\n");
    useProxy(MANUAL, proxy.address());
    request_.proxyUser = "designer";
    request_.proxyPwd = "secret";

    const Fetched fetched = fetch(server.url("/"));

    EXPECT_TRUE(fetched.success);
    // Tinyproxy answers a wrong password with 401.
    EXPECT_EQ(fetched.out, PROXY_ASKS + SERVER_ASKS + SERVER_ASKS);
    EXPECT_EQ(server.requests().size(), 0U);
}

TEST_F(HttpForwardProxyTest, AServerBehindTheProxyNeverSeesTheProxysCredentials) {
    ScriptedServer server({reply("200 OK", "[1]")});
    const ForwardProxy proxy("BasicAuth designer secret\n");
    useProxy(MANUAL, proxy.address());
    request_.proxyUser = "designer";
    request_.proxyPwd = "secret";

    fetch(server.url("/"));

    EXPECT_EQ(server.requests().at(0).find("Proxy-Authorization"), std::string::npos);
}

}  // namespace

}  // namespace intake
