#include "tests/http/support/KerberosRealm.h"

#include <gssapi/gssapi.h>

#include <stdexcept>

#include "tests/http/support/base64.h"
#include "tests/http/support/loopback.h"

namespace intake {

namespace {

constexpr const char* REALM = "INTAKE.TEST";
constexpr const char* PASSWORD = "secret";

std::string nameText(gss_name_t name) {
    OM_uint32 minor = 0;
    gss_buffer_desc buffer = GSS_C_EMPTY_BUFFER;
    gss_display_name(&minor, name, &buffer, nullptr);
    const std::string text(static_cast<const char*>(buffer.value), buffer.length);
    gss_release_buffer(&minor, &buffer);
    return text;
}

void administer(const std::string& request) {
    runTool("/usr/sbin/kadmin.local", {"-r", REALM, "-q", request});
}

}  // namespace

KerberosRealm::KerberosRealm() {
    withRetries([&] {
        port_ = freePort();
        writeConfiguration();
        if (!std::filesystem::exists(file("principal"))) {
            makePrincipals();
        }
        process_ = std::make_unique<ServerProcess>("/usr/sbin/krb5kdc",
                                                   std::vector<std::string>{"-n", "-r", REALM},
                                                   Ports{port_}, directory_.path() / "krb5kdc.log");
    });
}

void KerberosRealm::writeConfiguration() const {
    const std::string address = "127.0.0.1:" + std::to_string(port_);
    const std::string realm = std::string("[realms]\n") + REALM + " = {\n";
    directory_.write("krb5.conf",
                     std::string("[libdefaults]\ndefault_realm = ") + REALM +
                         "\ndns_lookup_kdc = false\ndns_canonicalize_hostname = false\n"
                         "rdns = false\nudp_preference_limit = 1\n" +
                         realm + "kdc = " + address + "\n}\n");
    directory_.write("kdc.conf", realm + "database_name = " + file("principal") +
                                     "\nkey_stash_file = " + file("stash") +
                                     "\nkdc_listen = " + address + "\nkdc_tcp_listen = " + address +
                                     "\n}\n[logging]\nkdc = STDERR\nadmin_server = STDERR\n");
}

void KerberosRealm::makePrincipals() const {
    runTool("/usr/sbin/kdb5_util", {"create", "-s", "-r", REALM, "-P", PASSWORD});
    administer(std::string("add_principal -pw ") + PASSWORD + " designer");
    administer("add_principal -randkey HTTP/localhost");
    administer("ktadd -k " + file("service.keytab") + " HTTP/localhost");
}

void KerberosRealm::logOn() const {
    runTool("/usr/bin/kinit", {"designer"}, std::string(PASSWORD) + "\n");
}

std::string KerberosRealm::clientOf(const std::string& token) const {
    std::string bytes = fromBase64(token);
    gss_buffer_desc input{bytes.size(), bytes.data()};
    gss_buffer_desc output = GSS_C_EMPTY_BUFFER;
    gss_ctx_id_t context = GSS_C_NO_CONTEXT;
    gss_name_t client = GSS_C_NO_NAME;
    OM_uint32 minor = 0;
    const OM_uint32 major = gss_accept_sec_context(&minor, &context, GSS_C_NO_CREDENTIAL, &input,
                                                   GSS_C_NO_CHANNEL_BINDINGS, &client, nullptr,
                                                   &output, nullptr, nullptr, nullptr);
    const std::string name = major == GSS_S_COMPLETE ? nameText(client) : "";
    gss_release_name(&minor, &client);
    gss_release_buffer(&minor, &output);
    gss_delete_sec_context(&minor, &context, GSS_C_NO_BUFFER);
    if (major != GSS_S_COMPLETE) {
        throw std::runtime_error("The token was not accepted");
    }
    return name;
}

}  // namespace intake
