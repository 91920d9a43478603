// 407: the credentials of proxies.

#include "tests/http/support/HttpTest.h"
#include "tests/http/support/ScriptedServer.h"
#include "tests/http/support/base64.h"
#include "tests/http/support/challenges.h"
#include "tests/http/support/digest.h"
#include "tests/http/support/ntlm.h"

namespace intake {

namespace {

class HttpProxyAuthenticationTest : public HttpTest {
protected:
    HttpProxyAuthenticationTest() {
        request_.proxyUser = "designer";
        request_.proxyPwd = "secret";
    }

    /// Fetches through a proxy of our own, which plays the server behind it too.
    Fetched fetchThrough(const ScriptedServer& proxy) {
        useProxy(MANUAL, proxy.address());
        return fetch("http://data.example/");
    }
};

TEST_F(HttpProxyAuthenticationTest, BasicCredentialsAreSentToAProxyThatAsksForThem) {
    ScriptedServer proxy({proxyChallenge({BASIC}), reply("200 OK", "[1]")});

    const Fetched fetched = fetchThrough(proxy);

    EXPECT_TRUE(fetched.success);
    EXPECT_EQ(fetched.body, "[1]");
    EXPECT_EQ(fetched.out, PROXY_ASKS + RETRIEVED);
    EXPECT_EQ(proxyProofs(proxy).back(), "Basic " + toBase64("designer:secret"));
}

TEST_F(HttpProxyAuthenticationTest, Two407InARowEndTheFetchWithTheBodyOfTheSecond) {
    ScriptedServer proxy({proxyChallenge({BASIC}, "first"), proxyChallenge({BASIC}, "second")});

    const Fetched fetched = fetchThrough(proxy);

    EXPECT_TRUE(fetched.success);
    EXPECT_EQ(fetched.body, "second");
    EXPECT_EQ(fetched.out, PROXY_ASKS + PROXY_ASKS);
}

TEST_F(HttpProxyAuthenticationTest, AProxyAndAServerThatBothAskAreBothAnswered) {
    ScriptedServer proxy({proxyChallenge({BASIC}), challenge({BASIC}), reply("200 OK", "[1]")});
    request_.useAuth = true;
    request_.userName = "editor";
    request_.password = "word";

    const Fetched fetched = fetchThrough(proxy);

    EXPECT_EQ(fetched.body, "[1]");
    EXPECT_EQ(fetched.out, PROXY_ASKS + SERVER_ASKS + RETRIEVED);
    EXPECT_EQ(proxyProofs(proxy).back(), "Basic " + toBase64("designer:secret"));
    EXPECT_EQ(proofs(proxy).back(), "Basic " + toBase64("editor:word"));
}

TEST_F(HttpProxyAuthenticationTest, DigestProvesThePasswordToAProxy) {
    ScriptedServer proxy({proxyChallenge({DIGEST}), reply("200 OK", "[1]")});

    const Fetched fetched = fetchThrough(proxy);

    EXPECT_EQ(fetched.body, "[1]");
    EXPECT_EQ(fetched.out, PROXY_ASKS + RETRIEVED);
    expectDigestProof(proxyProofs(proxy).back(), "/");
}

TEST_F(HttpProxyAuthenticationTest, NtlmExchangesItsThreeMessagesWithAProxy) {
    ScriptedServer proxy({proxyChallenge({NTLM}), proxyChallenge({NTLM + " " + ntlmChallenge()}),
                          reply("200 OK", "[1]")});

    const Fetched fetched = fetchThrough(proxy);

    EXPECT_EQ(fetched.body, "[1]");
    EXPECT_EQ(fetched.out, PROXY_ASKS + RETRIEVED);
    ASSERT_EQ(proxy.requests().size(), 3U);
    expectNtlmNegotiation(proxyProofs(proxy)[1]);
    expectNtlmProof(proxyProofs(proxy)[2]);
}

TEST_F(HttpProxyAuthenticationTest, NtlmExchangesItsThreeMessagesForATunnel) {
    ScriptedServer proxy({proxyChallenge({NTLM}), proxyChallenge({NTLM + " " + ntlmChallenge()}),
                          reply("403 Forbidden", "")});
    useProxy(MANUAL, proxy.address());

    const Fetched fetched = fetch("https://data.example/");

    EXPECT_TRUE(fetched.success);
    EXPECT_EQ(fetched.out, PROXY_ASKS + otherStatus(403));
    ASSERT_EQ(proxyProofs(proxy).size(), 3U);
    expectNtlmNegotiation(proxyProofs(proxy)[1]);
    expectNtlmProof(proxyProofs(proxy)[2]);
}

TEST_F(HttpProxyAuthenticationTest, AProxyThatGoesAwayAfterItAskedIsAFailure) {
    ScriptedServer proxy({proxyChallenge({BASIC})});
    useProxy(MANUAL, proxy.address());

    const Fetched fetched = fetch("https://data.example/");

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, PROXY_ASKS + error(12030));
}

TEST_F(HttpProxyAuthenticationTest, OfAllSchemesTogetherBasicIsTaken) {
    ScriptedServer proxy({proxyChallenge({DIGEST, NTLM, NEGOTIATE, BASIC}), reply("200 OK", "")});

    fetchThrough(proxy);

    EXPECT_EQ(proxyProofs(proxy).back(), "Basic " + toBase64("designer:secret"));
}

TEST_F(HttpProxyAuthenticationTest, NegotiateWithoutATicketIsLoggedAndNtlmIsTaken) {
    ScriptedServer proxy({proxyChallenge({DIGEST, NTLM, NEGOTIATE}),
                          proxyChallenge({NTLM + " " + ntlmChallenge()}), reply("200 OK", "[1]")});

    EXPECT_EQ(fetchThrough(proxy).body, "[1]");
    EXPECT_TRUE(proxyProofs(proxy).back().starts_with("NTLM "));
    EXPECT_EQ(log(), TICKET_WARNING);
}

}  // namespace

}  // namespace intake
