#pragma once

#include <curl/curl.h>

#include <array>
#include <chrono>
#include <string>
#include <string_view>

#include "formats/source/EndMark.h"
#include "platform/linux/curl/CurlConnections.h"
#include "platform/linux/curl/curl_handles.h"
#include "platform/linux/curl/tls_connection.h"

namespace intake {

/// One transfer by libcurl, driven step by step by its worker thread, so that a set end mark is
/// noticed within a tenth of a second. It comes with what all transfers have in common: time
/// limits, verified certificates, no proxy, not even the environment's. Its connections are kept
/// for the next one when it has ended well. It does not move: libcurl keeps its address.
class CurlTransfer {
public:
    /// How many bytes libcurl takes off the network at a time, at most.
    static constexpr size_t RECEIVE_BUFFER = 128 * 1024;

    struct Times {
        std::chrono::milliseconds silence = std::chrono::seconds(30);  // without a byte either way
        std::chrono::milliseconds header = std::chrono::seconds(90);   // of one response of HTTP
        std::chrono::milliseconds connect = std::chrono::seconds(60);  // to each server
    };

    /// Both outlive this object. Of those that share connections one lives at a time.
    CurlTransfer(CurlConnections& connections, const EndMark& endMark, Times times);
    CurlTransfer(CurlConnections& connections, const EndMark& endMark)
        : CurlTransfer(connections, endMark, Times()) {}
    ~CurlTransfer();
    CurlTransfer(const CurlTransfer&) = delete;
    CurlTransfer& operator=(const CurlTransfer&) = delete;

    /// False when the library could not supply what a transfer needs.
    bool isReady() const { return handle_ != nullptr && connections_.driver() != nullptr; }

    /// To set options with.
    CURL* handle() const { return handle_.get(); }

    /// By which way the server is reached; straight where the proxy is empty.
    void goThrough(const std::string& proxy);

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
                endIfLate();
            }
        }
        return true;
    }

    /// Whether the header of the response to the latest request has come whole.
    bool hasResponded() const { return respondedAfter_ == redirects(); }

    /// Whether what came last belongs to the header of an HTTP response.
    bool isWithinHeader() const { return isWithinHeader_; }

    /// Where the latest request went.
    std::string effectiveUrl() const;

    /// How many redirects were followed so far.
    long redirects() const;

    /// Whether it failed because a redirect led where none may lead. (What answers without speaking
    /// the protocol ends with the same code.)
    bool refusedRedirect() const;

    /// How it ended; CURLE_OK before.
    CURLcode result() const { return result_; }

    /// Why it failed.
    std::string reason() const;

    /// The charset that the server names for the body; empty when it names none.
    std::string charset() const;

private:
    void setCommonOptions();
    bool mayBeKept();
    bool isHttp() const;
    void noteSchemes();
    static int onProgress(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t);
    void noteHeader(std::string_view line);
    bool isBehindBody() const;
    void stayOnHttps();
    static size_t onHeader(char* data, size_t size, size_t count, void* self);
    void step();
    void end(CURLcode result);
    void wait();

    using Clock = std::chrono::steady_clock;
    void beginTimes();
    void endIfLate();
    bool isSilent(Clock::time_point now);
    bool isConnecting() const;
    bool isHeaderLate(Clock::time_point now);
    void endLate(const char* reason, std::chrono::milliseconds limit);

    const EndMark& endMark_;
    const Times times_;
    std::array<char, CURL_ERROR_SIZE> reason_{};
    CurlConnections& connections_;
    CurlEasy handle_;
    static constexpr long NEVER = -1;
    long respondedAfter_ = NEVER;     // redirects, when the latest header was complete
    curl_off_t connectedBefore_ = 0;  // then
    long respondedStatus_ = 0;        // then
    bool isWithinHeader_ = false;
    bool isUsed_ = false;
    bool isForOneUser_ = false;  // a connection may have been
    LeftoverWatch leftover_;     // behind the bodies
    Clock::time_point lastLook_;
    Clock::time_point lastByte_;
    Clock::time_point headerStart_;
    uint64_t bytes_ = 0;  // that have passed when last looked at
    long headerOf_ = 0;   // so many redirects were followed when the header's time began
    bool done_ = true;
    CURLcode result_ = CURLE_OK;
};

}  // namespace intake
