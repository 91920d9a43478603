#include "workbench/cli/Table.h"

#include <algorithm>
#include <charconv>

#include "workbench/cli/display_text.h"

namespace workbench {

namespace {

constexpr std::size_t gap = 2;  // between columns

// Where nothing is cut, a longer text stands out of its column: every other row would be filled up
// to it with blanks.
constexpr std::size_t longestAligned = 200;

bool isNumber(const std::string& text) {
    double number = 0;
    const char* end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    return read.ec == std::errc() && read.ptr == end;
}

struct Column {
    std::size_t position;
    std::size_t width;
    bool numeric;
    bool cuts = true;  // what is wider
};

Column measure(const Table& table, std::size_t position, std::size_t widest) {
    Column column{position, 0, false, widest != unlimited};
    const auto widenFor = [&column](const std::string& cell) {
        const std::size_t width = displayWidth(cell);
        if (column.cuts || width <= longestAligned) column.width = std::max(column.width, width);
    };
    widenFor(table.header[position]);
    bool onlyNumbers = true;
    for (const auto& row : table.rows) {
        const std::string& cell = row[position];
        widenFor(cell);
        if (cell.empty()) continue;
        column.numeric = true;
        onlyNumbers = onlyNumbers && isNumber(cell);
    }
    column.numeric = column.numeric && onlyNumbers;
    column.width = std::min(column.width, widest);
    return column;
}

// The columns that fit; the first always does.
std::vector<Column> layOut(const Table& table, const PageSize& page) {
    std::vector<Column> columns;
    std::size_t used = 0;
    for (std::size_t i = 0; i < table.header.size(); ++i) {
        const Column column = measure(table, i, std::min(page.cellWidth, page.columns));
        const std::size_t needed = column.width + (i == 0 ? 0 : gap);
        if (i > 0 && used + needed > page.columns) break;
        used += needed;
        columns.push_back(column);
    }
    const std::size_t room = page.columns - std::min(used, page.columns);
    Column& last = columns.back();
    last.width = std::min(measure(table, last.position, page.columns).width, last.width + room);
    return columns;
}

void appendCell(const std::string& cell, const Column& column, std::string& line) {
    const std::string shown = fitted(cell, column.cuts ? column.width : unlimited);
    const std::string padding(column.width - std::min(column.width, displayWidth(shown)), ' ');
    line += column.numeric ? padding + shown : shown + padding;
}

std::string printRow(const std::vector<std::string>& cells, const std::vector<Column>& columns) {
    std::string line;
    for (const Column& column : columns) {
        if (!line.empty()) line.append(gap, ' ');
        appendCell(cells[column.position], column, line);
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line + '\n';
}

std::string rule(const std::vector<Column>& columns) {
    std::string line;
    for (const Column& column : columns) {
        if (!line.empty()) line.append(gap, ' ');
        line.append(column.width, '-');
    }
    return line + '\n';
}

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " more " + what + (count == 1 ? "" : "s");
}

std::string note(std::size_t columns, std::size_t rows) {
    if (columns == 0 && rows == 0) return "";
    std::string text = "(";
    if (rows > 0) text += counted(rows, "row");
    if (rows > 0 && columns > 0) text += ", ";
    if (columns > 0) text += counted(columns, "column");
    return text + "; load --out json shows everything)\n";
}

}  // namespace

std::string Table::print(const PageSize& page) const {
    const std::vector<Column> columns = layOut(*this, page);
    std::string out = title.empty() ? "" : fitted(title, page.columns) + '\n';
    out += printRow(header, columns) + rule(columns);
    for (const auto& row : rows)
        out += printRow(row, columns);
    return out + note(header.size() - columns.size(), rowsLeftOut);
}

}  // namespace workbench
