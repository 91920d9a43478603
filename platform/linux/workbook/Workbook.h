#pragma once

#include <map>
#include <memory>
#include <string>

#include "platform/EndMark.h"
#include "platform/linux/workbook/CellStyles.h"
#include "platform/linux/workbook/Relationships.h"
#include "platform/linux/workbook/SharedStrings.h"
#include "platform/linux/workbook/Sheet.h"
#include "platform/linux/workbook/WorkbookIndex.h"
#include "platform/linux/workbook/ZipArchive.h"

namespace intake {

/// A workbook's file. A sheet is read when it is first asked for, and kept. Belongs to one thread.
/// What is wrong with the file throws WorkbookFault.
class Workbook {
public:
    /// `endMark` outlives this object; once it is set, reading throws PlatformError.
    Workbook(const std::string& path, const EndMark& endMark);

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
