#pragma once

// The pieces of result scripts that the readers share. Each appends to the one buffer that a script
// grows in.

#include <array>
#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>

namespace intake {

inline void appendInteger(std::string& script, int64_t number) {
    std::array<char, 20> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    script.append(std::string_view(digits.data(), end));
}

/// The value in a frame of two double quotes a side; quotes inside it stay as they are.
inline void appendFramed(std::string& script, std::string_view value) {
    script.append("\"\"").append(value).append("\"\"");
}

/// The head of an assignment to one element: `name[index]=`.
inline void appendElementHead(std::string& script, std::string_view name, int64_t index) {
    script.append(name).append("[");
    appendInteger(script, index);
    script.append("]=");
}

/// The head of an assignment to a range of elements: `name[0-last]=`.
inline void appendRangeHead(std::string& script, std::string_view name, int64_t elements) {
    script.append(name).append("[0-");
    appendInteger(script, elements - 1);
    script.append("]=");
}

inline void appendRecordCount(std::string& script, std::string_view prefix, int64_t records) {
    script.append(prefix).append("READER_NUM_RECORDS=");
    appendInteger(script, records);
    script.append(";");
}

}  // namespace intake
