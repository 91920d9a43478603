#include "platform/linux/curl/ReceivedBody.h"

#include <new>

namespace intake {

ReceivedBody::ReceivedBody(CurlTransfer& transfer, size_t maxBytes, const char* packings)
    : transfer_(transfer), maxBytes_(maxBytes), packings_(packings) {
    curl_easy_setopt(transfer.handle(), CURLOPT_WRITEFUNCTION, onBody);
    curl_easy_setopt(transfer.handle(), CURLOPT_WRITEDATA, this);
}

bool ReceivedBody::receive() {
    const bool ended = run(packings_);
    return ended && transfer_.result() == CURLE_BAD_CONTENT_ENCODING ? run(nullptr) : ended;
}

bool ReceivedBody::run(const char* packings) {
    bytes_.clear();
    isTooLarge_ = false;
    isBomb_ = false;
    isOutOfMemory_ = false;
    curl_easy_setopt(transfer_.handle(), CURLOPT_ACCEPT_ENCODING, packings);
    transfer_.restart();
    const bool ended = transfer_.drive([] { return false; });
    if (isOutOfMemory_) {
        throw std::bad_alloc();
    }
    return ended;
}

size_t ReceivedBody::received() const {
    curl_off_t counted = 0;
    curl_easy_getinfo(transfer_.handle(), CURLINFO_SIZE_DOWNLOAD_T, &counted);
    return static_cast<size_t>(counted);
}

/// Of a body in chunks, libcurl counts what it took only when all of that was handed over.
bool ReceivedBody::unpacksToFarMore() const {
    return bytes_.size() / HIGHEST_RATIO > received() + CurlTransfer::RECEIVE_BUFFER;
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
