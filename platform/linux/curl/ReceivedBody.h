#pragma once

#include <cstddef>
#include <string>

#include "platform/linux/curl/CurlTransfer.h"

namespace intake {

/// Keeps the body of a transfer, up to a limit; a larger one fails the transfer. It does not move:
/// libcurl keeps its address. Worker thread.
class ReceivedBody {
public:
    ReceivedBody(CurlTransfer& transfer, size_t maxBytes);
    ReceivedBody(const ReceivedBody&) = delete;
    ReceivedBody& operator=(const ReceivedBody&) = delete;

    void restart();

    std::string& bytes() { return bytes_; }
    bool isTooLarge() const { return isTooLarge_; }

    /// Throws std::bad_alloc when there was no memory for all that came.
    void throwIfOutOfMemory() const;

private:
    bool take(const char* data, size_t length);
    static size_t onBody(char* data, size_t size, size_t count, void* self);

    const size_t maxBytes_;
    std::string bytes_;
    bool isTooLarge_ = false;
    bool isOutOfMemory_ = false;
};

}  // namespace intake
