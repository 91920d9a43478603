#include "formats/workbook/foreign_file.h"

#include <string>

namespace intake {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view COMPOUND_FILE = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv;
constexpr std::string_view LOCAL_HEADER = "PK\x03\x04"sv;
constexpr std::string_view EMPTY_ARCHIVE = "PK\x05\x06"sv;

/// Whether a compound file's directory names such a stream: its names are in UTF-16.
bool hasStream(std::string_view file, std::string_view name) {
    std::string wide;
    for (const char character : name) {
        wide.append({character, '\0'});
    }
    return file.find(wide) != std::string_view::npos;
}

}  // namespace

const char* foreignFileReason(std::string_view start) {
    if (start.starts_with(COMPOUND_FILE)) {
        if (hasStream(start, "EncryptedPackage")) {
            return "it is encrypted; save it without a password";
        }
        if (hasStream(start, "Workbook") || hasStream(start, "Book")) {
            return "it is of the old binary form (.xls); save it as .xlsx";
        }
        return "it is encrypted, or of the old binary form (.xls); save it as .xlsx without a "
               "password";
    }
    if (start.empty()) {
        return "the file is empty";
    }
    if (!start.starts_with(LOCAL_HEADER) && !start.starts_with(EMPTY_ARCHIVE)) {
        return "it is no workbook of the form .xlsx or .xlsm";
    }
    return nullptr;
}

}  // namespace intake
