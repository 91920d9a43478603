#pragma once

#include <map>
#include <memory>
#include <string>

#include "formats/source/EndMark.h"
#include "formats/workbook/CellStyles.h"
#include "formats/workbook/Relationships.h"
#include "formats/workbook/SharedStrings.h"
#include "formats/workbook/Sheet.h"
#include "formats/workbook/WorkbookIndex.h"
#include "formats/workbook/ZipArchive.h"

namespace intake {

/// A workbook. A sheet is read when it is first asked for, and kept. Belongs to one thread. What is
/// wrong with the file throws WorkbookFault.
class Workbook {
public:
    /// Both outlive this object. Once `endMark` is set, reading throws GivenUp.
    Workbook(const ByteSource& file, const EndMark& endMark);

    const WorkbookIndex& index() const { return index_; }

    /// The cells of a sheet by its place in the workbook. Lives as long as this object.
    const Sheet& sheet(size_t number);

private:
    void readIndex();
    void readSheet(size_t number, Sheet& sheet);
    void readStyles();
    void readStrings(const ZipEntry& part, SharedStrings& strings);
    const TextTable& sharedTexts();
    void readSmallPart(const std::string& part, XmlEvents& events);

    const EndMark& endMark_;
    const ZipArchive archive_;
    Relationships parts_{""};
    WorkbookIndex index_;
    std::unique_ptr<CellStyles> styles_;
    std::unique_ptr<SharedStrings> strings_;
    std::map<size_t, std::unique_ptr<Sheet>> sheets_;
};

}  // namespace intake
