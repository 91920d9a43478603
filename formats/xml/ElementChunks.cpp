#include "formats/xml/ElementChunks.h"

#include <algorithm>
#include <cstring>

namespace intake {

namespace {

constexpr size_t USUAL_CHUNK = 256 << 10;
constexpr size_t LARGEST_CHUNK = 16 << 20;

}  // namespace

bool ElementChunks::next(std::string_view& chunk) {
    if (!buffer_.empty()) {
        buffer_[taken_] = covered_;
        std::memmove(buffer_.data(), &buffer_[taken_], filled_ - taken_);
        filled_ -= taken_;
    }
    taken_ = 0;
    while (taken_ == 0 && !ended_) {
        if (!fill()) {
            return false;
        }
        taken_ = ended_ ? filled_ : lastCut();
    }
    if (taken_ == 0) {
        return false;
    }
    covered_ = buffer_[taken_];
    buffer_[taken_] = 0;
    chunk = {buffer_.data(), taken_};
    return true;
}

/// Fills the buffer up, which grows when it is full already; false when it may not grow any more.
bool ElementChunks::fill() {
    const size_t capacity = buffer_.empty() ? 0 : buffer_.size() - 1;
    if (filled_ == capacity) {
        if (capacity == LARGEST_CHUNK) {
            return false;
        }
        buffer_.resize(std::max(2 * capacity, USUAL_CHUNK) + 1);
    }
    const size_t wanted = buffer_.size() - 1 - filled_;
    const size_t got = stream_.read(&buffer_[filled_], wanted);
    filled_ += got;
    ended_ = got < wanted;
    return true;
}

size_t ElementChunks::lastCut() const {
    const size_t at = std::string_view(buffer_.data(), filled_).rfind(endTag_);
    return at == std::string_view::npos ? 0 : at + endTag_.size();
}

}  // namespace intake
