#pragma once

#include <cstddef>
#include <string>

#include "platform/linux/curl/CurlTransfer.h"

namespace intake {

/// Keeps the body of a transfer, unpacked, up to a limit; a larger one fails the transfer, and so
/// does one that unpacks to far more than it is. It does not move: libcurl keeps its address.
/// Worker thread.
class ReceivedBody {
public:
    ReceivedBody(CurlTransfer& transfer, size_t maxBytes);
    ReceivedBody(const ReceivedBody&) = delete;
    ReceivedBody& operator=(const ReceivedBody&) = delete;

    void restart();

    std::string& bytes() { return bytes_; }
    bool isTooLarge() const { return isTooLarge_; }

    /// Whether it unpacks to more than HIGHEST_RATIO times its size.
    bool isBomb() const { return isBomb_; }
    static constexpr size_t HIGHEST_RATIO = 250;

    /// Throws std::bad_alloc when there was no memory for all that came.
    void throwIfOutOfMemory() const;

private:
    bool take(const char* data, size_t length);
    bool unpacksToFarMore() const;
    static size_t onBody(char* data, size_t size, size_t count, void* self);

    const CurlTransfer& transfer_;
    const size_t maxBytes_;
    std::string bytes_;
    bool isTooLarge_ = false;
    bool isBomb_ = false;
    bool isOutOfMemory_ = false;
};

}  // namespace intake
