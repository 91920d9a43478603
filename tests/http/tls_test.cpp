// HTTPS: certificates are verified, and a peer that goes away never ends the process.

#include "tests/http/support/linux/tls.h"
#include "tests/http/support/HttpTest.h"
#include "tests/http/support/ScriptedServer.h"
#include "tests/http/support/WebServer.h"

namespace intake {

namespace {

class HttpTlsTest : public HttpTest {
protected:
    CertificateAuthority authority_;
    TlsFiles tls_ = authority_.issue();
};

TEST_F(HttpTlsTest, AServerOfATrustedAuthorityIsRead) {
    const EnvironmentVariable trusted("SSL_CERT_FILE", authority_.certificate());
    WebServer server("", &tls_);
    server.write("data.json", "[1]");

    const Fetched fetched = fetch(server.secureUrl("/data.json"));

    EXPECT_TRUE(fetched.success);
    EXPECT_EQ(fetched.body, "[1]");
    EXPECT_EQ(fetched.out, RETRIEVED);
    EXPECT_EQ(fetched.err, "");
}

TEST_F(HttpTlsTest, AServerOfAnUnknownAuthorityIsRefusedAndTheReasonSaysWhy) {
    ScriptedServer server({reply("200 OK", "[1]")}, overTls(tls_));

    const Fetched fetched = fetch(server.url("/"));

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.body, "");
    EXPECT_EQ(fetched.out, error(12175));
    EXPECT_EQ(fetched.err,
              "ERROR: RDR_HTTP: SSL certificate problem: unable to get local issuer certificate\n");
    EXPECT_EQ(server.requests().size(), 0U);
}

TEST_F(HttpTlsTest, ACertificateForAnotherNameIsRefusedAndTheReasonNamesTheHost) {
    const EnvironmentVariable trusted("SSL_CERT_FILE", authority_.certificate());
    const TlsFiles other = authority_.issue("DNS:other.example");
    ScriptedServer server({reply("200 OK", "[1]")}, overTls(other));

    const Fetched fetched = fetch("https://localhost:" + std::to_string(server.port()) + "/");

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, error(12175));
    EXPECT_EQ(fetched.err,
              "ERROR: RDR_HTTP: SSL: no alternative certificate subject name matches target host "
              "name 'localhost'\n");
}

TEST_F(HttpTlsTest, AListOfAuthoritiesThatCannotBeReadIsNamed) {
    const EnvironmentVariable trusted("SSL_CERT_FILE", "/no/such/file.pem");
    ScriptedServer server({reply("200 OK", "[1]")}, overTls(tls_));

    const Fetched fetched = fetch(server.url("/"));

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, error(12175));
    EXPECT_NE(fetched.err.find("/no/such/file.pem"), std::string::npos) << fetched.err;
}

TEST_F(HttpTlsTest, AnEmptyNameOfAListOfAuthoritiesIsNone) {
    const EnvironmentVariable trusted("SSL_CERT_FILE", "");
    ScriptedServer server({reply("200 OK", "[1]")}, overTls(tls_));

    EXPECT_EQ(fetch(server.url("/")).err,
              "ERROR: RDR_HTTP: SSL certificate problem: unable to get local issuer certificate\n");
}

TEST_F(HttpTlsTest, AnHttpsUrlOfAPlainServerIsASecureFailure) {
    WebServer server("");

    const Fetched fetched = fetch("https://127.0.0.1:" + std::to_string(server.port()) + "/");

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, error(12175));
}

class HttpTlsCutTest : public HttpTlsTest {
protected:
    EnvironmentVariable trusted_{"SSL_CERT_FILE", authority_.certificate()};
};

TEST_F(HttpTlsCutTest, ABodyThatIsCutOffIsAFailure) {
    ScriptedServer server({{"HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n[1,", Then::CLOSE}},
                          overTls(tls_));

    const Fetched fetched = fetch(server.url("/"));

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, RETRIEVED + errorWithinBody(12030));
}

TEST_F(HttpTlsCutTest, AResetWhileReceivingIsAFailureAndDoesNotEndTheProcess) {
    ScriptedServer server({{"HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n[1,", Then::CUT}},
                          overTls(tls_));

    const Fetched fetched = fetch(server.url("/"));

    EXPECT_FALSE(fetched.success);
    EXPECT_TRUE(fetched.out == RETRIEVED + errorWithinBody(12030) || fetched.out == error(12030))
        << fetched.out;
}

TEST_F(HttpTlsCutTest, AResetWhileSendingIsAFailureAndDoesNotEndTheProcess) {
    ScriptedServer server(std::vector<Reply>{}, overTls(tls_));
    request_.useCustomHeaders = 1;
    for (int i = 0; i < 9; ++i) {
        request_.customHeaders +=
            "X-" + std::to_string(i) + ": " + std::string(100'000, 'x') + "\n";
    }

    for (int i = 0; i < 20; ++i) {
        const Fetched fetched = fetch(server.url("/"));

        EXPECT_FALSE(fetched.success);
        EXPECT_EQ(fetched.out, error(12030));
    }
}

}  // namespace

}  // namespace intake
