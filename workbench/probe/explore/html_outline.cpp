#include "workbench/probe/explore/html_outline.h"

#include <algorithm>
#include <set>

#include "formats/html/PageError.h"
#include "formats/html/TableRows.h"
#include "formats/html/page_encoding.h"
#include "formats/text/media_type.h"
#include "workbench/probe/LookFailure.h"
#include "workbench/probe/PageTables.h"
#include "workbench/probe/explore/PathTree.h"
#include "workbench/probe/explore/Wanted.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

using intake::html::Node;
using intake::html::Page;
using intake::html::TableRows;

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

/// The selector, and to begin behind the row of names where there are others.
Proposal settingsFor(const std::string& selector, const TableRows& rows) {
    Proposal settings{{"sheet", selector}};
    if (rows.rowCount() > 1) settings.emplace_back("fromRow", "1");
    return settings;
}

std::string tableText(const std::string& heading, const TableRows& rows) {
    const std::size_t columns = rows.rowCount() == 0 ? 0 : rows.cellCount(0);
    return "table" + (heading.empty() ? "" : " " + quoted(heading)) + ", " +
           counted(rows.rowCount(), "row") + ", " + counted(columns, "column");
}

class HtmlOutline {
public:
    HtmlOutline(const Page& page, const OutlineWish& wish) : tables_(page), wish_(wish) {}

    Outline tables() {
        const Wanted wanted(wish_.find);
        for (const Node* table : tables_.all()) {
            if (outline_.entries.size() == wish_.most) {
                ++outline_.leftOut;  // finding how each is selected would take long
                continue;
            }
            const TableRows rows(*table);
            const bool isFound = wanted.isNone() || holds(rows, wanted);
            if (isFound) add(entryFor(*table, rows, tables_.selectorFor(*table)));
        }
        return std::move(outline_);
    }

    Outline columns() {
        const FoundTable found = tables_.find(htmlSelector(wish_.place));
        if (found.table == nullptr) throw LookFailure("has no table at " + quoted(wish_.place));
        const TableRows rows(*found.table);
        const std::size_t columns = rows.rowCount() == 0 ? 0 : rows.cellCount(0);
        const bool canBeSelected = tables_.canFind(wish_.place);
        std::set<std::string> names;
        for (std::size_t column = 0; column < columns; ++column) {
            const std::string name = cellText(rows, 0, column);
            const std::size_t records = rows.rowCount() - (rows.rowCount() > 1 ? 1 : 0);
            OutlineEntry entry{0,  name, "column", records, startOf(cellText(rows, 1, column)),
                               "", {}};
            // A key is looked up by name, and found in the first column that has it.
            if (canBeSelected && !name.empty() && names.insert(name).second) {
                entry.settings = settingsFor(wish_.place, rows);
                entry.settings.emplace_back("key", name);
                entry.settings.emplace_back("mode", "Data Field Array");
            }
            add(std::move(entry));
        }
        return std::move(outline_);
    }

private:
    OutlineEntry entryFor(const Node& table, const TableRows& rows, const std::string& selector) {
        const bool isFirst = &table == tables_.all().front();
        const std::size_t records = rows.rowCount() > 1 ? rows.rowCount() - 1 : rows.rowCount();
        const std::string name =
            selector.empty() ? (isFirst ? "the first table" : "a table") : selector;
        OutlineEntry entry{
            0,        name, tableText(tables_.headingOf(table), rows), records, rowText(rows, 0),
            selector, {}};
        if (!selector.empty() || isFirst) entry.settings = settingsFor(selector, rows);
        return entry;
    }

    void add(OutlineEntry entry) {
        if (outline_.entries.size() == wish_.most) {
            ++outline_.leftOut;
        } else {
            outline_.entries.push_back(std::move(entry));
        }
    }

    PageTables tables_;
    const OutlineWish& wish_;
    Outline outline_;
};

}  // namespace

Outline htmlOutline(const Fetched& source, const OutlineWish& wish) {
    try {
        const intake::EndMark never;
        const auto page = intake::html::parsePage(
            intake::html::decodePage(source.body, intake::charsetOf(source.contentType)), never);
        HtmlOutline outline(*page, wish);
        return wish.place.empty() ? outline.tables() : outline.columns();
    } catch (const intake::html::PageError& fault) {
        throw LookFailure("is a page that is not read: " + std::string(fault.what()));
    }
}

}  // namespace probe
