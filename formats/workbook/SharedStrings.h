#pragma once

#include <string>

#include "formats/workbook/TextTable.h"
#include "formats/xml/ElementPath.h"
#include "formats/xml/XmlEvents.h"

namespace intake {

/// Reads the texts that a workbook's cells share: of rich text the text alone, without the phonetic
/// runs beside it.
class SharedStrings final : public XmlEvents {
public:
    /// `expectedBytes`: room for so many bytes of text is made at once.
    explicit SharedStrings(size_t expectedBytes);

    const TextTable& texts() const { return texts_; }

    void startDocument() override;
    void startElement(std::string_view name, const XmlAttributes& attributes) override;
    bool endElement() override;
    void text(std::string_view text) override;

private:
    ElementPath path_;
    const size_t expectedBytes_;
    std::string text_;  // of the string that is being read
    TextTable texts_;
};

}  // namespace intake
