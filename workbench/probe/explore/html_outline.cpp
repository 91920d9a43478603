#include "workbench/probe/explore/html_outline.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <set>

#include "formats/html/PageError.h"
#include "formats/html/TableRows.h"
#include "formats/html/inner_text.h"
#include "formats/html/page_encoding.h"
#include "formats/text/media_type.h"
#include "formats/text/trim.h"
#include "workbench/probe/LookFailure.h"
#include "workbench/probe/PageTables.h"
#include "workbench/probe/explore/OutlinePage.h"
#include "workbench/probe/explore/PathTree.h"
#include "workbench/probe/explore/Wanted.h"
#include "workbench/probe/explore/preview_cell.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

using intake::html::Node;
using intake::html::Page;
using intake::html::TableRows;
using intake::html::Tag;

std::string textOf(const Node& element) {
    std::string text;
    intake::html::appendInnerText(element, text);
    return std::string(intake::trimmed(text, " \t\r\n"));
}

std::string cellText(const TableRows& rows, std::size_t row, std::size_t cell) {
    std::string text;
    if (row < rows.rowCount() && cell < rows.cellCount(row)) rows.appendCellText(row, cell, text);
    return text;
}

std::string rowText(const TableRows& rows, std::size_t row) {
    std::string text;
    const std::size_t cells = row < rows.rowCount() ? rows.cellCount(row) : 0;
    for (std::size_t cell = 0; cell < cells; ++cell)
        text += (cell == 0 ? "" : " | ") + cellText(rows, row, cell);
    return startOf(text);
}

bool holds(const TableRows& rows, const Wanted& wanted) {
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        for (std::size_t cell = 0; cell < rows.cellCount(row); ++cell) {
            if (wanted.isIn(cellText(rows, row, cell))) return true;
        }
    }
    return false;
}

/// How many columns its first row has.
std::size_t columnCount(const TableRows& rows) {
    return rows.rowCount() == 0 ? 0 : rows.cellCount(0);
}

/// Where its records begin: the first of several rows has names.
std::size_t firstRecord(const TableRows& rows) {
    return rows.rowCount() > 1 ? 1 : 0;
}

/// The selector, and to begin behind the row of names where there are others.
Proposal settingsFor(const std::string& selector, const TableRows& rows) {
    Proposal settings{{"sheet", selector}};
    if (firstRecord(rows) > 0) settings.emplace_back("fromRow", "1");
    return settings;
}

std::string tableText(const std::string& heading, const TableRows& rows) {
    return "table" + (heading.empty() ? "" : " " + quoted(heading)) + ", " +
           counted(rows.rowCount(), "row") + ", " + counted(columnCount(rows), "column");
}

/// The first records, without any column yet.
Preview emptyPreview(const TableRows& rows) {
    Preview preview;
    const std::size_t records = rows.rowCount() - firstRecord(rows);
    preview.rows.resize(std::min(records, mostPreviewed));
    preview.leftOut = records - preview.rows.size();
    return preview;
}

void addColumn(const TableRows& rows, std::size_t column, Preview& preview) {
    const std::size_t first = firstRecord(rows);
    preview.columns.push_back(first > 0 ? cellText(rows, 0, column) : "");
    for (std::size_t i = 0; i < preview.rows.size(); ++i)
        preview.rows[i].push_back(previewCell(cellText(rows, first + i, column)));
}

/// How deep the tables and headings of a page stand below its headings. They are asked in order.
class Depths {
public:
    std::size_t of(const Node& landmark) {
        if (!landmark.isHtml(Tag::TABLE)) return ofHeading(levelOf(landmark));
        std::size_t depth = levels_.size();
        for (const Node* node = landmark.parent; node != nullptr; node = node->parent)
            depth += node->isHtml(Tag::TABLE) ? 1 : 0;
        return depth;
    }

private:
    /// "h2" is of level 2.
    static int levelOf(const Node& heading) { return heading.text.back() - '0'; }

    std::size_t ofHeading(int level) {
        while (!levels_.empty() && levels_.back() >= level)
            levels_.pop_back();
        levels_.push_back(level);
        return levels_.size() - 1;
    }

    std::vector<int> levels_;  // of the headings above
};

class HtmlOutline {
public:
    HtmlOutline(const Page& page, const OutlineWish& wish)
        : tables_(page), wish_(wish), wanted_(wish.find), page_(wish) {}

    /// The tables in the order of the page, in a whole outline with the headings.
    Outline landmarks() {
        Depths depths;
        for (const Node* landmark : tables_.landmarks()) {
            const std::size_t depth = wish_.isWhole ? depths.of(*landmark) : 0;
            if (landmark->isHtml(Tag::TABLE)) {
                addTable(*landmark, depth);
            } else if (wish_.isWhole) {
                addHeading(*landmark, depth);
            }
            if (!wanted_.isNone() && page_.isPassed()) return page_.takeUncounted();
        }
        return page_.take();
    }

