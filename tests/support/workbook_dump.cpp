#include "tests/support/workbook_dump.h"

#include <array>
#include <charconv>

#include "tests/support/in_quotes.h"

namespace intake {

namespace {

/// The letters of a column that is counted from 0.
std::string letters(uint32_t column) {
    const std::string last(1, static_cast<char>('A' + column % 26));
    return column < 26 ? last : letters(column / 26 - 1) + last;
}

std::string shortest(double number) {
    std::array<char, 32> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr};
}

std::string describe(const Cell& cell) {
    switch (cell.kind) {
        case CellKind::NUMBER:
            return "number " + shortest(cell.number);
        case CellKind::DATE:
            return "date " + shortest(cell.number);
        case CellKind::BOOLEAN:
            return cell.number == 0 ? "false" : "true";
        default:
            return "text " + inQuotes(cell.text);
    }
}

std::string dumpRow(const Sheet& sheet, size_t row) {
    std::string out;
    sheet.forEachKind(row, [&](uint32_t column, CellKind) {
        Cell cell;
        sheet.cell(row, column, cell);
        out += "  " + letters(column) + std::to_string(sheet.rows()[row].number) + " " +
               describe(cell) + "\n";
    });
    return out;
}

}  // namespace

std::string dumpWorkbook(Workbook& workbook) {
    std::string out;
    for (size_t number = 0; number < workbook.index().sheets().size(); ++number) {
        const SheetEntry& entry = workbook.index().sheets()[number];
        out += (entry.isHidden ? "hidden sheet " : "sheet ") + inQuotes(entry.name) + "\n";
        const Sheet& sheet = workbook.sheet(number);
        for (size_t row = 0; row < sheet.rows().size(); ++row) {
            out += dumpRow(sheet, row);
        }
    }
    return out;
}

}  // namespace intake
