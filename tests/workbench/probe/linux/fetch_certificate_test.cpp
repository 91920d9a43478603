// Over HTTPS: what is said of a certificate, and of a server that does not speak the scheme.

#include <openssl/pem.h>
#include <openssl/x509.h>

#include <cstdio>
#include <memory>
#include <regex>

#include "tests/http/support/ServerProcess.h"
#include "tests/http/support/WebServer.h"
#include "tests/http/support/linux/tls.h"
#include "tests/workbench/probe/linux/FetchTest.h"

namespace probe {

namespace {

using intake::EnvironmentVariable;
using intake::overTls;

struct Cleanup {
    void operator()(std::FILE* file) const { std::fclose(file); }
    void operator()(EVP_PKEY* key) const { EVP_PKEY_free(key); }
    void operator()(X509* certificate) const { X509_free(certificate); }
};
using File = std::unique_ptr<std::FILE, Cleanup>;

/// Lets a certificate that its own key has signed end yesterday.
void letExpire(const intake::TlsFiles& files) {
    const std::unique_ptr<EVP_PKEY, Cleanup> key(PEM_read_PrivateKey(
        File(std::fopen(files.key.c_str(), "r")).get(), nullptr, nullptr, nullptr));
    const std::unique_ptr<X509, Cleanup> certificate(PEM_read_X509(
        File(std::fopen(files.certificate.c_str(), "r")).get(), nullptr, nullptr, nullptr));
    constexpr long day = 24L * 60 * 60;
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -2 * day);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), -day);
    X509_sign(certificate.get(), key.get(), EVP_sha256());
    PEM_write_X509(File(std::fopen(files.certificate.c_str(), "w")).get(), certificate.get());
}

class FetchedOverHttps : public FetchTest {
protected:
    /// A certificate that its own key has signed.
    intake::TlsFiles makeCertificate() const {
        const intake::TlsFiles files{(directory_.path() / "own.pem").string(),
                                     (directory_.path() / "own.key").string()};
        intake::runTool(
            "/usr/bin/openssl",
            {"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes",
             "-days", "2", "-subj", "/CN=graphics1/O=Harbour TV", "-addext",
             "subjectAltName=IP:127.0.0.1", "-keyout", files.key, "-out", files.certificate});
        return files;
    }

    /// What comes of a server with this certificate; nothing must have been asked of it.
    FetchFailure refusalOf(const intake::TlsFiles& files) const {
        ScriptedServer server({reply("200 OK", "[1]")}, overTls(files));
        FetchFailure failure = failureOf(withUser(QueryType::Json, server.url("/")));
        EXPECT_TRUE(server.requests().empty());
        EXPECT_EQ(failure.stage, FetchFailure::Stage::Fetched);
        return failure;
    }

    intake::TempDirectory directory_;
    intake::CertificateAuthority authority_;
};

TEST_F(FetchedOverHttps, BringsTheCertificateOfTheServer) {
    const EnvironmentVariable trusted("SSL_CERT_FILE", authority_.certificate());
    ScriptedServer server({reply("200 OK", "[1]")}, overTls(authority_.issue()));

    const Fetched fetched = fetch(settingsFor(QueryType::Json, server.url("/")), patience);

    EXPECT_EQ(fetched.body, "[1]");
    ASSERT_TRUE(fetched.certificate);
    EXPECT_EQ(fetched.certificate->subject, "CN = Test server");
    EXPECT_EQ(fetched.certificate->issuer, "CN = Test authority");
    const std::regex date("20[0-9]{2}-[0-9]{2}-[0-9]{2}");
    EXPECT_TRUE(std::regex_match(fetched.certificate->validFrom, date));
    EXPECT_TRUE(std::regex_match(fetched.certificate->validUntil, date));
    EXPECT_LT(fetched.certificate->validFrom, fetched.certificate->validUntil);
}

TEST_F(FetchedOverHttps, RefusesACertificateOfAnUnknownAuthority) {
    const FetchFailure failure = refusalOf(authority_.issue());
    EXPECT_STREQ(failure.what(),
                 "is on a server whose certificate comes from an authority that is not known "
                 "here: CN = Test authority");
    ASSERT_TRUE(failure.certificate);
    EXPECT_EQ(failure.certificate->subject, "CN = Test server");
    EXPECT_NE(failure.next.find("SSL_CERT_FILE"), std::string::npos);
}

TEST_F(FetchedOverHttps, RefusesACertificateThatVouchesForItself) {
    const FetchFailure failure = refusalOf(makeCertificate());
    EXPECT_STREQ(failure.what(),
                 "is on a server whose certificate is self-signed: no authority vouches for it");
    ASSERT_TRUE(failure.certificate);
    EXPECT_EQ(failure.certificate->subject, "CN = graphics1, O = Harbour TV");
    EXPECT_EQ(failure.certificate->issuer, failure.certificate->subject);
}

TEST_F(FetchedOverHttps, RefusesACertificateThatHasExpired) {
    const intake::TlsFiles files = makeCertificate();
    letExpire(files);
    const EnvironmentVariable trusted("SSL_CERT_FILE", files.certificate);
    const FetchFailure failure = refusalOf(files);
    ASSERT_TRUE(failure.certificate);
    EXPECT_EQ(failure.what(),
              "is on a server whose certificate expired on " + failure.certificate->validUntil);
    EXPECT_EQ(failure.certificate->validUntil.size(), std::string("2026-11-22").size());
    EXPECT_EQ(failure.next.find("Check the date of this machine."), 0U);
}

