// What `explain` says of servers with a certificate.

#include <openssl/pem.h>
#include <openssl/x509.h>

#include <cstdio>
#include <memory>

#include "tests/http/support/ServerProcess.h"
#include "tests/http/support/WebServer.h"
#include "tests/http/support/challenges.h"
#include "tests/http/support/linux/tls.h"
#include "tests/support/TempDirectory.h"
#include "tests/workbench/cli/linux/NetworkTest.h"

using intake::EnvironmentVariable;
using intake::reply;
using intake::Reply;
using intake::ScriptedServer;

namespace {

struct Cleanup {
    void operator()(std::FILE* file) const { std::fclose(file); }
    void operator()(EVP_PKEY* key) const { EVP_PKEY_free(key); }
    void operator()(X509* certificate) const { X509_free(certificate); }
};
using File = std::unique_ptr<std::FILE, Cleanup>;

/// Gives a certificate that its own key has signed fixed dates, both in the past or the last far
/// away.
void date(const intake::TlsFiles& files, const char* until) {
    const std::unique_ptr<EVP_PKEY, Cleanup> key(PEM_read_PrivateKey(
        File(std::fopen(files.key.c_str(), "r")).get(), nullptr, nullptr, nullptr));
    const std::unique_ptr<X509, Cleanup> certificate(PEM_read_X509(
        File(std::fopen(files.certificate.c_str(), "r")).get(), nullptr, nullptr, nullptr));
    ASN1_TIME_set_string(X509_getm_notBefore(certificate.get()), "20200101000000Z");
    ASN1_TIME_set_string(X509_getm_notAfter(certificate.get()), until);
    X509_sign(certificate.get(), key.get(), EVP_sha256());
    PEM_write_X509(File(std::fopen(files.certificate.c_str(), "w")).get(), certificate.get());
}

/// A server with a certificate of its own.
class ExplainedHttps : public ExplainedUrl {
protected:
    intake::TlsFiles makeCertificate(const std::string& names, const char* until) const {
        const intake::TlsFiles files{(directory_.path() / "own.pem").string(),
                                     (directory_.path() / "own.key").string()};
        intake::runTool(
            "/usr/bin/openssl",
            {"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes",
             "-days", "2", "-subj", "/CN=graphics1/O=Harbour TV", "-addext",
             "subjectAltName=" + names, "-keyout", files.key, "-out", files.certificate});
        date(files, until);
        return files;
    }

    void expectOfServer(const intake::TlsFiles& files, bool isTrusted,
                        const std::string& text) const {
        const EnvironmentVariable trusted(
            "SSL_CERT_FILE", isTrusted ? std::optional(files.certificate) : std::nullopt);
        ScriptedServer server(always(reply("200 OK", clubs, isJson)), intake::overTls(files));
        expectOf(server.url("/clubs"), login, text);
        EXPECT_EQ(countOf(intake::proofs(server)), 0U);
    }

    intake::TempDirectory directory_;
};

constexpr const char* farAway = "20990101000000Z";
constexpr const char* longAgo = "20210101000000Z";

}  // namespace

TEST_F(ExplainedHttps, ThatIsTrustedIsToldWithItsDates) {
    expectOfServer(makeCertificate("IP:127.0.0.1", farAway), true, R"(
https://SERVER/clubs: 2 records, # s
  ✓ settings
  ✓ address   https://SERVER/clubs
  ✓ fetched   200, application/json, 54 bytes, # ms; certificate of CN = graphics1, O = Harbour TV, valid from 2020-01-01 until 2099-01-01
  ✓ format    JSON
  ✓ selection *: 2 objects
  ✓ key       id
  ✓ rows      all 2
  ✓ script
  ✓ store
)");
}

TEST_F(ExplainedHttps, ThatExpiredIsToldWithItsDates) {
    expectOfServer(makeCertificate("IP:127.0.0.1", longAgo), true, R"(
https://SERVER/clubs: no records, # s
  ✓ settings
  ✓ address   https://SERVER/clubs
  ✗ fetched   certificate of CN = graphics1, O = Harbour TV, issued by CN = graphics1, O = Harbour TV, valid from 2020-01-01 until 2021-01-01
              The source is on a server whose certificate expired on 2021-01-01.
              Check the date of this machine. If it is right, ask those who run the server to renew the certificate.
  – format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedHttps, ThatSignedItselfIsTold) {
    expectOfServer(makeCertificate("IP:127.0.0.1", farAway), false, R"(
https://SERVER/clubs: no records, # s
  ✓ settings
  ✓ address   https://SERVER/clubs
  ✗ fetched   certificate of CN = graphics1, O = Harbour TV, issued by CN = graphics1, O = Harbour TV, valid from 2020-01-01 until 2099-01-01
              The source is on a server whose certificate is self-signed: no authority vouches for it.
              If you trust its maker, have that authority's certificate added to those that this system trusts, or start the host with the environment variable SSL_CERT_FILE naming a file of all authorities to trust.
  – format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedHttps, OfAnotherNameIsTold) {
    expectOfServer(makeCertificate("DNS:graphics2.example", farAway), true, R"(
https://SERVER/clubs: no records, # s
  ✓ settings
  ✓ address   https://SERVER/clubs
  ✗ fetched   certificate of CN = graphics1, O = Harbour TV, issued by CN = graphics1, O = Harbour TV, valid from 2020-01-01 until 2099-01-01
              The source is on a server whose certificate is made out for other names: graphics2.example.
              If it is the same server, write one of these names in "File Name" (filename).
  – format, selection, key, rows, script, store: not reached
)");
}

TEST_F(ExplainedHttps, AskedOfAServerThatSpeaksPlainHttpIsMended) {
    const intake::WebServer server("");
    server.write("clubs", clubs);
    expectOf("https" + server.url("/clubs").substr(4), {}, R"(
https://SERVER/clubs: no records, # s
  ✓ settings
  ✓ address   https://SERVER/clubs
  ✗ fetched
              The source is asked for by https, but SERVER speaks plain http.
              Begin "File Name" (filename) with http:// instead.
  – format, selection, key, rows, script, store: not reached
  Try: --set filename=http://SERVER/clubs   (2 records, checked)
)");
}

TEST_F(ExplainedHttps, NotAskedOfAServerThatSpeaksNothingElseIsMended) {
    const intake::TlsFiles files = makeCertificate("IP:127.0.0.1", farAway);
    const EnvironmentVariable trusted("SSL_CERT_FILE", files.certificate);
    ScriptedServer server(always(reply("200 OK", clubs, isJson)), intake::overTls(files));
    expectOf("http://" + server.address() + "/clubs", {}, R"(
http://SERVER/clubs: no records, # s
  ✓ settings
  ✓ address   http://SERVER/clubs
  ✗ fetched
              The source is asked for by http, but SERVER speaks only https.
              Begin "File Name" (filename) with https:// instead.
  – format, selection, key, rows, script, store: not reached
  Try: --set filename=https://SERVER/clubs   (2 records, checked)
)");
}
