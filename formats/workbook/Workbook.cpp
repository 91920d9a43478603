#include "formats/workbook/Workbook.h"

#include <algorithm>

#include "formats/workbook/SheetReader.h"
#include "formats/workbook/read_part.h"

namespace intake {

namespace {

// Room that is not used costs nothing; room that has to be made again costs as much as reading.
constexpr size_t BYTES_PER_CELL = 25;
constexpr size_t BYTES_PER_TEXT_BYTE = 2;

/// The size that a part claims to unpack to, unless that is hard to believe.
size_t likelySize(const ZipEntry& part) {
    constexpr uint64_t USUAL_RATIO = 20;
    return static_cast<size_t>(std::min(part.size, part.packedSize * USUAL_RATIO));
}

/// Runs a step that reads a part; what is wrong with it is thrown with the part's name before it.
template <class Step>
void named(const char* what, const std::string& name, Step step) {
    const auto fail = [&](const std::exception& fault) {
        throw WorkbookFault(what + (" \"" + name + "\" ") + fault.what());
    };
    try {
        step();
    } catch (const WorkbookFault& fault) {
        fail(fault);
    } catch (const XmlFault& fault) {
        fail(fault);
    }
}

}  // namespace

Workbook::Workbook(const ByteSource& file, const EndMark& endMark)
    : endMark_(endMark), archive_(file) {
    readIndex();
}

void Workbook::readSmallPart(const std::string& part, XmlEvents& events) {
    const ZipEntry* const entry = archive_.find(part);
    if (entry == nullptr) {
        throw WorkbookFault("its part \"" + part + "\" is missing");
    }
    named("its part", part, [&] {
        ZipPart bytes(archive_, *entry);
        saxParse(bytes, events, endMark_);
    });
}

void Workbook::readIndex() {
    const std::string start = Relationships::partFor("");
    if (archive_.find(start) == nullptr) {
        throw WorkbookFault(archive_.find("content.xml") != nullptr
                                ? "it is an OpenDocument file; save it as .xlsx"
                                : "it is a zip file, but no workbook of the form .xlsx or .xlsm");
    }
    Relationships package("");
    readSmallPart(start, package);
    const auto* const document = package.byType("officeDocument");
    if (document == nullptr) {
        throw WorkbookFault("it is a package, but no workbook");
    }
    if (document->part.ends_with(".bin")) {
        throw WorkbookFault("it is of the binary form .xlsb; save it as .xlsx");
    }
    readSmallPart(document->part, index_);
    if (!index_.isWorkbook()) {
        throw WorkbookFault("it is a document of another kind, no workbook");
    }
    parts_ = Relationships(document->part);
    readSmallPart(Relationships::partFor(document->part), parts_);
}

const Sheet& Workbook::sheet(size_t number) {
    std::unique_ptr<Sheet>& sheet = sheets_[number];
    if (sheet == nullptr) {
        readStyles();
        auto read = std::make_unique<Sheet>(sharedTexts());
        readSheet(number, *read);
        sheet = std::move(read);
    }
    return *sheet;
}

void Workbook::readSheet(size_t number, Sheet& sheet) {
    const SheetEntry& entry = index_.sheets()[number];
    const auto* const target = parts_.byId(entry.relationship);
    const ZipEntry* const part = target == nullptr ? nullptr : archive_.find(target->part);
    if (part == nullptr) {
        throw WorkbookFault("the part of the sheet \"" + entry.name + "\" is missing");
    }
    SheetReader reader(*styles_, index_.countsFrom1904(), likelySize(*part) / BYTES_PER_CELL,
                       sheet);
    named("the sheet", entry.name, [&] {
        if (!reader.read(archive_, *part, endMark_)) {
            throw WorkbookFault("holds no cells; it is a chart or macro sheet");
        }
    });
}

void Workbook::readStyles() {
    if (styles_ != nullptr) {
        return;
    }
    auto styles = std::make_unique<CellStyles>();
    if (const auto* const target = parts_.byType("styles")) {
        readSmallPart(target->part, *styles);
    }
    styles_ = std::move(styles);
}

void Workbook::readStrings(const ZipEntry& part, SharedStrings& strings) {
    named("its part", part.name,
          [&] { readLargePart(archive_, part, "</si>", strings, endMark_); });
}

const TextTable& Workbook::sharedTexts() {
    if (strings_ == nullptr) {
        const auto* const target = parts_.byType("sharedStrings");
        const ZipEntry* const part = target == nullptr ? nullptr : archive_.find(target->part);
        auto strings = std::make_unique<SharedStrings>(
            part == nullptr ? 0 : likelySize(*part) / BYTES_PER_TEXT_BYTE);
        if (part != nullptr) {
            readStrings(*part, *strings);
        }
        strings_ = std::move(strings);
    }
    return strings_->texts();
}

}  // namespace intake
