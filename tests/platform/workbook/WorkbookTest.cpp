#include "tests/platform/workbook/WorkbookTest.h"

#include <array>
#include <charconv>

#include "platform/PlatformError.h"

namespace intake {

namespace {

std::string shown(double number) {
    std::array<char, 32> digits;
    return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr};
}

std::string shown(const FieldValue& value) {
    switch (value.type) {
        case VT_NULL:
            return "-";
        case VT_BSTR:
            return "'" + std::string(value.text) + "'";
        case VT_R8:
            return shown(value.number);
        case VT_DATE:
            return "date " + shown(value.number);
        case VT_BOOL:
            return value.integer != 0 ? "true" : "false";
        case VT_I8:
            return std::to_string(value.integer) + "i";
        default:
            return "type " + std::to_string(value.type);
    }
}

std::string names(Recordset& recordset) {
    std::string line;
    for (size_t field = 0; field < recordset.fieldCount(); ++field) {
        line.append(field == 0 ? "" : "|").append(recordset.fieldName(field));
    }
    return line + "\n";
}

}  // namespace

std::string written(Recordset& recordset) {
    std::string text = names(recordset);
    for (; !recordset.atEnd(); recordset.moveNext()) {
        for (size_t field = 0; field < recordset.fieldCount(); ++field) {
            FieldValue value;
            EXPECT_TRUE(recordset.value(field, value));
            text.append(field == 0 ? "" : "|").append(shown(value));
        }
        text += "\n";
    }
    return text;
}

std::string WorkbookTest::connectionString(const std::string& path) const {
    return "Provider=Microsoft.ACE.OLEDB.12.0;Data Source=" + path +
           ";Extended Properties=\"Excel 12.0 Xml;HDR=" + header_ + "\";";
}

std::string WorkbookTest::write(const std::string& bytes) const {
    return directory_.write("book.xlsx", bytes);
}

std::string WorkbookTest::withoutPath(std::string text) const {
    const std::string path = (directory_.path() / "book.xlsx").string();
    for (size_t at = text.find(path); at != std::string::npos; at = text.find(path)) {
        text.replace(at, path.size(), "PATH");
    }
    return text;
}

std::string WorkbookTest::rows(const std::string& bytes, const std::string& query) {
    ProviderConnection connection(endMark_);
    connection.open(connectionString(write(bytes)));
    return written(*connection.openRecordset(query));
}

std::string WorkbookTest::fixtureRows(const std::string& name, const std::string& query) {
    ProviderConnection connection(endMark_);
    connection.open(connectionString("fixtures/" + name));
    return written(*connection.openRecordset(query));
}

std::string WorkbookTest::fields(const TestBook& book, const std::string& query) {
    ProviderConnection connection(endMark_);
    connection.open(connectionString(write(book.bytes())));
    return names(*connection.openRecordset(query));
}

std::string WorkbookTest::openError(const std::string& bytes) {
    ProviderConnection connection(endMark_);
    try {
        connection.open(connectionString(write(bytes)));
    } catch (const PlatformError& error) {
        return withoutPath(error.description());
    }
    return "it opened";
}

std::string WorkbookTest::queryError(const TestBook& book, const std::string& query) {
    ProviderConnection connection(endMark_);
    connection.open(connectionString(write(book.bytes())));
    try {
        written(*connection.openRecordset(query));
    } catch (const PlatformError& error) {
        return withoutPath(error.description());
    }
    return "it ran";
}

}  // namespace intake
