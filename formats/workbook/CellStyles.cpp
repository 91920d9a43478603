#include "formats/workbook/CellStyles.h"

#include "formats/workbook/cell_text.h"
#include "formats/workbook/number_format.h"

namespace intake {

namespace {

enum State : ElementPath::State { OUTSIDE, STYLES, FORMATS, FORMAT, CELL_STYLES, CELL_STYLE };

constexpr std::array<ElementPath::Step, 5> STEPS{{
    {OUTSIDE, "styleSheet", STYLES},
    {STYLES, "numFmts", FORMATS},
    {FORMATS, "numFmt", FORMAT},
    {STYLES, "cellXfs", CELL_STYLES},
    {CELL_STYLES, "xf", CELL_STYLE},
}};

}  // namespace

CellStyles::CellStyles() : path_(STEPS) {}

void CellStyles::startDocument() {
    path_.restart();
    customFormats_.clear();
    dates_.clear();
}

void CellStyles::startElement(std::string_view name, const XmlAttributes& attributes) {
    const auto state = path_.enter(name);
    if (state != FORMAT && state != CELL_STYLE) {
        return;
    }
    const size_t format = parseIndex(attributes.value("numFmtId")).value_or(0);
    if (state == FORMAT) {
        customFormats_[format] = dateFormatOf(attributes.value("formatCode"));
        return;
    }
    const auto custom = customFormats_.find(format);
    dates_.push_back(custom == customFormats_.end() ? builtInDateFormat(format) : custom->second);
}

bool CellStyles::endElement() {
    path_.leave();
    return true;
}

}  // namespace intake
