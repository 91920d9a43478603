#include "workbench/probe/fetch/linux/certificates.h"

#include <openssl/ssl.h>
#include <openssl/x509v3.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <memory>

#include "workbench/probe/fetch/linux/transfer_reasons.h"

namespace probe {

namespace {

struct Cleanup {
    void operator()(BIO* bio) const { BIO_free(bio); }
    void operator()(GENERAL_NAMES* names) const { GENERAL_NAMES_free(names); }
};

std::string textOf(const X509_NAME* name) {
    const std::unique_ptr<BIO, Cleanup> out(BIO_new(BIO_s_mem()));
    constexpr unsigned long inUtf8 =
        XN_FLAG_ONELINE & ~static_cast<unsigned long>(ASN1_STRFLGS_ESC_MSB);
    X509_NAME_print_ex(out.get(), name, 0, inUtf8);
    const char* text = nullptr;
    const long length = BIO_get_mem_data(out.get(), &text);
    return {text, static_cast<std::size_t>(length)};
}

std::string dateOf(const ASN1_TIME* time) {
    std::tm parts{};
    std::array<char, sizeof "2026-11-22"> text{};
    if (ASN1_TIME_to_tm(time, &parts) != 1) return "";
    std::strftime(text.data(), text.size(), "%Y-%m-%d", &parts);
    return text.data();
}

Certificate certificateOf(X509* certificate) {
    return {textOf(X509_get_subject_name(certificate)), textOf(X509_get_issuer_name(certificate)),
            dateOf(X509_get0_notBefore(certificate)), dateOf(X509_get0_notAfter(certificate))};
}

std::string bytesOf(const ASN1_STRING* text) {
    return {reinterpret_cast<const char*>(ASN1_STRING_get0_data(text)),
            static_cast<std::size_t>(ASN1_STRING_length(text))};
}

/// A numeric address, as one writes it.
std::string addressOf(const ASN1_STRING* bytes) {
    const std::string address = bytesOf(bytes);
    constexpr std::size_t sizeOfIpv4 = 4;
    if (address.size() != sizeOfIpv4) return "an IPv6 address";
    std::string text;
    for (const char byte : address)
        text += (text.empty() ? "" : ".") + std::to_string(static_cast<unsigned char>(byte));
    return text;
}

std::string namesOf(X509* certificate) {
    const std::unique_ptr<GENERAL_NAMES, Cleanup> names(static_cast<GENERAL_NAMES*>(
        X509_get_ext_d2i(certificate, NID_subject_alt_name, nullptr, nullptr)));
    std::string list;
    for (int i = 0; names != nullptr && i < sk_GENERAL_NAME_num(names.get()); ++i) {
        const GENERAL_NAME* const name = sk_GENERAL_NAME_value(names.get(), i);
        if (name->type != GEN_DNS && name->type != GEN_IPADD) continue;
        list += list.empty() ? "" : ", ";
        list += name->type == GEN_DNS ? bytesOf(name->d.dNSName) : addressOf(name->d.iPAddress);
    }
    return list.empty() ? textOf(X509_get_subject_name(certificate)) : list;
}

constexpr const char* trustAuthority =
    "If you trust its maker, have that authority's certificate added to those that this system "
    "trusts, or start the host with the environment variable SSL_CERT_FILE naming a file of all "
    "authorities to trust.";
constexpr const char* checkClock =
    "Check the date of this machine. If it is right, ask those who run the server to renew the "
    "certificate.";

/// What a fault of a certificate means. The texts name facts in braces.
struct Fault {
    int code;
    const char* words;
    const char* next;
};

constexpr std::array faults{
    Fault{X509_V_ERR_CERT_HAS_EXPIRED, "expired on {validUntil}", checkClock},
    Fault{X509_V_ERR_CERT_NOT_YET_VALID, "is valid only from {validFrom} on", checkClock},
    Fault{X509_V_ERR_DEPTH_ZERO_SELF_SIGNED_CERT, "is self-signed: no authority vouches for it",
          trustAuthority},
    Fault{X509_V_ERR_SELF_SIGNED_CERT_IN_CHAIN,
          "comes from an authority that is not known here: {issuer}", trustAuthority},
    Fault{X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT,
          "comes from an authority that is not known here: {issuer}", trustAuthority},
    Fault{X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT_LOCALLY,
          "comes from an authority that is not known here: {issuer}", trustAuthority},
    Fault{X509_V_ERR_UNABLE_TO_VERIFY_LEAF_SIGNATURE,
          "comes from an authority that is not known here: {issuer}", trustAuthority},
    Fault{X509_V_OK, "is made out for other names: {names}",
          "If it is the same server, write one of these names in \"File Name\" (filename)."},
};
constexpr Fault otherFault{X509_V_OK, "is not valid: {library}",
                           "Ask those who run the server for a valid certificate."};

}  // namespace

void CertificateWatch::watch(Transfer& transfer) {
    transfer.set(CURLOPT_SSL_CTX_FUNCTION, onContext);
    transfer.set(CURLOPT_SSL_CTX_DATA, this);
}

CURLcode CertificateWatch::onContext(CURL*, void* context, void* self) {
    SSL_CTX_set_cert_verify_callback(static_cast<SSL_CTX*>(context), onVerify, self);
    return CURLE_OK;
}

/// Verifies as without it. Whether the name is right is libcurl's business, afterwards.
int CertificateWatch::onVerify(X509_STORE_CTX* verification, void* self) {
    const int verified = X509_verify_cert(verification);
    static_cast<CertificateWatch*>(self)->note(verification);
    return verified;
}

void CertificateWatch::note(X509_STORE_CTX* verification) {
    X509* const ofServer = X509_STORE_CTX_get0_cert(verification);
    X509* const current = X509_STORE_CTX_get_current_cert(verification);
    if (ofServer == nullptr) return;
    certificate_ = certificateOf(ofServer);
    names_ = namesOf(ofServer);
    fault_ = X509_STORE_CTX_get_error(verification);
    isOfAuthority_ = X509_STORE_CTX_get_error_depth(verification) > 0;
    faulty_ = current == nullptr ? *certificate_ : certificateOf(current);
}

FetchFailure CertificateWatch::failure() const {
    const auto* const row = std::find_if(faults.begin(), faults.end(),
                                         [this](const Fault& each) { return each.code == fault_; });
    const Fault& fault = row == faults.end() ? otherFault : *row;
    const bool isAbove = isOfAuthority_ && (fault_ == X509_V_ERR_CERT_HAS_EXPIRED ||
                                            fault_ == X509_V_ERR_CERT_NOT_YET_VALID);
    const Facts facts{{"validUntil", faulty_.validUntil},
                      {"validFrom", faulty_.validFrom},
                      {"issuer", faulty_.issuer},
                      {"names", names_},
                      {"library", X509_verify_cert_error_string(fault_)}};
    FetchFailure failure(FetchFailure::Stage::Fetched,
                         std::string("is on a server whose certificate ") +
                             (isAbove ? "has that of an authority above it, which " : "") +
                             filled(fault.words, facts),
                         fault.next);
    failure.certificate = certificate_;
    return failure;
}

}  // namespace probe