    Outline columns() {
        const TableRows rows(tableAt(wish_.place));
        Preview preview = emptyPreview(rows);
        std::set<std::string> names;
        for (std::size_t column = 0; column < columnCount(rows); ++column) {
            const std::string name = cellText(rows, 0, column);
            // A key is looked up by name, and found in the first column that has it.
            const bool isKey = !name.empty() && names.insert(name).second;
            if (page_.wantsNext() && wish_.isWhole) addColumn(rows, column, preview);
            page_.add(columnEntry(rows, column, isKey));
        }
        Outline outline = page_.take();
        if (wish_.isWhole) outline.preview = std::move(preview);
        return outline;
    }

private:
    /// What is found stands apart from what it stands in.
    std::size_t shownDepth(std::size_t depth) const { return wanted_.isNone() ? depth : 0; }

    void addHeading(const Node& heading, std::size_t depth) {
        const std::string text = textOf(heading);
        if (!wanted_.isNone() && !wanted_.isIn(text)) return;
        OutlineEntry entry{shownDepth(depth), startOf(text), "heading", std::nullopt, "", "", {}};
        entry.type = EntryType::Heading;
        page_.add(std::move(entry));
    }

    void addTable(const Node& table, std::size_t depth) {
        const TableRows rows(table);
        const std::size_t number = ++tablesMet_;
        if (!wanted_.isNone() && !holds(rows, wanted_)) return;
        if (page_.wantsNext()) {
            page_.add(tableEntry(table, number, rows, shownDepth(depth)));
        } else {
            page_.pass(1);  // finding how each is selected would take long
        }
    }

    OutlineEntry tableEntry(const Node& table, std::size_t number, const TableRows& rows,
                            std::size_t depth) {
        OutlineEntry entry;
        entry.depth = depth;
        entry.kind = tableText(tables_.headingOf(table), rows);
        entry.records = rows.rowCount() - firstRecord(rows);
        entry.value = rowText(rows, 0);
        entry.type = EntryType::Table;
        entry.size = TableSize{rows.rowCount(), columnCount(rows)};
        entry.selectors = tables_.selectorsFor(table);
        const std::string selector = entry.selectors.empty() ? "" : entry.selectors.front();
        entry.name = !selector.empty() ? selector : number == 1 ? "the first table" : "a table";
        entry.place = !selector.empty() ? selector : "#" + std::to_string(number);
        if (!entry.selectors.empty()) entry.settings = settingsFor(selector, rows);
        return entry;
    }

    OutlineEntry columnEntry(const TableRows& rows, std::size_t column, bool isKey) const {
        OutlineEntry entry;
        entry.name = cellText(rows, 0, column);
        entry.kind = "column";
        entry.records = rows.rowCount() - firstRecord(rows);
        entry.value = startOf(cellText(rows, 1, column));
        entry.type = EntryType::Column;
        if (!isKey || !selector_) return entry;
        entry.key = entry.name;
        entry.settings = settingsFor(*selector_, rows);
        entry.settings.emplace_back("key", entry.key);
        entry.settings.emplace_back("mode", "Data Field Array");
        return entry;
    }

    /// The table at a place: its selector, or "#3" for the third one of the page. Notes the
    /// selector by which it is set.
    const Node& tableAt(const std::string& place) {
        const bool isNumber = place.starts_with('#');
        const Node* const table =
            isNumber ? numbered(place.substr(1)) : tables_.find(htmlSelector(place)).table;
        if (table == nullptr) throw LookFailure("has no table at " + quoted(place));
        if (!isNumber && tables_.canFind(place)) selector_ = place;
        const auto selectors = isNumber ? tables_.selectorsFor(*table) : std::vector<std::string>();
        if (!selectors.empty()) selector_ = selectors.front();
        return *table;
    }

    const Node* numbered(const std::string& text) const {
        std::size_t number = 0;
        const char* const end = text.data() + text.size();
        const bool isWhole = std::from_chars(text.data(), end, number).ptr == end;
        const bool isThere = isWhole && number > 0 && number <= tables_.all().size();
        return isThere ? tables_.all()[number - 1] : nullptr;
    }

    PageTables tables_;
    const OutlineWish& wish_;
    const Wanted wanted_;
    OutlinePage page_;
    std::size_t tablesMet_ = 0;
    std::optional<std::string> selector_;  // of the table whose columns are listed
};

}  // namespace

Outline htmlOutline(const Fetched& source, const OutlineWish& wish) {
    try {
        const intake::EndMark never;
        const auto page = intake::html::parsePage(
            intake::html::decodePage(source.body, intake::charsetOf(source.contentType)), never);
        HtmlOutline outline(*page, wish);
        return wish.place.empty() ? outline.landmarks() : outline.columns();
    } catch (const intake::html::PageError& fault) {
        throw LookFailure("is a page that is not read: " + std::string(fault.what()));
    }
}

}  // namespace probe
