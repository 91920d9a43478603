#pragma once

#include <curl/curl.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/probe/fetch/Fetched.h"

namespace probe {

/// One transfer by libcurl, with what all transfers of the plugin have in common: verified
/// certificates, no proxy of the environment, redirects but none from https to http, cookies for as
/// long as it lives. It does not move: libcurl keeps its address. One thread.
class Transfer {
public:
    Transfer();
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    /// To set options with that are not set here.
    CURL* handle() const { return handle_.get(); }
    template <typename Value>
    void set(CURLoption option, Value value) {
        curl_easy_setopt(handle(), option, value);
    }

    void setHeaders(const std::vector<std::string>& lines);

    /// Gets the body piece by piece; false ends the transfer.
    using Sink = std::function<bool(std::string_view)>;

    /// Runs it from the start to the end. CURLE_PARTIAL_FILE also for an answer that ends within
    /// its header.
    CURLcode run(std::chrono::milliseconds limit, Sink sink);

    // Of the latest run:
    std::string text(CURLINFO info) const;
    std::string address() const;  // of the latest request, without a user's name and password
    long number(CURLINFO info) const;
    bool isHttp() const;
    const std::vector<Redirect>& redirects() const { return redirects_; }
    bool isRedirected() const;                                 // also to where nothing answers
    const std::string& location() const { return location_; }  // where the latest answer sends to
    const std::string& encoding() const { return encoding_; }  // of the latest answer
    bool hasProvedToServer() const { return hasProvedToServer_; }  // in the latest request
    bool hasProvedToProxy() const { return hasProvedToProxy_; }
    bool hasBegunTls() const { return hasBegunTls_; }
    const Exchange& exchange() const { return exchange_; }  // the latest
    std::string libraryWords() const { return words_.data(); }

private:
    void setWays();
    void noteHeader(std::string_view line);
    bool leadsOn() const;
    void noteRequest(std::string_view header);
    void stayOnHttps();

    static std::size_t onBody(const char* data, std::size_t size, std::size_t count, void* self);
    static std::size_t onHeader(const char* data, std::size_t size, std::size_t count, void* self);
    static int onTrace(CURL*, curl_infotype type, char* data, std::size_t size, void* self);

    struct Cleanup {
        void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
        void operator()(curl_slist* list) const { curl_slist_free_all(list); }
    };

    Sink sink_;
    std::vector<char> words_;
    std::vector<Redirect> redirects_;
    std::string location_;
    std::string encoding_;
    Exchange exchange_;
    long status_ = 0;     // of the latest answer
    long followUps_ = 0;  // until then, for a redirect or to prove who asks
    bool isWithinHeader_ = false;
    bool hasProvedToServer_ = false;
    bool hasProvedToProxy_ = false;
    bool hasBegunTls_ = false;
    std::unique_ptr<curl_slist, Cleanup> headers_;
    std::unique_ptr<CURL, Cleanup> handle_;
};

}  // namespace probe
