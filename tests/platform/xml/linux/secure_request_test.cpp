// Documents over HTTPS.

#include "tests/http/support/ScriptedServer.h"
#include "tests/http/support/linux/tls.h"
#include "tests/platform/xml/XmlRequestTest.h"

namespace intake {

namespace {

using XmlSecureRequests = XmlRequestTest;

TEST_F(XmlSecureRequests, AServerOfATrustedAuthorityIsRead) {
    const CertificateAuthority authority;
    const TlsFiles tls = authority.issue();
    const EnvironmentVariable trusted("SSL_CERT_FILE", authority.certificate());
    request_ = services_.createRequest(*connections_, endMark_);
    ScriptedServer server({reply("200 OK", "<a/>")}, overTls(tls));
    fetch(server.url("/"));
    EXPECT_EQ(names("/*"), "a|");
}

TEST_F(XmlSecureRequests, AServerOfAnUnknownAuthorityIsRefused) {
    const CertificateAuthority authority;
    const TlsFiles tls = authority.issue();
    ScriptedServer server({reply("200 OK", "<a/>")}, overTls(tls));
    EXPECT_EQ(errorOf([&] { fetch(server.url("/")); }).code(), 0x800C0019);
    EXPECT_EQ(server.requests().size(), 0U);
}

TEST_F(XmlSecureRequests, NoRedirectLeadsFromHttpsToHttp) {
    const CertificateAuthority authority;
    const TlsFiles tls = authority.issue();
    const EnvironmentVariable trusted("SSL_CERT_FILE", authority.certificate());
    request_ = services_.createRequest(*connections_, endMark_);
    ScriptedServer plain({reply("200 OK", "<a/>")});
    ScriptedServer server({reply("302 Found", "", "Location: " + plain.url("/") + "\r\n")},
                          overTls(tls));
    EXPECT_EQ(errorOf([&] { fetch(server.url("/")); }).code(), 0x800C0014);
    EXPECT_EQ(plain.requests().size(), 0U);
}

TEST_F(XmlSecureRequests, CredentialsAreNotSentOverTlsToAnotherPort) {
    const CertificateAuthority authority;
    const TlsFiles tls = authority.issue();
    const EnvironmentVariable trusted("SSL_CERT_FILE", authority.certificate());
    request_ = services_.createRequest(*connections_, endMark_);
    ScriptedServer secure({reply("401 Unauthorized", "<refused/>", "WWW-Authenticate: Basic\r\n")},
                          overTls(tls));
    ScriptedServer plain({reply("302 Found", "", "Location: " + secure.url("/") + "\r\n")});
    const std::string user = "designer", password = "secret";
    user_ = &user;
    password_ = &password;
    fetch(plain.url("/"));
    EXPECT_EQ(names("/*"), "refused|");
    ASSERT_EQ(secure.requests().size(), 1U);
    EXPECT_EQ(secure.requests().front().find("Authorization"), std::string::npos);
}

}  // namespace

}  // namespace intake
