// Which connection a load takes: that of the load before, as long as nothing speaks against it.

#include <gtest/gtest.h>

#include "tests/http/support/ForwardProxy.h"
#include "tests/http/support/HttpTest.h"
#include "tests/http/support/KerberosRealm.h"
#include "tests/http/support/ScriptedServer.h"
#include "tests/http/support/WebServer.h"
#include "tests/http/support/challenges.h"
#include "tests/http/support/linux/tls.h"
#include "tests/http/support/ntlm.h"
#include "tests/support/eventually.h"

namespace intake {

namespace {

/// Shows by which connection it was asked.
constexpr const char* WHICH = "location /which { return 200 $connection; }";

class KeptConnections : public HttpTest {
protected:
    KeptConnections() : trusted_("SSL_CERT_FILE", authority_.certificate()) {}

    void expectBody(const std::string& body, const Fetched& fetched) {
        EXPECT_EQ(fetched.body, body) << fetched.err;
        EXPECT_EQ(fetched.out, RETRIEVED);
    }

    /// Fetches twice; how many connections that took.
    size_t connectionsOfTwo(ScriptedServer& server, const std::string& url) {
        fetch(url);
        fetch(url);
        return server.connections();
    }

    CertificateAuthority authority_;
    TlsFiles tls_ = authority_.issue();
    EnvironmentVariable trusted_;
};

const Reply CUT_OFF{"", Then::CUT};

TEST_F(KeptConnections, ServeTheNextLoad) {
    WebServer server(WHICH, &tls_);
    for (const std::string& url : {server.url("/which"), server.secureUrl("/which")}) {
        const std::string first = fetch(url).body;
        EXPECT_NE(first, "");
        expectBody(first, fetch(url));
        expectBody(first, fetch(url));
    }
}

TEST_F(KeptConnections, ServeTheNextLoadAfterAnErrorThatCameWhole) {
    WebServer server(std::string(WHICH) + "location /busy { return 503 $connection; }");
    const std::string first = fetch(server.url("/busy")).body;
    expectBody(first, fetch(server.url("/which")));
}

TEST_F(KeptConnections, AreOfNoUseWhenTheServerWasStartedAgain) {
    WebServer server(WHICH, &tls_);
    for (const std::string& url : {server.url("/which"), server.secureUrl("/which")}) {
        EXPECT_NE(fetch(url).body, "");
        server.stop();
        server.start();
        EXPECT_EQ(fetch(url).out, RETRIEVED);
    }
}

TEST_F(KeptConnections, ThatBreakWithTheNextRequestAreReplaced) {
    for (const bool isSecure : {false, true}) {
        ScriptedServer server({reply("200 OK", "[1]"), CUT_OFF, reply("200 OK", "[2]")},
                              isSecure ? overTls(tls_) : nullptr);
        expectBody("[1]", fetch(server.url("/")));
        expectBody("[2]", fetch(server.url("/")));
        EXPECT_EQ(server.requests().size(), 3U);
        EXPECT_EQ(server.connections(), 2U);
    }
}

TEST_F(KeptConnections, ThatBreakWithinAnAnswerFailTheLoad) {
    for (const bool isSecure : {false, true}) {
        ScriptedServer server(
            {reply("200 OK", "[1]"), Reply{"HTTP/1.1 200 OK\r\nContent-Le", Then::CUT}},
            isSecure ? overTls(tls_) : nullptr);
        expectBody("[1]", fetch(server.url("/")));
        EXPECT_EQ(fetch(server.url("/")).out, error(12030));
        EXPECT_EQ(server.requests().size(), 2U);
    }
}

TEST_F(KeptConnections, AreTriedOnceMoreOnlyWhereTheyWereKept) {
    ScriptedServer server({CUT_OFF, reply("200 OK", "[1]")});
    EXPECT_EQ(fetch(server.url("/")).out, error(12030));
    EXPECT_EQ(server.requests().size(), 1U);
}

TEST_F(KeptConnections, OverWhichMoreCameThanWasAnnouncedAreClosed) {
    const std::string unasked = reply("200 OK", "[9]").bytes;
    for (const bool isSecure : {false, true}) {
        for (const size_t size : {size_t{3}, size_t{20'000}, size_t{500'000}}) {
            const std::string body(size, '1');
            ScriptedServer server({{reply("200 OK", body).bytes + unasked}, reply("200 OK", "[2]")},
                                  isSecure ? overTls(tls_) : nullptr);
            expectBody(body, fetch(server.url("/")));
            expectBody("[2]", fetch(server.url("/")));
            EXPECT_EQ(server.connections(), 2U) << isSecure << ' ' << size;
        }
    }
}

TEST_F(KeptConnections, GiveNothingThatCameBeyondTheAnswerThatRedirected) {
    for (const size_t size : {size_t{3}, size_t{20'000}, size_t{500'000}}) {
        ScriptedServer target({reply("200 OK", "[1]"), reply("200 OK", "[2]")}, overTls(tls_));
        const std::string location = "Location: " + target.url("/") + "\r\n";
        const std::string unasked = reply("200 OK", "[9]").bytes;
        const Reply moved{reply("302 Found", std::string(size, '1'), location).bytes + unasked};
        ScriptedServer server({moved, moved}, overTls(tls_));
        expectBody("[1]", fetch(server.url("/")));
        expectBody("[2]", fetch(server.url("/")));
    }
}

TEST_F(KeptConnections, AreClosedWhenALoadBreaksOff) {
    ScriptedServer server({Reply{"HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n1234", Then::CUT},
                           reply("200 OK", "[2]")});
    EXPECT_EQ(fetch(server.url("/")).out, RETRIEVED + errorWithinBody(12030));
    expectBody("[2]", fetch(server.url("/")));
    EXPECT_EQ(server.connections(), 2U);
}

TEST_F(KeptConnections, AreClosedWhenALoadIsGivenUp) {
    ScriptedServer server({reply("200 OK", "[1]"), reply("200 OK", std::string(9'000'000, '2'))});
    expectBody("[1]", fetch(server.url("/")));
    endMark_.set();
    EXPECT_FALSE(fetch(server.url("/")).success);
    EXPECT_TRUE(eventually([&] { return server.openConnections() == 0; }));
}

TEST_F(KeptConnections, AreClosedWithTheirWorker) {
    ScriptedServer server({reply("200 OK", "[1]")});
    expectBody("[1]", fetch(server.url("/")));
    EXPECT_EQ(server.openConnections(), 1U);
    connections_.reset();
    EXPECT_TRUE(eventually([&] { return server.openConnections() == 0; }));
}

TEST_F(KeptConnections, AreTakenAfterBasicAndDigest) {
    for (const std::string& scheme : {BASIC, DIGEST}) {
        ScriptedServer server({challenge({scheme}), reply("200 OK", "[1]"), challenge({scheme}),
                               reply("200 OK", "[2]")});
        EXPECT_EQ(connectionsOfTwo(server, server.url("/")), 1U) << scheme;
    }
}

TEST_F(KeptConnections, AreNotTakenAfterNtlm) {
    const std::vector<Reply> load{challenge({NTLM}), challenge({NTLM + " " + ntlmChallenge()}),
                                  reply("200 OK", "[1]")};
    std::vector<Reply> replies = load;
    replies.insert(replies.end(), load.begin(), load.end());
    ScriptedServer server(replies);
    EXPECT_EQ(connectionsOfTwo(server, server.url("/")), 2U);
    EXPECT_EQ(server.requests().size(), 6U);
}

TEST_F(KeptConnections, AreNotTakenAfterNegotiate) {
    KerberosRealm realm;
    realm.logOn();
    ScriptedServer server({challenge({NEGOTIATE}), reply("200 OK", "[1]"), challenge({NEGOTIATE}),
                           reply("200 OK", "[2]")});
    const std::string url = "http://localhost:" + std::to_string(server.port()) + "/";
    EXPECT_EQ(connectionsOfTwo(server, url), 2U);
    EXPECT_EQ(server.requests().size(), 4U);
}

TEST_F(KeptConnections, AreNotTakenAfterNtlmForAProxy) {
    const std::vector<Reply> load{proxyChallenge({NTLM}),
                                  proxyChallenge({NTLM + " " + ntlmChallenge()}),
                                  reply("200 OK", "[1]")};
    std::vector<Reply> replies = load;
    replies.insert(replies.end(), load.begin(), load.end());
    ScriptedServer proxy(replies);
    useProxy(MANUAL, proxy.address());
    EXPECT_EQ(connectionsOfTwo(proxy, "http://data.example/"), 2U);
}

TEST_F(KeptConnections, ToAProxyServeTheNextLoad) {
    ScriptedServer proxy({reply("200 OK", "[1]"), reply("200 OK", "[2]")});
    useProxy(MANUAL, proxy.address());
    EXPECT_EQ(connectionsOfTwo(proxy, "http://data.example/"), 1U);
}

TEST_F(KeptConnections, ToAProxyServeNoOtherUserWhomItsAddressNames) {
    ScriptedServer proxy({reply("200 OK", "[1]"), reply("200 OK", "[2]")});
    useProxy(MANUAL, "http://one:secret@" + proxy.address());
    expectBody("[1]", fetch("http://data.example/"));
    useProxy(MANUAL, "http://two:secret@" + proxy.address());
    expectBody("[2]", fetch("http://data.example/"));
    EXPECT_EQ(proxy.connections(), 2U);
}

TEST_F(KeptConnections, ThroughATunnelServeTheNextLoadThroughItAlone) {
    WebServer server(WHICH, &tls_);
    ForwardProxy proxy;
    const std::string url = server.secureUrl("/which");
    useProxy(MANUAL, proxy.address());
    const std::string tunnelled = fetch(url).body;
    EXPECT_NE(tunnelled, "");
    expectBody(tunnelled, fetch(url));

    request_.enableProxy = false;
    const Fetched direct = fetch(url);
    EXPECT_EQ(direct.out, RETRIEVED);
    EXPECT_NE(direct.body, tunnelled);
}

TEST_F(KeptConnections, ThatWereVerifiedServeNoLoadThatTrustsOthers) {
    WebServer server(WHICH, &tls_);
    EXPECT_EQ(fetch(server.secureUrl("/which")).out, RETRIEVED);
    const CertificateAuthority other;
    const EnvironmentVariable trusted("SSL_CERT_FILE", other.certificate());
    EXPECT_EQ(fetch(server.secureUrl("/which")).out, error(12175));
}

TEST_F(KeptConnections, LeadNoRedirectBackToHttp) {
    ScriptedServer plain({reply("200 OK", "[9]")});
    ScriptedServer server(
        {reply("200 OK", "[1]"), reply("302 Found", "", "Location: " + plain.url("/") + "\r\n")},
        overTls(tls_));
    expectBody("[1]", fetch(server.url("/")));
    EXPECT_EQ(fetch(server.url("/")).out, error(12156));
    EXPECT_EQ(server.connections(), 1U);
    EXPECT_EQ(plain.requests().size(), 0U);
}

TEST_F(KeptConnections, ToTheTargetOfARedirectAreKeptToo) {
    WebServer target(WHICH);
    WebServer server("location /to { return 302 " + target.url("/which") + "; }");
    const std::string first = fetch(server.url("/to")).body;
    expectBody(first, fetch(server.url("/to")));
}

}  // namespace

}  // namespace intake
