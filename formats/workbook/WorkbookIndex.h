#pragma once

#include <optional>
#include <string>
#include <vector>

#include "formats/xml/ElementPath.h"
#include "formats/xml/XmlEvents.h"

namespace intake {

/// A sheet as the workbook lists it.
struct SheetEntry {
    std::string name;
    std::string relationship;  // leads to its part
    bool isHidden = false;     // from whoever opens the workbook
};

/// A name that the workbook gives to cells.
struct DefinedName {
    std::string name;
    std::string reference;        // such as Sheet1!$A$1:$D$20
    std::optional<size_t> sheet;  // of which alone it is known
};

/// Reads a workbook's main part: its sheets in their order, its names and its date system.
class WorkbookIndex final : public XmlEvents {
public:
    WorkbookIndex();

    bool isWorkbook() const { return workbook_; }
    bool countsFrom1904() const { return from1904_; }
    const std::vector<SheetEntry>& sheets() const { return sheets_; }
    const std::vector<DefinedName>& names() const { return names_; }

    void startDocument() override;
    void startElement(std::string_view name, const XmlAttributes& attributes) override;
    bool endElement() override;
    void text(std::string_view text) override;

private:
    ElementPath path_;
    bool workbook_ = false;
    bool from1904_ = false;
    std::vector<SheetEntry> sheets_;
    std::vector<DefinedName> names_;
};

}  // namespace intake
