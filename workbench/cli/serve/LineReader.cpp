#include "workbench/cli/serve/LineReader.h"

#include <algorithm>

namespace workbench {

namespace {

constexpr std::size_t blockSize = 64U << 10;

}  // namespace

LineReader::LineReader(const std::filesystem::path& file, std::uintmax_t most, std::size_t longest)
    : stream_(file, std::ios::binary),
      most_(most),
      left_(most),
      longest_(longest),
      block_(blockSize) {}

bool LineReader::fill() {
    if (!rest_.empty()) return true;
    const auto wanted = std::min<std::uintmax_t>(block_.size(), left_);
    stream_.read(block_.data(), static_cast<std::streamsize>(wanted));
    rest_ = {block_.data(), static_cast<std::size_t>(stream_.gcount())};
    left_ -= rest_.size();
    return !rest_.empty();
}

void LineReader::seek(std::uintmax_t place) {
    place_ = place;
    left_ = most_ - std::min(most_, place);
    rest_ = {};
    stream_.clear();
    stream_.seekg(static_cast<std::streamoff>(place));
}

void LineReader::append(std::string_view part, std::string& line) const {
    line += part.substr(0, longest_ + 1 - std::min(longest_ + 1, line.size()));
}

bool LineReader::next(std::string& line) {
    line.clear();
    bool isAny = false;
    while (fill()) {
        isAny = true;
        const auto end = rest_.find('\n');
        append(rest_.substr(0, end), line);
        const std::size_t taken = std::min(rest_.size(), end == rest_.npos ? end : end + 1);
        rest_.remove_prefix(taken);
        place_ += taken;
        if (end != rest_.npos) return true;
    }
    return isAny;
}

}  // namespace workbench
