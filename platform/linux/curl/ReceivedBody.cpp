#include "platform/linux/curl/ReceivedBody.h"

#include <new>

namespace intake {

ReceivedBody::ReceivedBody(CurlTransfer& transfer, size_t maxBytes)
    : transfer_(transfer), maxBytes_(maxBytes) {
    curl_easy_setopt(transfer.handle(), CURLOPT_WRITEFUNCTION, onBody);
    curl_easy_setopt(transfer.handle(), CURLOPT_WRITEDATA, this);
}

void ReceivedBody::restart() {
    bytes_.clear();
    isTooLarge_ = false;
    isBomb_ = false;
    isOutOfMemory_ = false;
}

void ReceivedBody::throwIfOutOfMemory() const {
    if (isOutOfMemory_) {
        throw std::bad_alloc();
    }
}

/// Of a body in chunks, libcurl counts what it took only when all of that was handed over.
bool ReceivedBody::unpacksToFarMore() const {
    curl_off_t counted = 0;
    curl_easy_getinfo(transfer_.handle(), CURLINFO_SIZE_DOWNLOAD_T, &counted);
    const size_t received = static_cast<size_t>(counted) + CurlTransfer::RECEIVE_BUFFER;
    return bytes_.size() / HIGHEST_RATIO > received;
}

bool ReceivedBody::take(const char* data, size_t length) {
    isTooLarge_ = length > maxBytes_ - bytes_.size();
    isBomb_ = unpacksToFarMore();
    if (isTooLarge_ || isBomb_) {
        return false;
    }
    try {
        bytes_.append(data, length);
        return true;
    } catch (const std::exception&) {  // nothing may fly through the library
        isOutOfMemory_ = true;
        return false;
    }
}

/// Taking less than was offered fails the transfer.
size_t ReceivedBody::onBody(char* data, size_t size, size_t count, void* self) {
    return static_cast<ReceivedBody*>(self)->take(data, size * count) ? size * count : 0;
}

}  // namespace intake
