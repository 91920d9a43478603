#include "workbench/probe/explore/workbook_outline.h"

#include <algorithm>

#include "formats/text/ascii.h"
#include "formats/text/six_digits.h"
#include "formats/workbook/SheetTable.h"
#include "formats/workbook/Workbook.h"
#include "formats/workbook/WorkbookFault.h"
#include "formats/workbook/cell_text.h"
#include "formats/workbook/foreign_file.h"
#include "workbench/probe/LookFailure.h"
#include "workbench/probe/explore/PathTree.h"
#include "workbench/probe/explore/Wanted.h"
#include "workbench/probe/sheet_fields.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

using intake::Cell;
using intake::CellKind;
using intake::SheetTable;
using intake::Workbook;

constexpr std::size_t longestRange = 79;  // bytes, of the parameter "range"

// In the order of CellKind.
constexpr std::array<const char*, 4> kindWords{"numbers", "dates, not written", "switches",
                                               "texts"};

std::string textOf(const Cell& cell) {
    if (cell.kind == CellKind::TEXT) return std::string(cell.text);
    if (cell.kind == CellKind::DATE) return intake::isoDate(cell.number);
    std::string text;
    intake::appendSixDigits(text, cell.number);
    return text;
}

/// What a column holds.
struct Column {
    uint8_t kinds = 0;  // a bit for each
    std::string value;  // the first
    std::string match;  // the first with the text that is looked for
};

Column columnOf(const SheetTable& table, std::size_t column, const Wanted& wanted) {
    Column found;
    for (std::size_t position = table.position(table.firstRow()); table.hasRecordAt(position);
         ++position) {
        Cell cell;
        if (!table.value(position, column, cell)) continue;
        found.kinds = static_cast<uint8_t>(found.kinds | 1U << static_cast<unsigned>(cell.kind));
        if (found.value.empty()) found.value = startOf(textOf(cell));
        const bool isSought = !wanted.isNone() && found.match.empty();
        if (isSought && wanted.isIn(textOf(cell))) found.match = startOf(textOf(cell));
    }
    return found;
}

std::string wordsFor(const Column& column) {
    std::string words;
    for (std::size_t kind = 0; kind < kindWords.size(); ++kind) {
        if ((column.kinds >> kind & 1) != 0)
            words += (words.empty() ? "" : ", ") + std::string(kindWords[kind]);
    }
    return words.empty() ? "blank" : words;
}

std::size_t rowsOf(const SheetTable& table) {
    return table.endRow() > table.firstRow() ? table.endRow() - table.firstRow() : 0;
}

class WorkbookOutline {
public:
    WorkbookOutline(Workbook& workbook, const OutlineWish& wish)
        : workbook_(workbook), wish_(wish), wanted_(wish.find) {}

    Outline make() {
        const auto& sheets = workbook_.index().sheets();
        bool isThere = wish_.place.empty();
        for (std::size_t i = 0; i < sheets.size(); ++i) {
            if (!wish_.place.empty() && !intake::equalIgnoringCase(sheets[i].name, wish_.place))
                continue;
            isThere = true;
            addSheet(sheets[i], i);
        }
        if (isThere) return std::move(outline_);
        std::vector<std::string> names;
        for (const intake::SheetEntry& sheet : sheets)
            names.push_back(sheet.name);
        throw LookFailure("has no sheet " + quoted(wish_.place) + ", but " + listOf(names));
    }

private:
    void addSheet(const intake::SheetEntry& sheet, std::size_t number) {
        try {
            const SheetTable table(workbook_.sheet(number), std::nullopt, true);
            const std::string hidden = sheet.isHidden ? "hidden sheet" : "sheet";
            OutlineEntry entry{0, sheet.name, hidden, rowsOf(table), "", sheet.name, {}};
            const bool canBeNamed = sheet.name.find(']') == std::string::npos;
            if (canBeNamed) entry.settings = {{"sheet", sheet.name}};
            if (wanted_.isNone() || wanted_.isIn(sheet.name)) add(entry);
            addColumns(table, entry);
        } catch (const intake::WorkbookFault& fault) {
            add({0, sheet.name, std::string("not readable: ") + fault.what(), 0, "", "", {}});
        }
    }

    void addColumns(const SheetTable& table, const OutlineEntry& sheet) {
        for (std::size_t i = 0; i < table.columns().size(); ++i) {
            if (isFull() && wanted_.isNone()) {
                outline_.leftOut += table.columns().size() - i;
                return;
            }
            const std::string& name = table.columns()[i];
            const Column column = columnOf(table, i, wanted_);
            if (!wanted_.isNone() && column.match.empty() && !wanted_.isIn(name)) continue;
            OutlineEntry entry{1,
                               name,
                               wordsFor(column),
                               sheet.records,
                               column.match.empty() ? column.value : column.match,
                               "",
                               {}};
            const std::string range = bracketed(name);
            if (!sheet.settings.empty() && range.size() <= longestRange) {
                entry.settings = sheet.settings;
                entry.settings.emplace_back("range", range);
            }
            add(entry);
        }
    }

    bool isFull() const { return outline_.entries.size() == wish_.most; }

    void add(OutlineEntry entry) {
        if (isFull()) {
            ++outline_.leftOut;
        } else {
            outline_.entries.push_back(std::move(entry));
        }
    }

    Workbook& workbook_;
    const OutlineWish& wish_;
    const Wanted wanted_;
    Outline outline_;
};

}  // namespace

Outline workbookOutline(const Fetched& source, const OutlineWish& wish) {
    const char* const foreign = intake::foreignFileReason(source.body);
    if (foreign != nullptr) throw LookFailure(std::string("cannot be read: ") + foreign);
    try {
        const intake::EndMark never;
        const intake::TextSource file(source.body);
        Workbook workbook(file, never);
        return WorkbookOutline(workbook, wish).make();
    } catch (const intake::WorkbookFault& fault) {
        throw LookFailure(std::string("is a workbook that cannot be read: ") + fault.what());
    }
}

}  // namespace probe
