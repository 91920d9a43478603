// Any workbook is read or refused. The first line says what the rest is: "xml" a part's XML, of
// which the scanner, where it accepts it, must tell what the parser tells; "file" a whole workbook;
// anything else is a query over a workbook of the lines that follow: its shared strings, its
// styles, its names, and the rows of the sheet S.

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <vector>

#include "formats/xml/XmlScanner.h"
#include "formats/xml/sax_parse.h"
#include "platform/PlatformError.h"
#include "platform/linux/ProviderConnection.h"
#include "tests/formats/workbook/TestBook.h"
#include "tests/fuzz/FuzzInput.h"

namespace {

using namespace intake;

class TextStream final : public ByteStream {
public:
    explicit TextStream(std::string_view text) : text_(text) {}

    size_t read(char* out, size_t capacity) override {
        const size_t length = text_.copy(out, capacity);
        text_.remove_prefix(length);
        return length;
    }

private:
    std::string_view text_;
};

/// Writes down all that the readers of large parts are told, up to the end of an element sheetData.
class Recorder final : public XmlEvents {
public:
    void startDocument() override { told.clear(); }

    void startElement(std::string_view name, const XmlAttributes& attributes) override {
        open_.emplace_back(name);
        told.append("<").append(name);
        for (const XmlAttribute& each : attributes) {
            if (!each.name.starts_with(':')) {
                told.append(" ").append(each.name).append("=").append(each.value).append("\n");
            }
        }
        told.append(">");
    }

    bool endElement() override {
        const bool more = open_.back() != "sheetData";
        open_.pop_back();
        told.append("</>");
        return more;
    }

    void text(std::string_view text) override { told.append(text); }

    std::string told;

private:
    std::vector<std::string> open_;
};

/// Scans a document in the smallest chunks in which a part could be unpacked.
bool scan(std::string_view document, Recorder& recorder) {
    using Scanner = XmlScanner<Recorder>;
    constexpr std::string_view CUT = "</row>";
    Scanner scanner(recorder);
    while (!document.empty()) {
        const size_t cut = document.find(CUT);
        const size_t length = cut == std::string_view::npos ? document.size() : cut + CUT.size();
        const std::string chunk(document.substr(0, length));
        document.remove_prefix(length);
        const auto outcome = scanner.scan(chunk);
        if (outcome != Scanner::Outcome::SCANNED) {
            return outcome == Scanner::Outcome::ENOUGH;
        }
    }
    return scanner.isComplete();
}

void compareScannerAndParser(std::string_view document) {
    Recorder scanned;
    Recorder parsed;
    const bool accepted = scan(document, scanned);
    TextStream stream(document);
    bool wellFormed = true;
    try {
        const EndMark endMark;
        saxParse(stream, parsed, endMark);
    } catch (const XmlFault&) {
        wellFormed = false;
    }
    if (accepted && (!wellFormed || scanned.told != parsed.told)) {
        std::abort();
    }
}

void query(const std::string& bytes, const std::string& query) {
    const int file = memfd_create("book", 0);
    if (file < 0 || write(file, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
        std::abort();
    }
    const EndMark endMark;
    try {
        ProviderConnection connection(endMark);
        connection.open(
            "Provider=Microsoft.ACE.OLEDB.12.0;Extended Properties=Excel;Data "
            "Source=/proc/self/fd/" +
            std::to_string(file));
        const auto recordset = connection.openRecordset(query);
        FieldValue value;
        for (int row = 0; row < 1000 && !recordset->atEnd(); ++row, recordset->moveNext()) {
            for (size_t field = 0; field < recordset->fieldCount(); ++field) {
                recordset->value(field, value);
            }
        }
    } catch (const PlatformError&) {
        // refused
    }
    close(file);
}

/// What makes queries run for hours or take all memory without any workbook.
bool isExpensive(const std::string& query) {
    for (const char* const word : {"recursive", "RECURSIVE", "blob", "BLOB", "printf", "format"}) {
        if (query.find(word) != std::string::npos) {
            return true;
        }
    }
    return query.size() > 200;
}

std::string bookOf(FuzzInput& input) {
    TestBook book;
    book.strings(input.line()).styles(input.line()).names(input.line());
    return book.sheet("S", std::string(input.rest())).zip({.stored = true}).bytes();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzInput input(data, size);
    const std::string kind = input.line();
    if (kind == "xml") {
        compareScannerAndParser(input.rest());
    } else if (kind == "file") {
        query(std::string(input.rest()), "SELECT * FROM [S$]");
    } else if (!isExpensive(kind)) {
        query(bookOf(input), kind);
    }
    return 0;
}
