#pragma once

#include <chrono>
#include <string>

#include "workbench/probe/fetch/Fetched.h"
#include "workbench/probe/fetch/fetch_source.h"
#include "workbench/probe/fetch/linux/Transfer.h"
#include "workbench/probe/fetch/linux/certificates.h"
#include "workbench/probe/fetch/linux/transfer_reasons.h"

namespace probe {

/// One fetch over HTTP, HTTPS or FTP. For one source; one thread.
class UrlFetch {
public:
    /// Both are borrowed. Throws FetchFailure for settings with which nothing can be asked for.
    UrlFetch(const Settings& settings, const Source& source, double timeoutSeconds);

    /// Throws FetchFailure.
    Fetched run();

private:
    using Clock = std::chrono::steady_clock;

    Fetched fetchOrThrow();

    // What is asked for, and how.
    void setRequest();
    void setCredentials();
    void setProxy();
    void useSystemProxy(const std::string& scheme, const std::string& host);
    void useProxy(const std::string& address, const std::string& exceptions);

    // The transfer, again for who asks for credentials.
    CURLcode runAttempts();
    CURLcode runAttempt();
    CURLcode receive(const char* packings);
    bool take(std::string_view bytes);
    bool mayProveToServer();
    bool mayProveToProxy();
    bool chooseScheme(CURLINFO offered, CURLoption chosen);
    std::chrono::milliseconds timeLeft() const;

    // What came of it.
    long connectStatus() const { return transfer_.number(CURLINFO_HTTP_CONNECTCODE); }
    long status() const;
    bool asksForLogin() const;
    Fetched fetched();
    bool wentThroughProxy() const;
    Facts facts(CURLcode code) const;
    void refuseBody() const;
    void refuseOtherScheme(CURLcode code) const;
    [[noreturn]] void refuse(CURLcode code) const;
    [[noreturn]] void refuseLate() const;
    [[noreturn]] void refuseRedirect(CURLcode code) const;
    [[noreturn]] void refuseLogin(CURLcode code) const;
    FetchFailure failureOf(const Reason& reason, CURLcode code, Proposal proposal = {}) const;
    FetchFailure withWay(const FetchFailure& failure) const;
    [[noreturn]] void fail(const FetchFailure& failure) const;
    [[noreturn]] void fail(const Reason& reason, CURLcode code, Proposal proposal = {}) const;

    const Settings& settings_;
    const Source& source_;
    const double timeoutSeconds_;
    const Clock::time_point end_;
    const std::string url_;
    std::string proxy_;            // empty for none
    std::string proxyExceptions_;  // hosts and domains that are asked without it
    bool isProxyUnknown_ = false;
    std::vector<Redirect> earlierRedirects_;
    std::string body_;
    bool isTooLarge_ = false;
    bool isBomb_ = false;
    bool isPacked_ = false;  // by what the server says
    CertificateWatch certificates_;
    Transfer transfer_;
};

}  // namespace probe
