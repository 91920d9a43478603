#pragma once

#include <string>
#include <string_view>
#include <vector>

/// A terminal of so many columns and rows, as far as the workbench uses one: it shows what is
/// written to it. A character is one column wide.
class TerminalModel {
public:
    TerminalModel(std::size_t columns, std::size_t rows) : columns_(columns), rows_(rows) {}

    void write(std::string_view text);

    /// What has scrolled away and what is shown, without blanks and empty lines at the ends.
    std::string text() const;

    /// The line that contains the text; empty when none does.
    std::string lineWith(const std::string& part) const;

    bool isCursorShown() const { return isCursorShown_; }

    std::size_t scrolledLines() const { return top_; }

    void resize(std::size_t columns, std::size_t rows) {
        columns_ = columns;
        rows_ = rows;
    }

private:
    using Line = std::vector<std::string>;  // of characters

    void control(std::string_view& text);
    void put(std::string_view character);
    void lineFeed();
    Line& line();

    std::size_t columns_;
    std::size_t rows_;
    std::vector<Line> lines_;
    std::size_t top_ = 0;  // the first line that is on the screen
    std::size_t row_ = 0;  // of the cursor, of all lines
    std::size_t column_ = 0;
    bool isCursorShown_ = true;
};
