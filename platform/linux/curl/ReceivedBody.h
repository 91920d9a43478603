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
    /// `transfer` outlives this object; its options, but for what it does with the body, are its
    /// owner's. `packings` are those that the server is told of, in libcurl's form.
    ReceivedBody(CurlTransfer& transfer, size_t maxBytes, const char* packings);
    ReceivedBody(const ReceivedBody&) = delete;
    ReceivedBody& operator=(const ReceivedBody&) = delete;

    /// Runs the transfer from start to end. What cannot be unpacked is asked for once more, to be
    /// taken as it comes: some servers name as a packing what is none. False when it was given up.
    /// Throws std::bad_alloc when there was no memory for all that came.
    bool receive();

    std::string& bytes() { return bytes_; }
    size_t size() const { return bytes_.size(); }

    /// So many bytes came, packed or not.
    size_t received() const;
    bool isTooLarge() const { return isTooLarge_; }

    /// Whether it unpacks to more than HIGHEST_RATIO times its size.
    bool isBomb() const { return isBomb_; }
    static constexpr size_t HIGHEST_RATIO = 250;

private:
    bool run(const char* packings);
    bool take(const char* data, size_t length);
    bool unpacksToFarMore() const;
    static size_t onBody(char* data, size_t size, size_t count, void* self);

    CurlTransfer& transfer_;
    const size_t maxBytes_;
    const char* const packings_;
    std::string bytes_;
    bool isTooLarge_ = false;
    bool isBomb_ = false;
    bool isOutOfMemory_ = false;
};

}  // namespace intake
