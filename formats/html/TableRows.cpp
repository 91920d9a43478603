#include "formats/html/TableRows.h"

#include "formats/html/characters.h"
#include "formats/html/inner_text.h"

namespace intake::html {

namespace {

constexpr std::string_view NO_BREAK_SPACE = "\xC2\xA0";

/// Takes white space from both ends of what stands from `start` on; a lone no-break space is how
/// pages write an empty cell.
void trimFrom(std::string& text, size_t start) {
    std::string_view rest = std::string_view(text).substr(start);
    const size_t whole = rest.size();
    while (!rest.empty() && (isSpace(rest.back()) || rest.ends_with(NO_BREAK_SPACE))) {
        rest.remove_suffix(isSpace(rest.back()) ? 1 : NO_BREAK_SPACE.size());
    }
    const size_t end = rest.size();
    while (!rest.empty() && (isSpace(rest.front()) || rest.starts_with(NO_BREAK_SPACE))) {
        rest.remove_prefix(isSpace(rest.front()) ? 1 : NO_BREAK_SPACE.size());
    }
    if (rest.size() != whole) {
        const size_t leading = end - rest.size();
        text.resize(start + end);
        text.erase(start, leading);
    }
}

}  // namespace

TableRows::TableRows(const Node& table) {
    addRowsOf(table, Tag::THEAD);
    addRowsOf(table, Tag::TBODY);
    addRowsOf(table, Tag::TFOOT);
}

/// Every row is in a section: the parser makes one where a page has none.
void TableRows::addRowsOf(const Node& table, Tag section) {
    for (const Node* child = table.firstChild; child != nullptr; child = child->next) {
        const Node* row = child->isHtml(section) ? child->firstChild : nullptr;
        for (; row != nullptr; row = row->next) {
            if (row->isHtml(Tag::TR)) {
                addRow(*row);
            }
        }
    }
}

void TableRows::addRow(const Node& row) {
    rows_.push_back(cells_.size());
    for (const Node* cell = row.firstChild; cell != nullptr; cell = cell->next) {
        if (cell->isHtml(Tag::TD) || cell->isHtml(Tag::TH)) {
            cells_.push_back(cell);
        }
    }
}

size_t TableRows::cellCount(size_t row) const {
    const size_t end = row + 1 < rows_.size() ? rows_[row + 1] : cells_.size();
    return end - rows_[row];
}

void TableRows::appendCellText(size_t row, size_t cell, std::string& out) const {
    const size_t start = out.size();
    appendInnerText(*cells_[rows_[row] + cell], out);
    trimFrom(out, start);
}

}  // namespace intake::html
