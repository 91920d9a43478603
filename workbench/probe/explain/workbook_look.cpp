#include "workbench/probe/explain/workbook_look.h"

#include <algorithm>

#include "formats/text/fold_case.h"
#include "formats/text/six_digits.h"
#include "formats/workbook/SheetTable.h"
#include "formats/workbook/Workbook.h"
#include "formats/workbook/WorkbookFault.h"
#include "formats/workbook/foreign_file.h"
#include "formats/workbook/table_names.h"
#include "workbench/probe/explain/KeyTally.h"
#include "workbench/probe/explain/RowRange.h"
#include "workbench/probe/explain/ScriptCheck.h"
#include "workbench/probe/explain/settings_check.h"
#include "workbench/probe/sheet_fields.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

using intake::Cell;
using intake::CellKind;
using intake::SheetTable;
using intake::Workbook;

/// What the script has for a cell: dates are not written.
std::string textOf(const Cell& cell) {
    if (cell.kind == CellKind::TEXT) return std::string(cell.text);
    std::string text;
    if (cell.kind != CellKind::DATE) intake::appendSixDigits(text, cell.number);
    return text;
}

/// The field, of another column, under the name that it had.
std::string renamed(const SheetField& field, const std::string& column) {
    const bool hasName = !field.name.empty() && field.name != field.column;
    return bracketed(column) + (hasName ? " AS " + bracketed(field.name) : "");
}

class WorkbookLook {
public:
    WorkbookLook(const Settings& settings, Workbook& workbook, Ladder& ladder)
        : settings_(settings),
          fields_(sheetFields(settings.range)),
          workbook_(workbook),
          ladder_(ladder) {}

    void look() {
        const auto place = intake::findTable(workbook_.index(), settings_.sheet + "$");
        if (!place) return tellNoSheet();
        const SheetTable table(workbook_.sheet(place->sheet), place->range, true);
        const std::size_t rows =
            table.endRow() > table.firstRow() ? table.endRow() - table.firstRow() : 0;
        takeColumns(table);
        if (!checkFields(table)) return;
        const bool isHidden = workbook_.index().sheets()[place->sheet].isHidden;
        const std::string seen = "sheet " + quoted(settings_.sheet) +
                                 (isHidden ? ", which is hidden: " : ": ") + counted(rows, "row") +
                                 ", " + counted(table.columns().size(), "column");
        ladder_.ok(Stage::Selection,
                   rows == 0 ? seen + "; the sheet is there and has no rows" : seen);
        checkRows(settings_, rows, "row", ladder_);
        first_ = table.firstRow();
        count_ = rows;
        ladder_.records = loadedRows();
        checkKey(table);
        checkScript(table);
        if (hasUnknown()) ladder_.records.reset();  // an expression may count the rows
    }

private:
    /// Whether "Fields to read" has what is no column.
    bool hasUnknown() const {
        return std::any_of(columns_.begin(), columns_.end(),
                           [](const auto& each) { return !each.second; });
    }

    std::vector<std::string> sheetNames() const {
        std::vector<std::string> names;
        for (const intake::SheetEntry& sheet : workbook_.index().sheets())
            names.push_back(sheet.name);
        return names;
    }

    void tellNoSheet() {
        const std::vector<std::string> there = sheetNames();
        std::vector<std::string> told;
        for (const intake::SheetEntry& sheet : workbook_.index().sheets())
            told.push_back(sheet.name + (sheet.isHidden ? " (hidden)" : ""));
        const std::string cause =
            settings_.sheet.empty()
                ? "\"Table/Sheet\" (sheet) is empty: nothing says which sheet is read."
                : "The workbook has no sheet " + quoted(settings_.sheet) + ".";
        ladder_.fail(Stage::Selection, "sheet " + quoted(settings_.sheet),
                     cause + " It has: " + listOf(told) + ".",
                     "Set \"Table/Sheet\" (sheet) to one of these, without a $ behind it.");
        std::string wanted = settings_.sheet;
        if (wanted.ends_with('$')) wanted.pop_back();
        const std::string near = nearName(wanted, there);
        if (!near.empty()) ladder_.propose(Stage::Selection, {{"sheet", near}});
        for (std::size_t i = 0; i < std::min(there.size(), mostProposals); ++i)
            ladder_.propose(Stage::Selection, {{"sheet", there[i]}});
    }

