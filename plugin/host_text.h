#pragma once

#include <cstddef>
#include <string_view>

namespace intake {

// Lengths of the host's text buffers in bytes, terminator included, as they are registered.
constexpr size_t LONG_TEXT = 512;
constexpr size_t SHORT_TEXT = 80;
constexpr size_t QUERY_TEXT = 4096;
constexpr size_t POST_ACTION_TEXT = 2048;

/// A text of the host's record; the empty text when the host has none.
inline std::string_view hostText(const char* text) {
    return text == nullptr ? std::string_view() : std::string_view(text);
}

/// Copies a text into a host buffer of `capacity` bytes, cut to what fits, always terminated.
inline void copyToHost(char* buffer, size_t capacity, std::string_view text) {
    if (buffer != nullptr) {
        buffer[text.copy(buffer, capacity - 1)] = 0;
    }
}

}  // namespace intake
