#include "workbench/probe/explain/html_look.h"

#include <algorithm>
#include <array>

#include "formats/html/PageError.h"
#include "formats/html/TableRows.h"
#include "formats/html/page_encoding.h"
#include "formats/text/ascii.h"
#include "formats/text/media_type.h"
#include "workbench/probe/PageTables.h"
#include "workbench/probe/explain/KeyTally.h"
#include "workbench/probe/explain/RowRange.h"
#include "workbench/probe/explain/ScriptCheck.h"
#include "workbench/probe/recognise.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

using intake::html::Page;
using intake::html::TableRows;

class HtmlLook {
public:
    HtmlLook(const Settings& settings, const Page& page, Ladder& ladder)
        : settings_(settings),
          selector_(htmlSelector(settings.sheet)),
          tables_(page),
          ladder_(ladder) {}

    void look() {
        const FoundTable found = tables_.find(selector_);
        const bool saysNothing = !selector_.kind.empty() && selector_.text.empty();
        if (found.table == nullptr || saysNothing) return tellNoTable(found);
        const TableRows rows(*found.table);
        if (rows.rowCount() == 0)
            return ladder_.ok(Stage::Selection, seen() + ": the table is there and has no rows");
        takeNames(rows);
        ladder_.ok(Stage::Selection, seen() + ": " + counted(rows.rowCount(), "row") + ", " +
                                         counted(names_.size(), "column"));
        checkRows(settings_, rows.rowCount(), "row", ladder_);
        ladder_.records = recordsIn(rows);
        checkKey(rows);
        checkScript(rows);
    }

private:
    std::string seen() const {
        return settings_.sheet.empty() ? "the first table" : settings_.sheet;
    }

    void tellNoTable(const FoundTable& found) {
        if (tables_.all().empty())
            return ladder_.fail(Stage::Selection, seen(), "The page has no table.",
                                "Look at the page in a browser: it may be another one than is "
                                "wanted, or its tables may be made by a script, which is not run.");
        const bool isKnownKind =
            selector_.kind == "ID" || selector_.kind == "CLASS" || selector_.kind == "TEXT";
        const std::string cause =
            selector_.text.empty()
                ? "The first word of \"Table/Sheet\" (sheet) says how the table is looked for: ID, "
                  "CLASS or TEXT. What is looked for stands behind it, and nothing does."
            : !isKnownKind
                ? "The first word of \"Table/Sheet\" (sheet) says how the table is looked "
                  "for: ID, CLASS or TEXT, in capitals. " +
                      causeBy("TEXT", "text", found)
            : selector_.kind == "ID"    ? causeBy("ID", "id", found)
            : selector_.kind == "CLASS" ? causeBy("CLASS", "class", found)
                                        : causeBy("TEXT", "text", found);
        ladder_.fail(Stage::Selection, seen(), cause,
                     "Set \"Table/Sheet\" (sheet) to one of these, or leave it empty for the first "
                     "table.");
        proposeSelectors();
    }

    std::vector<std::string> namesBy(const std::string& kind) const {
        return kind == "ID"      ? tables_.valuesAround("id")
               : kind == "CLASS" ? tables_.valuesAround("class")
                                 : tables_.headings();
    }

    std::string causeBy(const std::string& kind, const char* thing, const FoundTable& found) const {
        const std::vector<std::string> there = namesBy(kind);
        const std::string list =
            there.empty() ? std::string(" No table stands in anything that has one.")
            : kind == "TEXT"
                ? " The whole text must be the same. Headings that are there: " + listOf(there) +
                      "."
                : std::string(" Of tables and what they stand in there are: ") + listOf(there) +
                      ".";
        if (found.element != nullptr)
            return std::string("What has the ") + thing + " " + quoted(selector_.text) +
                   " holds no table." + list;
        return std::string("Nothing on the page has the ") + thing + " " + quoted(selector_.text) +
               "." + list;
    }

    void proposeSelectors() {
        const std::string text = selector_.text.empty() ? selector_.kind : selector_.text;
        std::vector<std::string> selectors;
        std::array<std::string, 3> kinds{"ID", "CLASS", "TEXT"};
        std::stable_partition(kinds.begin(), kinds.end(),
                              [this](const std::string& kind) { return kind == selector_.kind; });
        for (const std::string& kind : kinds) {
            const std::vector<std::string> there = namesBy(kind);
            const std::string near = nearName(text, there);
            if (!near.empty()) selectors.push_back(kind + " " + near);
            for (const std::string& name : there) {
                const bool holds = !text.empty() && name.find(text) != std::string::npos;
                if (holds && name != near) selectors.push_back(kind + " " + name);
            }
        }
        for (const auto* table : tables_.all()) {
            if (selectors.size() >= mostProposals) break;
            selectors.push_back(tables_.selectorFor(*table));
        }
        selectors.resize(std::min(selectors.size(), mostProposals));
        for (const std::string& selector : selectors) {
            const std::string meant = tables_.selectorMeantBy(selector);
            if (!meant.empty() || selector.empty())
                ladder_.propose(Stage::Selection, {{"sheet", meant}});
        }
    }

