#pragma once

#include <optional>

#include "platform/HtmlDocument.h"
#include "platform/windows/mshtml/ElementList.h"

namespace intake {

/// The rows of a TABLE element of MSHTML. They are read one after the other: the cells of the row
/// that was asked for last are kept.
class MshtmlTable final : public HtmlTable {
public:
    explicit MshtmlTable(ElementList rows) : rows_(std::move(rows)) {}

    size_t rowCount() override { return rows_.size(); }
    size_t cellCount(size_t row) override { return cells(row).size(); }
    void appendCellText(size_t row, size_t cell, std::string& out) override;
    void appendCellKey(size_t row, size_t cell, std::string& out) override;

private:
    const ElementList& cells(size_t row);
    void append(size_t row, size_t cell, unsigned codePage, std::string& out);

    const ElementList rows_;
    std::optional<ElementList> cells_;
    size_t row_ = 0;  // whose they are
};

}  // namespace intake
