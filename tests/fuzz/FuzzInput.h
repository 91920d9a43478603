#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace intake {

/// The bytes of one run. Where a target takes several texts, each but the last ends at a line end.
class FuzzInput {
public:
    FuzzInput(const uint8_t* data, size_t size)
        : rest_(reinterpret_cast<const char*>(data), size) {}

    std::string line() {
        const size_t end = rest_.find('\n');
        const std::string taken(rest_.substr(0, end));
        rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
        return taken;
    }

    std::string_view rest() const { return rest_; }

private:
    std::string_view rest_;
};

/// A character of a line as a number: zero for '0', and less for what comes before that.
inline int numberAt(const std::string& line, size_t at, int otherwise) {
    return at < line.size() ? line[at] - '0' : otherwise;
}

}  // namespace intake
