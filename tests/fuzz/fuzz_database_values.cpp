// Whatever an SQLite database holds, in a column of whatever type: each value comes as what it is.
// The first line is the declared type; then each byte is a kind, its value behind it. The texts are
// also read as ODBC drivers give numbers.

#include <sqlite3.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>

#include "platform/linux/odbc/loose_value.h"
#include "platform/linux/sqlite/SqliteError.h"
#include "platform/linux/sqlite/SqliteQueryRecords.h"
#include "readers/sql/VariantWriter.h"
#include "tests/fuzz/FuzzInput.h"

namespace {

using namespace intake;

constexpr auto BYTES = static_cast<VariantType>(VT_ARRAY | VT_UI1);

void expect(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void run(SqliteSession& session, const std::string& statement) {
    SqliteStatement(session, statement).step();
}

/// Takes a number off the bytes; of those that are missing, zeros.
template <class Number>
Number takeNumber(std::string_view& bytes) {
    Number number{};
    const size_t length = std::min(bytes.size(), sizeof number);
    std::memcpy(&number, bytes.data(), length);
    bytes.remove_prefix(length);
    return number;
}

std::string_view takeText(std::string_view& bytes) {
    const std::string_view text = bytes.substr(0, takeNumber<uint8_t>(bytes) % 20);
    bytes.remove_prefix(std::min(bytes.size(), text.size()));
    return text;
}

void bindNext(sqlite3_stmt* statement, std::string_view& bytes) {
    const auto bindText = [&](auto bind) {
        const std::string_view text = takeText(bytes);
        bind(text.data(), static_cast<int>(text.size()));
    };
    switch (takeNumber<uint8_t>(bytes) % 5) {
        case 0:
            sqlite3_bind_null(statement, 1);
            break;
        case 1:
            sqlite3_bind_int64(statement, 1, takeNumber<int64_t>(bytes));
            break;
        case 2:
            sqlite3_bind_double(statement, 1, takeNumber<double>(bytes));
            break;
        case 3:
            bindText([&](const char* text, int length) {
                sqlite3_bind_text(statement, 1, text, length, SQLITE_TRANSIENT);
            });
            break;
        default:
            bindText([&](const char* text, int length) {
                sqlite3_bind_blob(statement, 1, text, length, SQLITE_TRANSIENT);
            });
            break;
    }
}

void insertAll(SqliteSession& session, std::string_view bytes) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(session.get(), "INSERT INTO t VALUES (?)", -1, &statement, nullptr);
    while (!bytes.empty()) {
        bindNext(statement, bytes);
        sqlite3_step(statement);
        sqlite3_reset(statement);
    }
    sqlite3_finalize(statement);
}

/// Whether a value of a storage class may come so, given what else a column can declare.
bool isPossible(const std::string& storage, const FieldValue& value) {
    if (storage == "null") {
        return value.type == VT_NULL;
    }
    if (value.type == VT_DATE) {
        return true;
    }
    if (storage == "text") {
        return value.type == VT_BSTR || value.type == VT_BOOL;
    }
    if (storage == "integer") {
        return value.type == VT_I8 || value.type == VT_BOOL || value.type == VT_R8;
    }
    return value.type == (storage == "real" ? VT_R8 : BYTES);
}

void readAsNumbers(std::string_view text) {
    for (const OdbcType type : {OdbcType{VT_I4, OdbcFetch::SIGNED},
                                {VT_UI8, OdbcFetch::UNSIGNED},
                                {VT_R8, OdbcFetch::NUMBER},
                                {VT_BOOL, OdbcFetch::BOOLEAN}}) {
        FieldValue value;
        value.type = type.variant;
        value.text = text;
        readLooseValue(type, value);
        std::string script;
        VariantWriter(script).writeValue(value);
        expect(value.type != VT_BSTR || script == text);
    }
}

void readAll(SqliteSession& session, const EndMark& endMark) {
    SqliteQueryRecords records(SqliteStatement(session, "SELECT v, typeof(v) FROM t"), "SQLite",
                               endMark);
    std::string script;
    VariantWriter writer(script);
    for (; !records.atEnd(); records.moveNext()) {
        FieldValue storage, value;
        expect(records.value(1, storage));
        const std::string name(storage.text);
        expect(records.value(0, value));
        expect(isPossible(name, value));
        if (value.type == VT_BSTR) {
            readAsNumbers(value.text);
        }
        writer.writeValue(value);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzInput input(data, size);
    const EndMark endMark;
    const std::string type = input.line();
    try {
        SqliteSession session(":memory:", SQLITE_OPEN_READWRITE, {std::chrono::milliseconds(0)},
                              endMark);
        run(session, "CREATE TABLE t (v " + type + ")");
        insertAll(session, input.rest());
        readAll(session, endMark);
    } catch (const SqliteError&) {
        // It is no type.
    }
    return 0;
}
