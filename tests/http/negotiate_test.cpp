// Negotiate with a Kerberos ticket of a real key distribution centre.

#include "tests/http/support/HttpTest.h"
#include "tests/http/support/KerberosRealm.h"
#include "tests/http/support/ScriptedServer.h"
#include "tests/http/support/challenges.h"
#include "tests/http/support/ntlm.h"

namespace intake {

namespace {

class HttpNegotiateTest : public HttpTest {
protected:
    static std::string urlOf(const ScriptedServer& server) {
        return "http://localhost:" + std::to_string(server.port()) + "/";
    }

    /// Who proved who they are with this header.
    std::string clientOf(const std::string& proof) const {
        return proof.starts_with("Negotiate ") ? realm_.clientOf(proof.substr(10)) : "";
    }

    KerberosRealm realm_;
};

TEST_F(HttpNegotiateTest, ATicketProvesWhoTheUserIs) {
    realm_.logOn();
    ScriptedServer server({challenge({NEGOTIATE}), reply("200 OK", "[1]")});

    const Fetched fetched = fetch(urlOf(server));

    EXPECT_EQ(fetched.body, "[1]");
    EXPECT_EQ(fetched.out, SERVER_ASKS + RETRIEVED);
    ASSERT_EQ(server.requests().size(), 2U);
    EXPECT_EQ(clientOf(proofs(server)[1]), "designer@INTAKE.TEST");
    EXPECT_EQ(log(), "");
}

TEST_F(HttpNegotiateTest, WithATicketNegotiateComesBeforeNtlm) {
    realm_.logOn();
    ScriptedServer server({challenge({NTLM, NEGOTIATE}), reply("200 OK", "[1]")});

    fetch(urlOf(server));

    ASSERT_EQ(server.requests().size(), 2U);
    EXPECT_EQ(clientOf(proofs(server)[1]), "designer@INTAKE.TEST");
}

TEST_F(HttpNegotiateTest, EvenWithATicketBasicComesFirst) {
    realm_.logOn();
    ScriptedServer server({challenge({NEGOTIATE, BASIC}), reply("200 OK", "[1]")});

    EXPECT_EQ(fetch(urlOf(server)).body, "[1]");
    EXPECT_TRUE(proofs(server)[1].starts_with("Basic "));
}

TEST_F(HttpNegotiateTest, WithoutATicketTheNextSchemeIsTakenAndTheLogSaysSo) {
    ScriptedServer server({challenge({NTLM, NEGOTIATE}), challenge({NTLM + " " + ntlmChallenge()}),
                           reply("200 OK", "[1]")});

    const Fetched fetched = fetch(urlOf(server));

    EXPECT_EQ(fetched.body, "[1]");
    ASSERT_EQ(server.requests().size(), 3U);
    EXPECT_TRUE(proofs(server)[1].starts_with("NTLM "));
    EXPECT_EQ(log(), TICKET_WARNING);
}

TEST_F(HttpNegotiateTest, ATicketThatIsOfNoUseForTheServerLeavesTheRequestUnproved) {
    realm_.logOn();
    ScriptedServer server({challenge({NEGOTIATE}), challenge({NEGOTIATE}, "closed")});

    const Fetched fetched = fetch(server.url("/"));  // the realm knows "localhost" only

    EXPECT_TRUE(fetched.success);
    EXPECT_EQ(fetched.body, "closed");
    EXPECT_EQ(fetched.out, SERVER_ASKS + SERVER_ASKS);
}

TEST_F(HttpNegotiateTest, ATicketProvesWhoTheUserIsToAProxyToo) {
    realm_.logOn();
    ScriptedServer proxy({proxyChallenge({NEGOTIATE}), reply("200 OK", "[1]")});
    useProxy(MANUAL, "localhost:" + std::to_string(proxy.port()));

    const Fetched fetched = fetch("http://data.example/");

    EXPECT_EQ(fetched.body, "[1]");
    EXPECT_EQ(fetched.out, PROXY_ASKS + RETRIEVED);
    ASSERT_EQ(proxyProofs(proxy).size(), 2U);
    EXPECT_EQ(clientOf(proxyProofs(proxy)[1]), "designer@INTAKE.TEST");
}

}  // namespace

}  // namespace intake
