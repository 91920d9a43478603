#pragma once

#include <map>
#include <string>
#include <vector>

#include "formats/xml/ElementPath.h"
#include "formats/xml/XmlEvents.h"

namespace intake {

/// Reads from a workbook's styles which of them show numbers as dates.
class CellStyles final : public XmlEvents {
public:
    CellStyles();

    bool isDate(size_t style) const { return style < dates_.size() && dates_[style]; }

    void startDocument() override;
    void startElement(std::string_view name, const XmlAttributes& attributes) override;
    bool endElement() override;
    void text(std::string_view) override {}

private:
    ElementPath path_;
    std::map<size_t, bool> customFormats_;  // whether each is a date
    std::vector<bool> dates_;               // by style
};

}  // namespace intake
