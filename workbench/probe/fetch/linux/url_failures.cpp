// Why a fetch over the network failed.

#include <algorithm>
#include <array>
#include <cstdio>

#include "formats/text/ascii.h"
#include "workbench/probe/fetch/fetch_file.h"
#include "workbench/probe/fetch/linux/UrlFetch.h"
#include "workbench/probe/fetch/linux/origin.h"
#include "workbench/probe/fetch/linux/other_scheme.h"
#include "workbench/probe/fetch/linux/proxy_exceptions.h"
#include "workbench/probe/fetch/source_start.h"

namespace probe {

namespace {

using Stage = FetchFailure::Stage;

constexpr Reason proxyDown{CURLE_COULDNT_CONNECT, Stage::Address,
                           "cannot be asked for: no proxy answers at {proxy}", "",
                           "Check \"Proxy URL\" (proxyUrl) and that the proxy runs, or switch "
                           "\"Proxy on/off\" (enableProxy) off."};
constexpr Reason proxyRefuses{CURLE_RECV_ERROR, Stage::Fetched,
                              "is not let through by the proxy {proxy}", " (status {status})",
                              "Ask those who run the proxy to let this machine reach {server}."};
constexpr Reason connectTimeout{CURLE_OPERATION_TIMEDOUT, Stage::Address,
                                "cannot be reached: {server} did not answer within {seconds} "
                                "seconds",
                                "",
                                "Check server and port in \"File Name\" (filename), and whether a "
                                "firewall swallows the connection."};
constexpr Reason handshakeTimeout{CURLE_OPERATION_TIMEDOUT, Stage::Fetched,
                                  "is at a server that began no secure connection within "
                                  "{seconds} seconds",
                                  "; it may speak plain HTTP only",
                                  "Begin \"File Name\" (filename) with http:// instead."};
constexpr Reason speaksPlain{CURLE_SSL_CONNECT_ERROR, Stage::Fetched,
                             "is asked for by https, but {server} speaks plain http", "",
                             "Begin \"File Name\" (filename) with http:// instead."};
constexpr Reason speaksSecure{CURLE_UNSUPPORTED_PROTOCOL, Stage::Fetched,
                              "is asked for by http, but {server} speaks only https", "",
                              "Begin \"File Name\" (filename) with https:// instead."};
constexpr Reason noHttp{CURLE_UNSUPPORTED_PROTOCOL, Stage::Fetched,
                        "is at a server that does not speak HTTP", " ({server})",
                        "Check the port in \"File Name\" (filename)."};
constexpr Reason loginMissing{CURLE_LOGIN_DENIED, Stage::Fetched,
                              "is kept behind a user name and a password, and none are given", "",
                              "Set \"Use Authentication\" (useAuth), \"User Name\" (userName) and "
                              "\"Password\" (password)."};

/// The name of the source with the other scheme, when it has the one.
Proposal otherScheme(const std::string& name, std::string_view one, std::string_view other) {
    if (!intake::startsWithIgnoringCase(name, one)) return {};
    return {{"filename", std::string(other) + name.substr(one.size())}};
}

std::string shortNumber(double number) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%g", number);
    return text.data();
}

}  // namespace

bool UrlFetch::wentThroughProxy() const {
    return !proxy_.empty() && !isExcepted(originOf(transfer_.address()).host, proxyExceptions_);
}

Facts UrlFetch::facts(CURLcode code) const {
    const Origin server = originOf(transfer_.address());
    const Origin proxy = originOf(proxy_);
    curl_off_t bytes = 0;
    curl_easy_getinfo(transfer_.handle(), CURLINFO_SIZE_DOWNLOAD_T, &bytes);
    return {{"server", server.server()},
            {"host", server.host},
            {"proxy", proxy.server()},
            {"proxyHost", proxy.host},
            {"seconds", shortNumber(timeoutSeconds_)},
            {"bytes", std::to_string(bytes)},
            {"status", std::to_string(connectStatus())},
            {"target", withoutUserInfo(transfer_.location())},
            {"library", curl_easy_strerror(code)}};
}

FetchFailure UrlFetch::failureOf(const Reason& reason, CURLcode code, Proposal proposal) const {
    const Facts known = facts(code);
    FetchFailure failure(reason.stage, filled(reason.words, known) + filled(reason.detail, known),
                         filled(reason.next, known), std::move(proposal));
    failure.isLate = code == CURLE_OPERATION_TIMEDOUT;
    return failure;
}

