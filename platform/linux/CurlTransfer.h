#pragma once

#include <curl/curl.h>

#include <array>
#include <memory>
#include <string>

#include "platform/EndMark.h"

namespace intake {

/// One transfer by libcurl, driven step by step by its worker thread, so that a set end mark is
/// noticed within a tenth of a second. It comes with what all transfers have in common: time
/// limits, verified certificates, no proxy, not even the environment's. It does not move: libcurl
/// keeps its address.
class CurlTransfer {
public:
    /// `endMark` outlives this object.
    explicit CurlTransfer(const EndMark& endMark);
    ~CurlTransfer();
    CurlTransfer(const CurlTransfer&) = delete;
    CurlTransfer& operator=(const CurlTransfer&) = delete;

    /// False when the library could not supply what a transfer needs.
    bool isReady() const { return handle_ != nullptr && driver_ != nullptr; }

    /// To set options with.
    CURL* handle() const { return handle_.get(); }

    /// Begins from the start, whatever was under way.
    void restart();

    /// Runs the transfer until `enough` says so or it has ended. False when it was given up.
    template <class Enough>
    bool drive(Enough enough) {
        while (!enough() && !done_) {
            if (endMark_.isSet()) {
                return false;
            }
            step();
            if (!enough() && !done_) {
                wait();
            }
        }
        return true;
    }

    /// Lets no further redirect lead to HTTP when the latest response came over HTTPS.
    void stayOnHttps();

    /// How many redirects were followed so far.
    long redirects() const;

    /// Whether it failed because a redirect led where none may lead. (What answers without speaking
    /// the protocol ends with the same code.)
    bool refusedRedirect() const;

    /// How it ended; CURLE_OK before.
    CURLcode result() const { return result_; }

    /// Why it failed.
    std::string reason() const;

private:
    struct HandleDeleter {
        void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
    };
    struct DriverDeleter {
        void operator()(CURLM* driver) const { curl_multi_cleanup(driver); }
    };

    void setCommonOptions();
    void step();
    void end(CURLcode result);
    void wait();

    const EndMark& endMark_;
    std::array<char, CURL_ERROR_SIZE> reason_{};
    std::unique_ptr<CURL, HandleDeleter> handle_;
    std::unique_ptr<CURLM, DriverDeleter> driver_;
    bool done_ = true;
    CURLcode result_ = CURLE_OK;
};

}  // namespace intake
