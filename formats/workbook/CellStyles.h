#pragma once

#include <map>
#include <string>
#include <vector>

#include "formats/workbook/number_format.h"
#include "formats/xml/ElementPath.h"
#include "formats/xml/XmlEvents.h"

namespace intake {

/// Reads from a workbook's styles which of them show numbers as dates.
class CellStyles final : public XmlEvents {
public:
    CellStyles();

    bool isDate(size_t style) const { return formatOf(style) != DateFormat::NONE; }

    /// Whether it shows a day, which counts from the workbook's first, and not only a time.
    bool hasDay(size_t style) const { return formatOf(style) == DateFormat::DAY; }

    void startDocument() override;
    void startElement(std::string_view name, const XmlAttributes& attributes) override;
    bool endElement() override;
    void text(std::string_view) override {}

private:
    DateFormat formatOf(size_t style) const {
        return style < dates_.size() ? dates_[style] : DateFormat::NONE;
    }

    ElementPath path_;
    std::map<size_t, DateFormat> customFormats_;
    std::vector<DateFormat> dates_;  // by style
};

}  // namespace intake