    static std::string cellText(const TableRows& rows, std::size_t row, std::size_t cell) {
        std::string text;
        rows.appendCellText(row, cell, text);
        return text;
    }

    void takeNames(const TableRows& rows) {
        for (std::size_t cell = 0; cell < rows.cellCount(0); ++cell)
            names_.push_back(cellText(rows, 0, cell));
    }

    template <class Visit>
    void forEachRow(const TableRows& rows, Visit visit) const {
        const RowRange range = rowRangeOf(settings_);
        for (std::size_t row = 0; row < rows.rowCount(); ++row) {
            if (range.contains(row)) visit(row);
        }
    }

    std::size_t recordsIn(const TableRows& rows) const {
        std::size_t count = 0;
        forEachRow(rows, [&](std::size_t) { ++count; });
        return count;
    }

    /// The plugin asks for a key in every form but a DataArray.
    void checkKey(const TableRows& rows) {
        if (settings_.mode == TargetMode::DataArray)
            return ladder_.ok(Stage::Key, "none is needed");
        if (*ladder_.records == 0) return;
        const auto column = std::find(names_.begin(), names_.end(), settings_.key);
        if (column == names_.end()) return tellKeyMissing(rows);
        const bool makesEntries =
            settings_.mode == TargetMode::DataTable || settings_.mode == TargetMode::DataStructure;
        if (!makesEntries) return ladder_.ok(Stage::Key, settings_.key);
        const KeyTally tally = tallyOf(rows, static_cast<std::size_t>(column - names_.begin()));
        ladder_.records = tally.entries();
        tally.tell(ladder_);
        if (ladder_.at(Stage::Key).state == State::Warning) proposeKeys(rows);
    }

    KeyTally tallyOf(const TableRows& rows, std::size_t column) const {
        KeyTally tally(names_[column], "column");
        forEachRow(rows, [&](std::size_t row) {
            const bool isThere = column < rows.cellCount(row);
            tally.add(isThere ? cellText(rows, row, column) : std::string());
        });
        return tally;
    }

    void tellKeyMissing(const TableRows& rows) {
        ladder_.records = 0;
        ladder_.fail(Stage::Key, settings_.key,
                     "The first row of the table has no cell " + quoted(settings_.key) +
                         ". It has: " + listOf(names_) + ".",
                     "Set \"Key\" (key) to one of these.");
        const std::string near = nearName(settings_.key, names_);
        if (!near.empty()) ladder_.propose(Stage::Key, {{"key", near}});
        proposeKeys(rows);
    }

    void proposeKeys(const TableRows& rows) {
        std::size_t proposed = 0;
        for (std::size_t column = 0; column < names_.size(); ++column) {
            const bool isUnique = tallyOf(rows, column).entries() == recordsIn(rows);
            if (isUnique && !names_[column].empty() && proposed++ < mostProposals)
                ladder_.propose(Stage::Key, {{"key", names_[column]}});
        }
        ladder_.propose(Stage::Key, {{"mode", "DataArray"}});
    }

    void checkScript(const TableRows& rows) {
        if (settings_.mode == TargetMode::SharedMemory) return ladder_.ok(Stage::Script, "");
        ScriptCheck check(settings_);
        const bool isArray = settings_.mode == TargetMode::FieldArray;
        const auto key = std::find(names_.begin(), names_.end(), settings_.key);
        const auto keyColumn = static_cast<std::size_t>(key - names_.begin());
        if (!isArray) check.record({names_.begin(), names_.end()});
        forEachRow(rows, [&](std::size_t row) {
            const std::size_t cells = std::min(names_.size(), rows.cellCount(row));
            for (std::size_t cell = 0; cell < cells; ++cell) {
                if (isArray && cell != keyColumn) continue;
                if (!isArray) check.name(names_[cell]);
                check.value(names_[cell], cellText(rows, row, cell));
            }
            const bool isKeyed = settings_.mode == TargetMode::DataTable ||
                                 settings_.mode == TargetMode::DataStructure;
            if (isKeyed && keyColumn < cells) check.key(cellText(rows, row, keyColumn));
        });
        check.tell(ladder_);
    }

    const Settings& settings_;
    const HtmlSelector selector_;
    PageTables tables_;
    Ladder& ladder_;
    std::vector<std::string> names_;
};

}  // namespace

void lookAtHtml(const Settings& settings, const Fetched& source, Ladder& ladder) {
    try {
        const intake::EndMark never;
        const std::string text =
            intake::html::decodePage(source.body, intake::charsetOf(source.contentType));
        const std::string title = titleOf(text);
        const auto page = intake::html::parsePage(text, never);
        ladder.ok(Stage::Format,
                  title.empty() ? "an HTML page" : "an HTML page titled " + quoted(title));
        HtmlLook(settings, *page, ladder).look();
    } catch (const intake::html::PageError& fault) {
        ladder.fail(Stage::Format, "an HTML page", std::string(fault.what()) + ".");
    }
}

}  // namespace probe
