// Credentials.

#include "tests/http/support/ScriptedServer.h"
#include "tests/http/support/base64.h"
#include "tests/http/support/challenges.h"
#include "tests/http/support/digest.h"
#include "tests/http/support/ntlm.h"
#include "tests/platform/xml/XmlRequestTest.h"

namespace intake {

namespace {

class XmlAuthentication : public XmlRequestTest {
protected:
    XmlAuthentication() {
        user_ = &designer_;
        password_ = &secret_;
    }

private:
    const std::string designer_ = "designer";
    const std::string secret_ = "secret";
};

TEST_F(XmlAuthentication, BasicCredentialsAreSentWhenAsked) {
    ScriptedServer server({challenge({BASIC}), reply("200 OK", "<a/>")});
    fetch(server.url("/"));
    EXPECT_EQ(names("/*"), "a|");
    EXPECT_EQ(proofs(server),
              (std::vector<std::string>{"", "Basic " + toBase64("designer:secret")}));
}

TEST_F(XmlAuthentication, DigestProvesThePasswordWithoutShowingIt) {
    ScriptedServer server({challenge({DIGEST}), reply("200 OK", "<a/>")});
    fetch(server.url("/data.xml?q=0"));
    EXPECT_EQ(names("/*"), "a|");
    expectDigestProof(proofs(server).back(), "/data.xml?q=0");
}

TEST_F(XmlAuthentication, DigestThatIsRefusedIsNotSentAgain) {
    int count = 0;
    ScriptedServer server([&](const std::string&) {
        std::string digest = DIGEST;
        digest.insert(digest.find("nonce=\"") + 7, "n" + std::to_string(++count));
        return challenge({digest}, "<refused/>");
    });
    fetch(server.url("/data.xml"));
    EXPECT_EQ(names("/*"), "refused|");
    EXPECT_EQ(proofs(server).size(), 2U);
}

TEST_F(XmlAuthentication, NtlmExchangesItsThreeMessages) {
    ScriptedServer server(
        {challenge({NTLM}), challenge({NTLM + " " + ntlmChallenge()}), reply("200 OK", "<a/>")});
    fetch(server.url("/"));
    EXPECT_EQ(names("/*"), "a|");
    expectNtlmProof(proofs(server).back());
}

TEST_F(XmlAuthentication, ARefusalIsABodyLikeOthers) {
    ScriptedServer server({challenge({BASIC}), challenge({BASIC}, "<refused/>")});
    fetch(server.url("/"));
    EXPECT_EQ(names("/*"), "refused|");
}

TEST_F(XmlAuthentication, WithoutCredentialsNothingIsProved) {
    user_ = password_ = nullptr;
    ScriptedServer server({challenge({BASIC}, "<refused/>")});
    fetch(server.url("/"));
    EXPECT_EQ(names("/*"), "refused|");
    EXPECT_EQ(proofs(server), std::vector<std::string>{""});
}

Reply redirectTo(const std::string& url) {
    return reply("302 Found", "moved", "Location: " + url + "\r\n");
}

TEST_F(XmlAuthentication, IsGivenWhereARedirectLeadsOnTheSameServer) {
    ScriptedServer server({redirectTo("/login"), challenge({BASIC}), reply("200 OK", "<a/>")});
    fetch(server.url("/"));
    EXPECT_EQ(names("/*"), "a|");
    EXPECT_EQ(proofs(server),
              (std::vector<std::string>{"", "", "Basic " + toBase64("designer:secret")}));
}

TEST_F(XmlAuthentication, IsNotGivenToAnotherPortOrHostThatARedirectNames) {
    for (const char* const host : {"127.0.0.1", "localhost"}) {
        ScriptedServer other({challenge({BASIC}, "<refused/>"), reply("200 OK", "<a/>")});
        std::string elsewhere = other.url("/");
        elsewhere.replace(elsewhere.find("127.0.0.1"), 9, host);
        ScriptedServer first({challenge({BASIC}), redirectTo(elsewhere)});
        request_ = services_.createRequest(*connections_, endMark_);
        fetch(first.url("/"));
        EXPECT_EQ(names("/*"), "refused|") << host;
        EXPECT_EQ(proofs(other), std::vector<std::string>{""}) << host;
    }
}

}  // namespace

}  // namespace intake
