#pragma once

#include <string>

#include "formats/source/EndMark.h"
#include "formats/workbook/CellStyles.h"
#include "formats/workbook/Sheet.h"
#include "formats/workbook/ZipArchive.h"
#include "formats/xml/ElementPath.h"
#include "formats/xml/XmlEvents.h"

namespace intake {

/// Reads the cells of a worksheet's part. What contradicts itself throws WorkbookFault.
class SheetReader final : public XmlEvents {
public:
    /// `styles` and `sheet`, which is filled, outlive this object. `from1904`: the workbook counts
    /// its days from 1904. `expectedCells`: room for so many is made at once.
    SheetReader(const CellStyles& styles, bool from1904, size_t expectedCells, Sheet& sheet);

    /// Reads the whole part. False: it is no worksheet's.
    bool read(const ZipArchive& archive, const ZipEntry& part, const EndMark& endMark);

    void startDocument() override;
    void startElement(std::string_view name, const XmlAttributes& attributes) override;
    bool endElement() override;
    void text(std::string_view text) override;

private:
    enum class Type : uint8_t { NUMBER, SHARED, TEXT, INLINE, BOOLEAN, ERROR, DATE };

    static Type typeNamed(std::string_view name);
    void startRow(const XmlAttributes& attributes);
    void startCell(const XmlAttributes& attributes);
    void chooseValue();
    void endCell();
    void addNumber();
    void addDate();
    void addSharedText();

    const CellStyles& styles_;
    const double dayOffset_;
    const size_t expectedCells_;
    Sheet& sheet_;
    ElementPath path_;
    bool worksheet_ = false;
    uint32_t row_ = 0;
    uint32_t column_ = 0;  // of the cell that is being read

    // The cell that is being read.
    Type type_ = Type::NUMBER;
    size_t style_ = 0;
    bool hasValue_ = false;
    bool hasInline_ = false;
    std::string value_;
    std::string inline_;  // the text that stands in the cell itself
};

}  // namespace intake
