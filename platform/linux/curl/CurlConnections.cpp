#include "platform/linux/curl/CurlConnections.h"

namespace intake {

namespace {

constexpr long MOST_PER_WORKER = 2;  // a redirect leads to a second server
constexpr auto AGE_SECONDS = static_cast<long>(CurlConnections::MAX_AGE.count());

}  // namespace

std::atomic<int> CurlConnections::keepers_ = 0;

/// What has come in between is the server's good-bye, or belongs to no request. A new connection
/// leads to where its server is now, and trusts whom the system trusts now.
void CurlConnections::beginTransfer(CURL* transfer) {
    if (sockets_.haveNews()) {
        close();
    }
    curl_easy_setopt(transfer, CURLOPT_MAXAGE_CONN, AGE_SECONDS);
    curl_easy_setopt(transfer, CURLOPT_MAXLIFETIME_CONN, AGE_SECONDS);
    curl_easy_setopt(transfer, CURLOPT_CA_CACHE_TIMEOUT, 0L);
    curl_easy_setopt(transfer, CURLOPT_DNS_CACHE_TIMEOUT, 0L);
    sockets_.watch(transfer);
}

CURLM* CurlConnections::driver() {
    if (driver_ == nullptr) {
        driver_.reset(curl_multi_init());
        curl_multi_setopt(driver_.get(), CURLMOPT_MAXCONNECTS, MOST_PER_WORKER);
    }
    return driver_.get();
}

void CurlConnections::goThrough(const std::string& proxy) {
    if (proxy != proxy_) {
        close();
        proxy_ = proxy;
    }
}

void CurlConnections::endTransfer(bool mayBeKept) {
    sockets_.leave();
    if (!mayBeKept || sockets_.areNone() || !takePlace()) {
        close();
    }
}

bool CurlConnections::takePlace() {
    if (!hasPlace_) {
        hasPlace_ = ++keepers_ <= MOST_KEEPERS;
        keepers_ -= hasPlace_ ? 0 : 1;
    }
    return hasPlace_;
}

void CurlConnections::close() {
    driver_.reset();
    keepers_ -= hasPlace_ ? 1 : 0;
    hasPlace_ = false;
}

}  // namespace intake
