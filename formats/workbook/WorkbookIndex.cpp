#include "formats/workbook/WorkbookIndex.h"

#include "formats/workbook/cell_text.h"

namespace intake {

namespace {

enum State : ElementPath::State { OUTSIDE, WORKBOOK, PROPERTIES, SHEETS, SHEET, NAMES, NAME };

constexpr std::array<ElementPath::Step, 6> STEPS{{
    {OUTSIDE, "workbook", WORKBOOK},
    {WORKBOOK, "workbookPr", PROPERTIES},
    {WORKBOOK, "sheets", SHEETS},
    {SHEETS, "sheet", SHEET},
    {WORKBOOK, "definedNames", NAMES},
    {NAMES, "definedName", NAME},
}};

}  // namespace

WorkbookIndex::WorkbookIndex() : path_(STEPS) {}

void WorkbookIndex::startDocument() {
    path_.restart();
    workbook_ = from1904_ = false;
    sheets_.clear();
    names_.clear();
}

void WorkbookIndex::startElement(std::string_view name, const XmlAttributes& attributes) {
    const auto state = path_.enter(name);
    if (state == WORKBOOK) {
        workbook_ = true;
    } else if (state == PROPERTIES) {
        const std::string_view from1904 = attributes.value("date1904");
        from1904_ = from1904 == "1" || from1904 == "true";
    } else if (state == SHEET) {
        const std::string_view shown = attributes.value("state");
        sheets_.push_back({std::string(attributes.value("name")),
                           std::string(attributes.value(":id")),
                           shown == "hidden" || shown == "veryHidden"});
    } else if (state == NAME) {
        names_.push_back({std::string(attributes.value("name")), "",
                          parseIndex(attributes.value("localSheetId"))});
    }
}

bool WorkbookIndex::endElement() {
    path_.leave();
    return true;
}

void WorkbookIndex::text(std::string_view text) {
    if (path_.state() == NAME) {
        names_.back().reference.append(text);
    }
}

}  // namespace intake
