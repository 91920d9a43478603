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
#include "workbench/probe/explore/OutlinePage.h"
#include "workbench/probe/explore/PathTree.h"
#include "workbench/probe/explore/Wanted.h"
#include "workbench/probe/explore/preview_cell.h"
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

/// The first records, without any column yet.
Preview emptyPreview(const SheetTable& table) {
    Preview preview;
    preview.rows.resize(std::min(rowsOf(table), mostPreviewed));
    preview.leftOut = rowsOf(table) - preview.rows.size();
    return preview;
}

void addColumn(const SheetTable& table, std::size_t column, Preview& preview) {
    preview.columns.push_back(table.columns()[column]);
    for (std::size_t i = 0; i < preview.rows.size(); ++i) {
        const auto row = table.firstRow() + static_cast<uint32_t>(i);
        const std::size_t position = table.position(row);
        Cell cell;
        const bool isThere = table.isAt(position, row) && table.value(position, column, cell);
        preview.rows[i].push_back(isThere ? previewCell(textOf(cell)) : "");
    }
}

class WorkbookOutline {
public:
    WorkbookOutline(Workbook& workbook, const OutlineWish& wish)
        : workbook_(workbook), wish_(wish), wanted_(wish.find), page_(wish) {}

    Outline make() {
        Outline outline = page();
        outline.preview = std::move(preview_);
        return outline;
    }

private:
    Outline page() {
        const auto& sheets = workbook_.index().sheets();
        bool isThere = wish_.place.empty();
        for (std::size_t i = 0; i < sheets.size(); ++i) {
            if (!wish_.place.empty() && !intake::equalIgnoringCase(sheets[i].name, wish_.place))
                continue;
            isThere = true;
            addSheet(sheets[i], i);
            if (isSearchOver()) return page_.takeUncounted();
        }
        if (isThere) return page_.take();
        std::vector<std::string> names;
        for (const intake::SheetEntry& sheet : sheets)
            names.push_back(sheet.name);
        throw LookFailure("has no sheet " + quoted(wish_.place) + ", but " + listOf(names));
    }

    void addSheet(const intake::SheetEntry& sheet, std::size_t number) {
        try {
            const SheetTable table(workbook_.sheet(number), std::nullopt, true);
            const OutlineEntry entry = sheetEntry(sheet, table);
            if (wanted_.isNone() || wanted_.isIn(sheet.name)) page_.add(entry);
            if (wish_.isWhole && !wish_.place.empty()) preview_ = emptyPreview(table);
            addColumns(table, entry);
        } catch (const intake::WorkbookFault& fault) {
            page_.add({0, sheet.name, std::string("not readable: ") + fault.what(), 0, "", "", {}});
        }
    }

    static OutlineEntry sheetEntry(const intake::SheetEntry& sheet, const SheetTable& table) {
        OutlineEntry entry;
        entry.name = sheet.name;
        entry.kind = sheet.isHidden ? "hidden sheet" : "sheet";
        entry.records = rowsOf(table);
        entry.place = sheet.name;
        entry.type = EntryType::Sheet;
        entry.isHidden = sheet.isHidden;
        const std::size_t columns = table.columns().size();
        entry.size = TableSize{rowsOf(table) + (columns > 0 ? 1 : 0), columns};
        const bool canBeNamed = sheet.name.find(']') == std::string::npos;
        if (canBeNamed) entry.settings = {{"sheet", sheet.name}};
        return entry;
    }

    void addColumns(const SheetTable& table, const OutlineEntry& sheet) {
        for (std::size_t i = 0; i < table.columns().size(); ++i) {
            if (isSearchOver()) return;
            if (wanted_.isNone() && !page_.wantsNext()) {
                page_.pass(1);
                continue;
            }
            const std::string& name = table.columns()[i];
            const Column column = columnOf(table, i, wanted_);
            if (!wanted_.isNone() && column.match.empty() && !wanted_.isIn(name)) continue;
            if (preview_ && page_.wantsNext()) addColumn(table, i, *preview_);
            OutlineEntry entry;
            entry.depth = 1;
            entry.name = name;
            entry.kind = wordsFor(column);
            entry.records = sheet.records;
            entry.value = column.match.empty() ? column.value : column.match;
            entry.type = EntryType::Column;
            if (!table.isDate(i)) entry.key = name;  // what is not written names no record
            const std::string range = bracketed(name);
            if (!sheet.settings.empty() && range.size() <= longestRange) {
                entry.settings = sheet.settings;
                entry.settings.emplace_back("range", range);
            }
            page_.add(entry);
        }
    }

    /// A page of what is found is enough, and that there is more.
    bool isSearchOver() const { return !wanted_.isNone() && page_.isPassed(); }

    Workbook& workbook_;
    const OutlineWish& wish_;
    const Wanted wanted_;
    OutlinePage page_;
    std::optional<Preview> preview_;  // of the sheet that is asked for
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