    /// The columns of the result, as far as they are columns of the sheet.
    void takeColumns(const SheetTable& table) {
        if (fields_.empty()) {
            for (std::size_t i = 0; i < table.columns().size(); ++i)
                columns_.emplace_back(table.columns()[i], i);
            return;
        }
        for (const SheetField& field : fields_)
            columns_.emplace_back(field.name, table.findColumn(field.column));
    }

    bool checkFields(const SheetTable& table) {
        const auto missing =
            std::find_if(fields_.begin(), fields_.end(), [&](const SheetField& field) {
                return !field.column.empty() && !table.findColumn(field.column);
            });
        if (missing == fields_.end()) return true;
        Step step;
        step.state = State::Failed;
        step.seen = settings_.range;
        step.place = missing->written;
        step.placeOffset = missing->offset;
        step.cause = "The sheet " + quoted(settings_.sheet) + " has no column " +
                     quoted(missing->column) + ". It has: " + listOf(table.columns()) + ".";
        step.next =
            "Set \"Fields to read\" (range) to columns that are there, or leave it empty "
            "for all.";
        ladder_.add(Stage::Selection, step);
        proposeFields(table);
        return false;
    }

    void proposeFields(const SheetTable& table) {
        std::string range;
        for (const SheetField& field : fields_) {
            const bool isThere = field.column.empty() || table.findColumn(field.column);
            const std::string near =
                isThere ? field.written : nearName(field.column, table.columns());
            if (near.empty()) continue;
            range += (range.empty() ? "" : ", ") + (isThere ? near : renamed(field, near));
        }
        if (!range.empty()) ladder_.propose(Stage::Selection, {{"range", range}});
        ladder_.propose(Stage::Selection, {{"range", ""}});
    }

    template <class Visit>
    void forEachRow(const SheetTable& table, Visit visit) const {
        const RowRange range = rowRangeOf(settings_);
        for (std::size_t i = 0; i < count_; ++i) {
            if (!range.contains(i)) continue;
            const auto row = first_ + static_cast<uint32_t>(i);
            const std::size_t position = table.position(row);
            visit(position, table.isAt(position, row));
        }
    }

    std::size_t loadedRows() const {
        const RowRange range = rowRangeOf(settings_);
        std::size_t rows = 0;
        for (std::size_t i = 0; i < count_; ++i)
            rows += range.contains(i) ? 1 : 0;
        return rows;
    }

    static std::string valueAt(const SheetTable& table, std::size_t position, bool isThere,
                               std::size_t column) {
        Cell cell;
        return isThere && table.value(position, column, cell) ? textOf(cell) : "";
    }

    /// The column of the result by whose name the key is looked up; the position among all of them
    /// when it is not there.
    std::size_t keyColumn() const {
        const auto found = std::find_if(columns_.begin(), columns_.end(), [this](const auto& each) {
            return intake::foldCase(each.first) == intake::foldCase(settings_.key);
        });
        return static_cast<std::size_t>(found - columns_.begin());
    }

    void checkKey(const SheetTable& table) {
        if (settings_.mode == TargetMode::DataStructure && !settings_.table.empty())
            return tellOneStructure(*ladder_.records, ladder_);
        if (!needsKey(settings_)) return ladder_.ok(Stage::Key, "none is needed");
        if (*ladder_.records == 0) return;
        const std::size_t key = keyColumn();
        if (key == columns_.size()) {
            if (!hasUnknown()) tellKeyMissing(table);
            return;
        }
        if (!columns_[key].second) return;  // an expression, whose values are not known
        if (settings_.mode == TargetMode::FieldArray) return ladder_.ok(Stage::Key, settings_.key);
        const KeyTally tally = tallyOf(table, key);
        ladder_.records = tally.entries();
        tally.tell(ladder_);
        if (ladder_.at(Stage::Key).state == State::Warning) proposeKeys(table);
    }