/// Says also where a redirect led to, when it is the server there that fails.
FetchFailure UrlFetch::withWay(const FetchFailure& failure) const {
    if (!transfer_.isRedirected()) return failure;
    FetchFailure told(failure.stage,
                      "leads on to " + transfer_.address() + ", which " + failure.what(),
                      failure.next);
    told.certificate = failure.certificate;
    told.credentialsRefused = failure.credentialsRefused;
    told.isLate = failure.isLate;
    return told;
}

void UrlFetch::fail(const FetchFailure& failure) const {
    throw withWay(failure);
}

void UrlFetch::fail(const Reason& reason, CURLcode code, Proposal proposal) const {
    fail(failureOf(reason, code, std::move(proposal)));
}

void UrlFetch::refuseBody() const {
    if (isTooLarge_) throw tooLarge(source_);
    if (isBomb_)
        throw FetchFailure(Stage::Fetched, "unpacks to more than 250 times its size",
                           "Ask those who run the server to send it as it is.");
}

/// What speaks by the other scheme can answer anything; a proxy answers for it. A redirect that is
/// refused has led to nobody.
void UrlFetch::refuseOtherScheme(CURLcode code) const {
    constexpr std::array strange{CURLE_GOT_NOTHING, CURLE_RECV_ERROR, CURLE_WEIRD_SERVER_REPLY,
                                 CURLE_UNSUPPORTED_PROTOCOL};
    constexpr long badRequest = 400;
    const bool isStrange = std::find(strange.begin(), strange.end(), code) != strange.end();
    const bool isRefusedRedirect = isStrange && !transfer_.location().empty();
    const bool mayBeSecure = code == CURLE_OK ? status() == badRequest : isStrange && status() == 0;
    const Origin origin = originOf(transfer_.address());
    const auto limit = std::min<std::chrono::milliseconds>(timeLeft(), std::chrono::seconds(2));
    if (wentThroughProxy() || isRefusedRedirect) return;
    if (origin.scheme == "http" && mayBeSecure && speaksTls(origin, limit))
        fail(speaksSecure, code, otherScheme(source_.place, "http://", "https://"));
    if (origin.scheme == "https" && code == CURLE_SSL_CONNECT_ERROR &&
        speaksPlainHttp(origin, limit))
        fail(speaksPlain, code, otherScheme(source_.place, "https://", "http://"));
}

/// A step that took no time was not over when the time was.
void UrlFetch::refuseLate() const {
    const auto isOver = [this](CURLINFO step) {
        curl_off_t taken = 0;
        curl_easy_getinfo(transfer_.handle(), step, &taken);
        return taken != 0;
    };
    if (transfer_.hasBegunTls() && !wentThroughProxy() && !isOver(CURLINFO_APPCONNECT_TIME_T))
        fail(handshakeTimeout, CURLE_OPERATION_TIMEDOUT,
             otherScheme(source_.place, "https://", "http://"));
    if (!transfer_.isRedirected() && !isOver(CURLINFO_CONNECT_TIME_T))
        fail(wentThroughProxy() ? proxyDown : connectTimeout, CURLE_OPERATION_TIMEDOUT);
    fail(reasonOf(CURLE_OPERATION_TIMEDOUT), CURLE_OPERATION_TIMEDOUT);
}

/// What answers without speaking HTTP ends with the same code as a redirect to where none may lead.
void UrlFetch::refuseRedirect(CURLcode code) const {
    const std::string& target = transfer_.location();
    if (target.empty()) fail(noHttp, code);
    const bool mayBeShown = isUrl(target) && withoutUserInfo(target) == target;
    throw failureOf(reasonOf(code), code, mayBeShown ? Proposal{{"filename", target}} : Proposal{});
}

void UrlFetch::refuseLogin(CURLcode code) const {
    const bool hasUser = settings_.queryMode == QueryType::Xml && settings_.useAuth;
    FetchFailure failure = failureOf(hasUser ? reasonOf(code) : loginMissing, code);
    failure.credentialsRefused = hasUser;
    fail(failure);
}

void UrlFetch::refuse(CURLcode code) const {
    constexpr long firstRefusal = 300;
    if (code == CURLE_OPERATION_TIMEDOUT) refuseLate();
    if (code == CURLE_UNSUPPORTED_PROTOCOL) refuseRedirect(code);
    if (code == CURLE_LOGIN_DENIED) refuseLogin(code);
    if (code == CURLE_PEER_FAILED_VERIFICATION && certificates_.certificate())
        fail(certificates_.failure());
    if (code == CURLE_TOO_MANY_REDIRECTS) throw failureOf(reasonOf(code), code);
    if (connectStatus() >= firstRefusal) fail(proxyRefuses, code);
    if (code == CURLE_COULDNT_CONNECT && wentThroughProxy()) fail(proxyDown, code);
    fail(reasonOf(code), code);
}

}  // namespace probe
