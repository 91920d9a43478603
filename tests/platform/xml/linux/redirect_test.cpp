// What a redirect to another server is not told.

#include "tests/http/support/ScriptedServer.h"
#include "tests/http/support/base64.h"
#include "tests/http/support/challenges.h"
#include "tests/http/support/linux/tls.h"
#include "tests/platform/xml/XmlRequestTest.h"

namespace intake {

namespace {

using XmlRedirects = XmlRequestTest;

constexpr const char* REFUSED = "<refused/>";
const std::vector<std::string> NOTHING_PROVED{""};

Reply redirectTo(const ScriptedServer& server) {
    return reply("302 Found", "", "Location: " + server.url("/") + "\r\n");
}

class XmlRedirectedCredentials : public XmlRequestTest {
protected:
    XmlRedirectedCredentials() {
        user_ = &designer_;
        password_ = &secret_;
    }

private:
    const std::string designer_ = "designer";
    const std::string secret_ = "secret";
};

TEST_F(XmlRedirectedCredentials, AreNotSentToAnotherPort) {
    ScriptedServer other({challenge({BASIC}, REFUSED)});
    ScriptedServer first({redirectTo(other)});

    fetch(first.url("/"));

    EXPECT_EQ(names("/*"), "refused|");
    EXPECT_EQ(proofs(other), NOTHING_PROVED);
}

TEST_F(XmlRedirectedCredentials, AreNotSentToAnotherPortAfterTheFirstServerHadThem) {
    ScriptedServer other({challenge({BASIC}, REFUSED)});
    ScriptedServer first({challenge({BASIC}), redirectTo(other)});

    fetch(first.url("/"));

    EXPECT_EQ(names("/*"), "refused|");
    EXPECT_EQ(proofs(first).back(), "Basic " + toBase64("designer:secret"));
    EXPECT_EQ(proofs(other), NOTHING_PROVED);
}

TEST_F(XmlRedirectedCredentials, AreNotSentOverTlsToAnotherPort) {
    const CertificateAuthority authority;
    const TlsFiles tls = authority.issue();
    const EnvironmentVariable trusted("SSL_CERT_FILE", authority.certificate());
    request_ = services_.createRequest(*connections_, endMark_);
    ScriptedServer secure({challenge({BASIC}, REFUSED)}, overTls(tls));
    ScriptedServer first({redirectTo(secure)});

    fetch(first.url("/"));

    EXPECT_EQ(names("/*"), "refused|");
    EXPECT_EQ(proofs(secure), NOTHING_PROVED);
}

TEST_F(XmlRedirects, SecretHeadersOfOnesOwnAreNotSentToAnotherServer) {
    ScriptedServer other({reply("200 OK", "<a/>")});
    ScriptedServer first({redirectTo(other)});
    request_->open(first.url("/"), nullptr, nullptr);
    request_->setHeader("Authorization", "Bearer t");
    request_->setHeader("Cookie", "c=1");
    request_->setHeader("X-Key", "1");

    request_->send();

    const std::string told = first.requests().at(0), passedOn = other.requests().at(0);
    EXPECT_NE(told.find("Authorization: Bearer t\r\n"), std::string::npos) << told;
    EXPECT_NE(told.find("Cookie: c=1\r\n"), std::string::npos) << told;
    EXPECT_EQ(passedOn.find("Authorization"), std::string::npos) << passedOn;
    EXPECT_EQ(passedOn.find("Cookie"), std::string::npos) << passedOn;
    EXPECT_NE(passedOn.find("X-Key: 1\r\n"), std::string::npos) << passedOn;
}

}  // namespace

}  // namespace intake
