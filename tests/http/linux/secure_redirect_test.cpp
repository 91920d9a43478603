// Redirects are followed from HTTP to HTTPS, but not back.

#include "tests/http/support/HttpTest.h"
#include "tests/http/support/ScriptedServer.h"
#include "tests/http/support/linux/tls.h"

namespace intake {

namespace {

class HttpSecureRedirectTest : public HttpTest {
protected:
    CertificateAuthority authority_;
    TlsFiles tls_ = authority_.issue();
    EnvironmentVariable trusted_{"SSL_CERT_FILE", authority_.certificate()};
};

Reply redirectTo(const std::string& url) {
    return reply("302 Found", "moved", "Location: " + url + "\r\n");
}

void expectRefused(const Fetched& fetched) {
    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.body, "");
    EXPECT_EQ(fetched.out, error(12156));
}

TEST_F(HttpSecureRedirectTest, ARedirectFromHttpToHttpsIsFollowed) {
    ScriptedServer secure({reply("200 OK", "[2]")}, overTls(tls_));
    ScriptedServer plain({redirectTo(secure.url("/"))});

    EXPECT_EQ(fetch(plain.url("/")).body, "[2]");
}

TEST_F(HttpSecureRedirectTest, ARedirectFromHttpsToHttpIsRefused) {
    ScriptedServer plain({reply("200 OK", "[2]")});
    ScriptedServer secure({redirectTo(plain.url("/"))}, overTls(tls_));

    expectRefused(fetch(secure.url("/")));
    EXPECT_EQ(plain.requests().size(), 0U);
}

TEST_F(HttpSecureRedirectTest, ARedirectFromHttpByWayOfHttpsBackToHttpIsRefused) {
    ScriptedServer last({reply("200 OK", "[2]")});
    ScriptedServer secure({redirectTo(last.url("/"))}, overTls(tls_));
    ScriptedServer first({redirectTo(secure.url("/"))});

    expectRefused(fetch(first.url("/")));
    EXPECT_EQ(last.requests().size(), 0U);
}

TEST_F(HttpSecureRedirectTest, CredentialsGoStraightToThePlaceThatAskedForThem) {
    ScriptedServer secure(
        {redirectTo("/login"), reply("401 Unauthorized", "", "WWW-Authenticate: Basic\r\n"),
         reply("200 OK", "[2]")},
        overTls(tls_));
    request_.useAuth = true;
    request_.userName = "designer";
    request_.password = "secret";

    const Fetched fetched = fetch(secure.url("/"));

    EXPECT_EQ(fetched.body, "[2]");
    EXPECT_EQ(fetched.out, SERVER_ASKS + RETRIEVED);
    const std::vector<std::string> requests = secure.requests();
    ASSERT_EQ(requests.size(), 3U);
    EXPECT_EQ(requests[1].find("Authorization"), std::string::npos);
    EXPECT_NE(requests[2].find("/login"), std::string::npos);
    EXPECT_NE(requests[2].find("Authorization: Basic"), std::string::npos);
}

TEST_F(HttpSecureRedirectTest, CredentialsAreNotSentOverTlsToAnotherPort) {
    ScriptedServer secure({reply("401 Unauthorized", "no", "WWW-Authenticate: Basic\r\n")},
                          overTls(tls_));
    ScriptedServer first({redirectTo(secure.url("/"))});
    request_.useAuth = true;
    request_.userName = "designer";
    request_.password = "secret";

    EXPECT_EQ(fetch(first.url("/")).body, "no");
    EXPECT_EQ(secure.requests().size(), 1U);
}

}  // namespace

}  // namespace intake
