#include "platform/linux/XmlInput.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace intake {

int TextInput::read(char* buffer, int capacity) {
    const size_t length = std::min(rest_.size(), static_cast<size_t>(capacity));
    std::memcpy(buffer, rest_.data(), length);
    rest_.remove_prefix(length);
    return static_cast<int>(length);
}

int FileInput::read(char* buffer, int capacity) {
    const ssize_t length = ::read(descriptor_, buffer, static_cast<size_t>(capacity));
    error_ = length < 0 ? errno : 0;
    return static_cast<int>(length);
}

}  // namespace intake
