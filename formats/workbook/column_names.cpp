#include "formats/workbook/column_names.h"

#include <map>
#include <set>

#include "formats/text/fold_case.h"
#include "formats/text/number_text.h"
#include "formats/workbook/cell_text.h"

namespace intake {

namespace {

std::string textOf(const Cell& cell) {
    switch (cell.kind) {
        case CellKind::TEXT:
            return std::string(cell.text);
        case CellKind::BOOLEAN:
            return cell.number != 0 ? "TRUE" : "FALSE";
        case CellKind::DATE:
            return isoDate(cell.number);
        case CellKind::NUMBER:
            return generalNumber(cell.number);
    }
    return {};
}

bool isSpace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

std::string cleaned(const std::string& name) {
    std::string clean;
    bool space = false;
    for (const char character : name) {
        if (isSpace(character)) {
            space = true;
            continue;
        }
        if (space && !clean.empty()) {
            clean += ' ';
        }
        space = false;
        clean += character == '[' ? '(' : character == ']' ? ')' : character;
    }
    return clean;
}

}  // namespace

std::vector<std::string> columnNames(const std::vector<std::optional<Cell>>& header) {
    std::vector<std::string> names;
    std::set<std::string> taken;
    std::map<std::string, size_t> lastNumbers;  // that were put behind a name
    for (const std::optional<Cell>& cell : header) {
        std::string name = cell ? cleaned(textOf(*cell)) : "";
        if (name.empty()) {
            name = "F" + std::to_string(names.size() + 1);
        }
        std::string unique = name;
        const std::string folded = foldCase(name);
        while (!taken.insert(foldCase(unique)).second) {
            unique = name + std::to_string(++lastNumbers[folded]);
        }
        names.push_back(unique);
    }
    return names;
}

}  // namespace intake