TEST_F(FetchedOverHttps, RefusesACertificateForOtherNamesAndSaysWhich) {
    const EnvironmentVariable trusted("SSL_CERT_FILE", authority_.certificate());
    const FetchFailure failure =
        refusalOf(authority_.issue("DNS:other.example,DNS:*.b.example,IP:10.0.0.1"));
    EXPECT_STREQ(failure.what(),
                 "is on a server whose certificate is made out for other names: other.example, "
                 "*.b.example, 10.0.0.1");
    ASSERT_TRUE(failure.certificate);
    EXPECT_EQ(failure.certificate->issuer, "CN = Test authority");
}

TEST_F(FetchedOverHttps, SaysWhenTheListOfAuthoritiesCannotBeRead) {
    const EnvironmentVariable trusted("SSL_CERT_FILE", "/no/such/file.pem");
    const FetchFailure failure = refusalOf(authority_.issue());
    EXPECT_STREQ(failure.what(),
                 "cannot be verified: the list of trusted authorities cannot be read");
}

TEST_F(FetchedOverHttps, SaysThatAServerSpeaksPlainHttp) {
    intake::WebServer server("");
    const std::string place = "127.0.0.1:" + std::to_string(server.port());
    const FetchFailure failure =
        failureOf(settingsFor(QueryType::Json, "https://" + place + "/a.json"));
    EXPECT_EQ(failure.what(), "is asked for by https, but " + place + " speaks plain http");
    EXPECT_EQ(failure.proposal, (Proposal{{"filename", "http://" + place + "/a.json"}}));
}

TEST_F(FetchedOverHttps, SaysThatAServerWhichIsSilentMaySpeakPlainHttp) {
    ScriptedServer server({reply("200 OK", "[1]")});
    const FetchFailure failure =
        failureOf(settingsFor(QueryType::Json, "https://" + server.address() + "/"), 0.2);
    EXPECT_STREQ(failure.what(),
                 "is at a server that began no secure connection within 0.2 seconds; it may speak "
                 "plain HTTP only");
    EXPECT_EQ(failure.proposal, (Proposal{{"filename", server.url("/")}}));
}

TEST_F(FetchedOverHttps, SaysThatAServerSpeaksHttpsOnly) {
    const auto files = authority_.issue();
    ScriptedServer scripted({reply("200 OK", "[1]")}, overTls(files));
    intake::WebServer real("", &files);
    const std::string url = real.secureUrl("/a.xml");
    for (const std::string& place :
         {scripted.address() + "/a.xml", url.substr(std::string("https://").size())}) {
        const FetchFailure failure = failureOf(withUser(QueryType::Xml, "http://" + place));
        EXPECT_EQ(failure.what(), "is asked for by http, but " + place.substr(0, place.find('/')) +
                                      " speaks only https");
        EXPECT_EQ(failure.proposal, (Proposal{{"filename", "https://" + place}}));
    }
    EXPECT_TRUE(scripted.requests().empty());
}

TEST_F(FetchedOverHttps, SaysThatAServerSpeaksOldTlsOnly) {
    ScriptedServer server({reply("200 OK", "[1]")}, intake::overOldTls(authority_.issue()));
    const FetchFailure failure = failureOf(settingsFor(QueryType::Json, server.url("/")));
    EXPECT_STREQ(failure.what(), "is on a server with which no secure connection can be made");
    EXPECT_NE(failure.next.find("TLS 1.2"), std::string::npos);
}

TEST_F(FetchedOverHttps, FailsWhenTheServerIsGoneWhileItIsAsked) {
    const EnvironmentVariable trusted("SSL_CERT_FILE", authority_.certificate());
    ScriptedServer server(std::vector<intake::Reply>{}, overTls(authority_.issue()));
    Settings settings = settingsFor(QueryType::Json, server.url("/"));
    settings.useCustomHeaders = true;
    for (int i = 0; i < 9; ++i)
        settings.customHeaders +=
            "X-" + std::to_string(i) + ": " + std::string(100'000, 'x') + "\n";
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(std::string(failureOf(settings).what())
                      .find("did not come: the server broke the connection off"),
                  0U);
}

TEST_F(FetchedOverHttps, FollowsNoRedirectToHttp) {
    const EnvironmentVariable trusted("SSL_CERT_FILE", authority_.certificate());
    ScriptedServer plain({reply("200 OK", "[1]")});
    ScriptedServer server({reply("301 Moved", "", "Location: " + plain.url("/a") + "\r\n")},
                          overTls(authority_.issue()));
    const FetchFailure failure = failureOf(settingsFor(QueryType::Json, server.url("/")));
    EXPECT_EQ(failure.what(), "is redirected to where it must not be followed: " + plain.url("/a"));
    EXPECT_EQ(failure.proposal, (Proposal{{"filename", plain.url("/a")}}));
    EXPECT_TRUE(plain.requests().empty());
}

}  // namespace

}  // namespace probe
