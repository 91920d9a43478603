#include "workbench/cli/run/ScreenBlock.h"

namespace workbench {

namespace {

constexpr const char* clearToLineEnd = "\x1b[K";
constexpr const char* clearBelow = "\x1b[J";
constexpr const char* clearScreen = "\x1b[2J\x1b[H";

std::string up(std::size_t lines) {
    return lines == 0 ? "" : "\x1b[" + std::to_string(lines) + "A";
}

std::string down(std::size_t lines) {
    return lines == 0 ? "" : "\x1b[" + std::to_string(lines) + "B";
}

/// Each line of the text, which takes the place of whatever was there.
std::string overwriting(const std::string& text) {
    std::string out;
    for (const char c : text)
        out += c == '\n' ? std::string(clearToLineEnd) + "\r\n" : std::string(1, c);
    return out;
}

}  // namespace

std::string ScreenBlock::update(const std::vector<std::string>& lines, const std::string& above) {
    if (lines.size() != shown_.size() || !above.empty()) {
        std::string out = rewriteAll(lines, above);
        shown_ = lines;
        return out;
    }
    std::string out;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i] == shown_[i]) continue;
        const std::size_t distance = lines.size() - i;
        out += up(distance) + lines[i] + clearToLineEnd + "\r" + down(distance);
    }
    shown_ = lines;
    return out;
}

std::string ScreenBlock::rewriteAll(const std::vector<std::string>& lines,
                                    const std::string& above) const {
    std::string out = up(shown_.size()) + overwriting(above);
    for (const std::string& line : lines)
        out += line + clearToLineEnd + "\r\n";
    return out + clearBelow;
}

std::string ScreenBlock::clear() {
    shown_.clear();
    return clearScreen;
}

}  // namespace workbench
