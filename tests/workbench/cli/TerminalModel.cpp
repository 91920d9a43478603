#include "tests/workbench/cli/TerminalModel.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "formats/text/utf8.h"

void TerminalModel::write(std::string_view text) {
    while (!text.empty()) {
        if (text.front() == '\x1b') {
            control(text);
            continue;
        }
        const std::size_t length = intake::utf8CharacterAt(text).length;
        put(text.substr(0, length));
        text.remove_prefix(length);
    }
}

// ESC [ parameter command
void TerminalModel::control(std::string_view& text) {
    const auto end = text.find_first_of("ABHJKhlm", 2);
    ASSERT_NE(end, std::string_view::npos) << text;
    const std::string parameter(text.substr(2, end - 2));
    const std::size_t count =
        std::isdigit(static_cast<unsigned char>(parameter[0])) != 0 ? std::stoul(parameter) : 1;
    const char command = text[end];
    text.remove_prefix(end + 1);
    if (command == 'A') row_ = std::max(top_ + count, row_) - count;
    if (command == 'B') row_ = std::min(row_ + count, top_ + rows_ - 1);
    if (command == 'K') line().resize(std::min(line().size(), column_));
    if (command == 'J') lines_.resize(parameter == "2" ? top_ : std::min(lines_.size(), row_));
    if (command == 'H') row_ = top_;
    if (command == 'H') column_ = 0;
    if (parameter == "?25") isCursorShown_ = command == 'h';
}

void TerminalModel::put(std::string_view character) {
    if (character == "\r") {
        column_ = 0;
        return;
    }
    if (character == "\n") return lineFeed();
    if (column_ == columns_) {
        lineFeed();
        column_ = 0;
    }
    Line& current = line();
    if (current.size() <= column_) current.resize(column_ + 1, " ");
    current[column_++] = character;
}

void TerminalModel::lineFeed() {
    ++row_;
    if (row_ == top_ + rows_) ++top_;
}

TerminalModel::Line& TerminalModel::line() {
    if (lines_.size() <= row_) lines_.resize(row_ + 1);
    return lines_[row_];
}

std::string TerminalModel::text() const {
    std::string all;
    for (const Line& each : lines_) {
        std::string shown;
        for (const std::string& character : each)
            shown += character;
        all += shown.substr(0, shown.find_last_not_of(' ') + 1) + '\n';
    }
    return all.substr(0, all.find_last_not_of('\n') + 1);
}

std::string TerminalModel::lineWith(const std::string& part) const {
    const std::string all = "\n" + text() + "\n";
    const auto found = all.find(part);
    if (found == std::string::npos) return "";
    const auto start = all.rfind('\n', found) + 1;
    return all.substr(start, all.find('\n', found) - start);
}
