#include "tests/platform/database/DatabaseTest.h"

#include <algorithm>
#include <array>
#include <sstream>

#include "formats/text/number_text.h"

namespace intake {

namespace {

struct TypeName {
    VariantType type;
    const char* name;
};

constexpr std::array<TypeName, 16> NAMES{{
    {VT_NULL, "NULL"},
    {VT_I1, "I1"},
    {VT_UI1, "UI1"},
    {VT_I2, "I2"},
    {VT_UI2, "UI2"},
    {VT_I4, "I4"},
    {VT_UI4, "UI4"},
    {VT_I8, "I8"},
    {VT_UI8, "UI8"},
    {VT_R4, "R4"},
    {VT_R8, "R8"},
    {VT_DECIMAL, "DECIMAL"},
    {VT_BSTR, "BSTR"},
    {VT_BOOL, "BOOL"},
    {VT_DATE, "DATE"},
    {static_cast<VariantType>(VT_ARRAY | VT_UI1), "BYTES"},
}};

std::string nameOf(VariantType type) {
    const auto name = std::find_if(NAMES.begin(), NAMES.end(),
                                   [type](const TypeName& each) { return each.type == type; });
    return name == NAMES.end() ? std::to_string(type) : name->name;
}

void writeContent(const FieldValue& value, std::ostream& out) {
    switch (+value.type) {
        case VT_NULL:
        case VT_DATE:
        case VT_ARRAY | VT_UI1:
            return;
        case VT_BSTR:
            out << ' ' << value.text;
            return;
        case VT_R4:
        case VT_R8:
        case VT_DECIMAL:
            out << ' '
                << (value.text.empty() ? value.number : parseWhole<double>(value.text).value());
            return;
        case VT_UI1:
        case VT_UI2:
        case VT_UI4:
        case VT_UI8:
            out << ' ' << value.natural;
            return;
        default:
            out << ' ' << value.integer;
    }
}

}  // namespace

std::string namesOf(Recordset& records) {
    std::string names;
    for (size_t field = 0; field < records.fieldCount(); ++field) {
        names += records.fieldName(field);
        names += '|';
    }
    return names;
}

std::string recordsOf(Recordset& records) {
    std::ostringstream lines;
    for (; !records.atEnd(); records.moveNext()) {
        for (size_t field = 0; field < records.fieldCount(); ++field) {
            FieldValue value;
            EXPECT_TRUE(records.value(field, value));
            lines << nameOf(value.type);
            writeContent(value, lines);
            lines << '|';
        }
        lines << '\n';
    }
    return lines.str();
}

void DatabaseTest::open(const std::string& connectionString) {
    connection_ = std::make_unique<ProviderConnection>(endMark_);
    connection_->open(connectionString);
}

void DatabaseTest::run(const std::string& statement) {
    const PlatformError error = errorOf([&] { connection_->openRecordset(statement); });
    EXPECT_EQ(error.code(), NO_RECORDS) << statement << "\n" << error.description();
}

std::string DatabaseTest::recordsOfQuery(const std::string& query) {
    return recordsOf(*connection_->openRecordset(query));
}

std::string DatabaseTest::namesOfQuery(const std::string& query) {
    return namesOf(*connection_->openRecordset(query));
}

std::string DatabaseTest::stored(const std::string& type, const std::string& literal) {
    run("CREATE TABLE t (v " + type + ")");
    run("INSERT INTO t VALUES (" + literal + ")");
    const std::string records = recordsOfQuery("SELECT v FROM t");
    run("DROP TABLE t");
    return records;
}

std::string DatabaseTest::errorLines() {
    std::ostringstream lines;
    for (const Connection::Error& error : connection_->errors()) {
        lines << std::hex << error.number << ' ' << error.description << '\n';
    }
    return lines.str();
}

}  // namespace intake
