#include "workbench/probe/fetch/linux/transfer_reasons.h"

#include <algorithm>
#include <array>

namespace probe {

namespace {

using Stage = FetchFailure::Stage;

constexpr const char* askThem = "Try again; if it stays so, ask those who run the server.";
constexpr const char* checkFtpPath =
    "Correct the path in \"File Name\" (filename); upper and lower case matter.";

constexpr std::array reasons{
    Reason{CURLE_URL_MALFORMAT, Stage::Address, "is no address that can be read", "",
           "Correct \"File Name\" (filename): http://server/path."},
    Reason{CURLE_COULDNT_RESOLVE_HOST, Stage::Address, "names a server that nobody knows",
           ": {host}",
           "Check the spelling of {host} in \"File Name\" (filename), and that this machine "
           "reaches its name server."},
    Reason{CURLE_COULDNT_RESOLVE_PROXY, Stage::Address,
           "is asked for through a proxy that nobody knows", ": {proxyHost}",
           "Check the spelling of {proxyHost} in \"Proxy URL\" (proxyUrl), or switch \"Proxy "
           "on/off\" (enableProxy) off."},
    Reason{CURLE_COULDNT_CONNECT, Stage::Address,
           "cannot be reached: nothing answers at that address", " ({server})",
           "Check server and port in \"File Name\" (filename), that the server runs, and that no "
           "firewall keeps it from this machine."},
    Reason{CURLE_OPERATION_TIMEDOUT, Stage::Fetched, "did not come within {seconds} seconds",
           "; {bytes} bytes came",
           "Try again; if it stays so, ask those who run the server "
           "whether it is slow."},
    Reason{CURLE_TOO_MANY_REDIRECTS, Stage::Fetched, "is redirected without end",
           "; at last to {target}",
           "Open it in a browser, and set \"File Name\" (filename) to the address at which the "
           "browser ends; a page of log-in often redirects like this."},
    Reason{CURLE_UNSUPPORTED_PROTOCOL, Stage::Fetched,
           "is redirected to where it must not be followed", ": {target}",
           "Set \"File Name\" (filename) to the final address."},
    Reason{CURLE_PEER_FAILED_VERIFICATION, Stage::Fetched,
           "is on a server whose certificate is not trusted", "",
           "Ask those who run the server for a certificate of an authority that is trusted."},
    Reason{CURLE_SSL_CACERT_BADFILE, Stage::Fetched,
           "cannot be verified: the list of trusted authorities cannot be read", "",
           "Let the environment variable SSL_CERT_FILE name a file of certificates in PEM "
           "format, or take it away."},
    Reason{CURLE_SSL_CONNECT_ERROR, Stage::Fetched,
           "is on a server with which no secure connection can be made", "",
           "Ask those who run the server whether it speaks TLS 1.2 or later, and whether it wants "
           "a certificate of the client, which cannot be given."},
    Reason{CURLE_GOT_NOTHING, Stage::Fetched, "did not come: the server ended the connection",
           " without an answer", askThem},
    Reason{CURLE_RECV_ERROR, Stage::Fetched, "did not come: the server broke the connection off",
           "; {bytes} bytes came", askThem},
    Reason{CURLE_SEND_ERROR, Stage::Fetched, "did not come: the server broke the connection off",
           " while it was asked", askThem},
    Reason{CURLE_PARTIAL_FILE, Stage::Fetched,
           "did not come whole: the server ended the connection", "; {bytes} bytes came", askThem},
    Reason{CURLE_WEIRD_SERVER_REPLY, Stage::Fetched, "comes from a server that does not speak HTTP",
           "", "Check the port in \"File Name\" (filename)."},
    Reason{CURLE_WRITE_ERROR, Stage::Fetched, "does not fit into the memory of this machine", "",
           "Set \"File Name\" (filename) to a smaller source."},
    Reason{CURLE_OUT_OF_MEMORY, Stage::Fetched,
           "comes with a header of which a line is longer than 100 KB", "", askThem},
    Reason{CURLE_REMOTE_FILE_NOT_FOUND, Stage::Fetched, "is not there, says the server", "",
           checkFtpPath},
    Reason{CURLE_REMOTE_ACCESS_DENIED, Stage::Fetched, "is not there, says the server", "",
           checkFtpPath},
    Reason{CURLE_FTP_COULDNT_RETR_FILE, Stage::Fetched, "is not there, says the server", "",
           checkFtpPath},
    Reason{CURLE_LOGIN_DENIED, Stage::Fetched,
           "is kept behind a user name and a password that are others", "",
           "Correct \"User Name\" (userName) and \"Password\" (password)."},
};

constexpr Reason otherReason{CURLE_OK, Stage::Fetched, "cannot be fetched: {library}", "", askThem};

}  // namespace

const Reason& reasonOf(CURLcode code) {
    const auto* const reason = std::find_if(
        reasons.begin(), reasons.end(), [code](const Reason& each) { return each.code == code; });
    return reason == reasons.end() ? otherReason : *reason;
}

std::string filled(std::string_view text, const Facts& facts) {
    std::string filled(text);
    for (const auto& [name, value] : facts) {
        const std::string place = "{" + std::string(name) + "}";
        for (auto at = filled.find(place); at != std::string::npos;
             at = filled.find(place, at + value.size()))
            filled.replace(at, place.size(), value);
    }
    return filled;
}

}  // namespace probe
