#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "workbench/probe/LookFailure.h"
#include "workbench/probe/Settings.h"

namespace probe {

/// The certificate of a server, as it names itself.
struct Certificate {
    std::string subject;
    std::string issuer;
    std::string validFrom;  // "2026-11-22"
    std::string validUntil;
};

/// One answer that sent the request elsewhere.
struct Redirect {
    long status;
    std::string address;  // where to, without a user's name and password
};

/// The heads of a request and of its answer as they were sent, lines ended by a line feed, without
/// what proves who asks. Both empty for what was not asked for over HTTP.
struct Exchange {
    std::string request;
    std::string answer;
};

/// A source as it came, whole.
struct Fetched {
    std::string body;         // unpacked where the plugin would unpack it
    std::string address;      // where it was in the end, without a user's name and password
    long status = 0;          // of HTTP; 0 for a file and over FTP
    std::string contentType;  // as the server says, with its parameters; empty for none
    std::string encoding;     // what the server packed it by and the plugin does not unpack: "gzip"
    double milliseconds = 0;
    std::vector<Redirect> redirects;
    Exchange exchange;  // the last
    std::optional<Certificate> certificate;
    bool credentialsRefused = false;  // they were sent, and the answer is 401 or 407
    bool isProxyUnknown = false;      // the system did not say in time; it came without one
};

/// Why a source did not come. what() ends a sentence about it. No text shows a secret, but a value
/// of the proposal holds what the source held: a user's name and password in an address.
class FetchFailure : public LookFailure {
public:
    /// Was there no way to it (its name, its server or the proxy), or did it not come from there.
    enum class Stage { Address, Fetched };

    FetchFailure(Stage where, const std::string& words, std::string advice, Proposal mend = {})
        : LookFailure(words), stage(where), next(std::move(advice)), proposal(std::move(mend)) {}

    const Stage stage;
    const std::string next;   // what to do about it, in a sentence; names labels and parameters
    const Proposal proposal;  // what may mend it; empty for nothing
    std::optional<Certificate> certificate;  // of a server that is not trusted
    bool credentialsRefused = false;         // do not send them again
    bool isLate = false;                     // there was no answer in time, or not all of it
    bool isProxyUnknown = false;             // the system did not say in time; none was used
};

/// Fetches the source of an instance as the plugin would: with its headers, user agent,
/// credentials and proxy, once. An answer of any status is an answer. Blocks for at most
/// `timeoutSeconds`; any thread. Throws FetchFailure.
Fetched fetch(const Settings& settings, double timeoutSeconds);

}  // namespace probe
