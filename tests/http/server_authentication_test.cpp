// 401: the schemes in which a fetch proves who the user is.

#include "tests/http/support/HttpTest.h"
#include "tests/http/support/ScriptedServer.h"
#include "tests/http/support/base64.h"
#include "tests/http/support/challenges.h"
#include "tests/http/support/digest.h"
#include "tests/http/support/ntlm.h"

namespace intake {

namespace {

class HttpServerAuthenticationTest : public HttpTest {
protected:
    HttpServerAuthenticationTest() {
        request_.useAuth = true;
        request_.userName = "designer";
        request_.password = "secret";
    }
};

const std::string BASIC_PROOF = "Basic " + toBase64("designer:secret");

TEST_F(HttpServerAuthenticationTest, Two401InARowEndTheFetchWithTheBodyOfTheSecond) {
    ScriptedServer server({challenge({BASIC}, "first"), challenge({BASIC}, "second")});

    const Fetched fetched = fetch(server.url("/"));

    EXPECT_TRUE(fetched.success);
    EXPECT_EQ(fetched.body, "second");
    EXPECT_EQ(fetched.out, SERVER_ASKS + SERVER_ASKS);
    EXPECT_EQ(proofs(server),
              (std::vector<std::string>{"", "Basic " + toBase64("designer:secret")}));
}

TEST_F(HttpServerAuthenticationTest, A401WithoutASchemeEndsTheFetch) {
    ScriptedServer server({challenge({}, "closed")});

    const Fetched fetched = fetch(server.url("/"));

    EXPECT_TRUE(fetched.success);
    EXPECT_EQ(fetched.body, "closed");
    EXPECT_EQ(fetched.out, SERVER_ASKS);
}

TEST_F(HttpServerAuthenticationTest, WithoutTheSwitchEmptyCredentialsAreSent) {
    ScriptedServer server({challenge({BASIC}), challenge({BASIC}, "closed")});
    request_.useAuth = false;

    const Fetched fetched = fetch(server.url("/"));

    EXPECT_EQ(fetched.body, "closed");
    EXPECT_EQ(proofs(server), (std::vector<std::string>{"", "Basic " + toBase64(":")}));
}

TEST_F(HttpServerAuthenticationTest, DigestProvesThePasswordWithoutShowingIt) {
    ScriptedServer server({challenge({DIGEST}), reply("200 OK", "[1]")});

    const Fetched fetched = fetch(server.url("/data.json?x=1"));

    EXPECT_EQ(fetched.body, "[1]");
    EXPECT_EQ(fetched.out, SERVER_ASKS + RETRIEVED);
    expectDigestProof(proofs(server).back(), "/data.json?x=1");
}

/// Refuses every proof with a nonce of its own, as many servers do.
Reply newDigestChallenge(int number) {
    std::string digest = DIGEST;
    const size_t nonce = digest.find("nonce=\"") + 7;
    digest.insert(nonce, "n" + std::to_string(number));
    return challenge({digest}, "refused");
}

TEST_F(HttpServerAuthenticationTest, DigestThatIsRefusedIsNotSentAgain) {
    int count = 0;
    ScriptedServer server([&](const std::string&) { return newDigestChallenge(++count); });

    const Fetched fetched = fetch(server.url("/data.json"));

    EXPECT_EQ(fetched.body, "refused");
    EXPECT_EQ(proofs(server).size(), 2U);  // without one, and with the one
}

TEST_F(HttpServerAuthenticationTest, NtlmExchangesItsThreeMessagesOnOneConnection) {
    ScriptedServer server(
        {challenge({NTLM}), challenge({NTLM + " " + ntlmChallenge()}), reply("200 OK", "[1]")});

    const Fetched fetched = fetch(server.url("/"));

    EXPECT_EQ(fetched.body, "[1]");
    EXPECT_EQ(fetched.out, SERVER_ASKS + RETRIEVED);
    ASSERT_EQ(proofs(server).size(), 3U);
    EXPECT_EQ(proofs(server)[0], "");
    expectNtlmNegotiation(proofs(server)[1]);
    expectNtlmProof(proofs(server)[2]);
}

struct Offer {
    const char* name;
    std::vector<std::string> schemes;
    std::string taken;  // what the proof begins with
};

void PrintTo(const Offer& offer, std::ostream* out) {
    *out << offer.name;
}

class HttpSchemeOrderTest : public HttpServerAuthenticationTest,
                            public testing::WithParamInterface<Offer> {};

TEST_P(HttpSchemeOrderTest, TheFirstUsableSchemeOfTheOfferIsTaken) {
    ScriptedServer server({challenge(GetParam().schemes)});

    fetch(server.url("/"));

    ASSERT_GE(proofs(server).size(), 2U);
    EXPECT_TRUE(proofs(server)[1].starts_with(GetParam().taken)) << proofs(server)[1];
}

INSTANTIATE_TEST_SUITE_P(
    Offers, HttpSchemeOrderTest,
    testing::Values(Offer{"Basic", {BASIC}, "Basic "}, Offer{"Ntlm", {NTLM}, "NTLM "},
                    Offer{"Digest", {DIGEST}, "Digest "},
                    Offer{"BasicBehindAllOthers", {DIGEST, NTLM, NEGOTIATE, BASIC}, "Basic "},
                    Offer{"NtlmBehindDigest", {DIGEST, NTLM}, "NTLM "},
                    Offer{"NegotiateWithoutATicketAndNtlm", {NEGOTIATE, DIGEST, NTLM}, "NTLM "},
                    Offer{"NegotiateWithoutATicketAndDigest", {NEGOTIATE, DIGEST}, "Digest "},
                    Offer{"SeveralOnOneLine", {DIGEST + ", " + BASIC}, "Basic "}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(HttpServerAuthenticationTest, NegotiateWithoutATicketIsLoggedOnceAndTheNextSchemeIsTaken) {
    ScriptedServer server({challenge({NEGOTIATE, DIGEST}), reply("200 OK", "[1]")});

    const Fetched fetched = fetch(server.url("/"));

    EXPECT_EQ(fetched.body, "[1]");
    EXPECT_EQ(log(), TICKET_WARNING);
}

TEST_F(HttpServerAuthenticationTest, NegotiateAloneWithoutATicketEndsTheFetchWithTheBody) {
    ScriptedServer server({challenge({NEGOTIATE}, "closed")});

    const Fetched fetched = fetch(server.url("/"));

    EXPECT_TRUE(fetched.success);
    EXPECT_EQ(fetched.body, "closed");
    EXPECT_EQ(fetched.out, SERVER_ASKS);
    EXPECT_EQ(log(), TICKET_WARNING);
}

}  // namespace

}  // namespace intake
