#include "tests/http/support/certificates.h"

#include <vector>

#include "tests/http/support/ServerProcess.h"

namespace intake {

namespace {

/// Makes a key and a certificate for it.
void makeCertificate(const TlsFiles& files, const std::string& subject,
                     const std::vector<std::string>& more) {
    std::vector<std::string> arguments{
        "req",   "-x509", "-newkey", "ec",      "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes",
        "-days", "2",     "-keyout", files.key, "-out",     files.certificate,         "-subj",
        subject};
    arguments.insert(arguments.end(), more.begin(), more.end());
    runTool("/usr/bin/openssl", arguments);
}

}  // namespace

CertificateAuthority::CertificateAuthority() {
    makeCertificate({certificate(), file("authority.key")}, "/CN=Test authority", {});
}

TlsFiles CertificateAuthority::issue(const std::string& names) const {
    const TlsFiles files{file("server.pem"), file("server.key")};
    makeCertificate(files, "/CN=Test server",
                    {"-CA", certificate(), "-CAkey", file("authority.key"), "-addext",
                     "basicConstraints=critical,CA:FALSE", "-addext", "subjectAltName=" + names});
    return files;
}

}  // namespace intake
