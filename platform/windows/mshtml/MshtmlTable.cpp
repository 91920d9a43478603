#include "platform/windows/mshtml/MshtmlTable.h"

#include "platform/windows/base/wide_text.h"
#include "platform/windows/com/BasicString.h"

namespace intake {

const ElementList& MshtmlTable::cells(size_t row) {
    if (!cells_ || row_ != row) {
        cells_.reset();
        ComPointer<IHTMLElementCollection> cells;
        checkCom(rows_.at<IHTMLTableRow>(row, IID_HTML_TABLE_ROW)->get_cells(cells.out()));
        cells_.emplace(std::move(cells));
        row_ = row;
    }
    return *cells_;
}

void MshtmlTable::appendCellText(size_t row, size_t cell, std::string& out) {
    append(row, cell, CP_UTF8, out);
}

void MshtmlTable::appendCellKey(size_t row, size_t cell, std::string& out) {
    append(row, cell, CP_ACP, out);
}

void MshtmlTable::append(size_t row, size_t cell, unsigned codePage, std::string& out) {
    BasicString text;
    checkCom(cells(row).at<IHTMLElement>(cell, IID_HTML_ELEMENT)->get_innerText(text.out()));
    appendNarrow(text.view(), codePage, out);
}

}  // namespace intake