    KeyTally tallyOf(const SheetTable& table, std::size_t column) const {
        KeyTally tally(columns_[column].first, "column");
        forEachRow(table, [&](std::size_t position, bool isThere) {
            tally.add(valueAt(table, position, isThere, *columns_[column].second));
        });
        return tally;
    }

    void tellKeyMissing(const SheetTable& table) {
        std::vector<std::string> there;
        for (const auto& [name, column] : columns_)
            there.push_back(name);
        ladder_.records = 0;
        ladder_.fail(Stage::Key, settings_.key,
                     "None of the columns that are read is " + quoted(settings_.key) +
                         ". They are: " + listOf(there) + ".",
                     "Set \"Key\" (key) to one of these.");
        const std::string near = nearName(settings_.key, there);
        if (!near.empty()) ladder_.propose(Stage::Key, {{"key", near}});
        proposeKeys(table);
    }

    void proposeKeys(const SheetTable& table) {
        std::size_t proposed = 0;
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            const bool isUnique = columns_[i].second && tallyOf(table, i).entries() == loadedRows();
            if (isUnique && proposed++ < mostProposals)
                ladder_.propose(Stage::Key, {{"key", columns_[i].first}});
        }
        ladder_.propose(Stage::Key, {{"mode", "DataArray"}});
    }

    void checkScript(const SheetTable& table) {
        if (settings_.mode == TargetMode::SharedMemory) return ladder_.ok(Stage::Script, "");
        const bool isArray = settings_.mode == TargetMode::FieldArray;
        ScriptCheck check(settings_);
        const std::size_t key = keyColumn();
        std::vector<std::string_view> names;
        for (std::size_t i = 0; i < columns_.size() && !isArray; ++i) {
            if (!columns_[i].second) continue;
            check.name(columns_[i].first);
            names.push_back(columns_[i].first);
        }
        check.record(std::move(names));
        forEachRow(table, [&](std::size_t position, bool isThere) {
            if (!isThere) return;
            for (std::size_t i = 0; i < columns_.size(); ++i) {
                if ((isArray && i != key) || !columns_[i].second) continue;
                const std::string value = valueAt(table, position, isThere, *columns_[i].second);
                if (!isArray && i == key && needsKey(settings_)) check.key(value);
                check.value(columns_[i].first, value);
            }
        });
        check.tell(ladder_);
    }

    const Settings& settings_;
    const std::vector<SheetField> fields_;
    Workbook& workbook_;
    Ladder& ladder_;
    std::vector<std::pair<std::string, std::optional<std::size_t>>> columns_;
    uint32_t first_ = 0;  // of the sheet's rows that are records
    std::size_t count_ = 0;
};

}  // namespace

void lookAtWorkbook(const Settings& settings, const Fetched& source, Ladder& ladder) {
    const char* const foreign = intake::foreignFileReason(source.body);
    if (foreign != nullptr)
        return ladder.fail(Stage::Format, "no workbook that can be read", asSentence(foreign),
                           "Save the workbook as .xlsx, without a password.");
    try {
        const intake::EndMark never;
        const intake::TextSource file(source.body);
        Workbook workbook(file, never);
        ladder.ok(Stage::Format, "a workbook");
        WorkbookLook(settings, workbook, ladder).look();
    } catch (const intake::WorkbookFault& fault) {
        ladder.fail(Stage::Format, "a workbook that is not whole or not right",
                    asSentence(fault.what()), "Copy or save it again.");
    }
}

}  // namespace probe
