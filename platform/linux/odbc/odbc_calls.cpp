#include "platform/linux/odbc/odbc_calls.h"

#include <sqlucode.h>

#include <algorithm>
#include <string_view>

#include "formats/text/utf16.h"
#include "platform/linux/base/NeutralLocale.h"

namespace intake {

namespace {

constexpr size_t STATE_LENGTH = 5;

SQLCHAR* odbcText(const std::string& text) {
    return reinterpret_cast<SQLCHAR*>(const_cast<char*>(text.c_str()));
}

SQLWCHAR* odbcText(const std::u16string& text) {
    return reinterpret_cast<SQLWCHAR*>(const_cast<char16_t*>(text.c_str()));
}

/// Up to the zero that ends it.
std::string utf8(const std::string& text) {
    return text.substr(0, text.find('\0'));
}

std::string utf8(const std::u16string& text) {
    return toUtf8(std::u16string_view(text.c_str()));
}

std::string message(const std::string& text) {
    return utf8(text);
}

/// Where the host's locale is not one of UTF-8, some drivers widen the bytes of UTF-8 one by one.
std::string message(const std::u16string& text) {
    std::string bytes;
    for (const char16_t unit : std::u16string_view(text.c_str())) {
        if (unit > 0xFF) {
            return utf8(text);
        }
        bytes += static_cast<char>(unit);
    }
    const bool isUtf8 = toUtf16(bytes).find(u'\uFFFD') == std::u16string::npos;
    return isUtf8 ? bytes : utf8(text);
}

std::string withoutLineEnd(std::string text) {
    text.erase(text.find_last_not_of(" \r\n") + 1);
    return text;
}

/// Calls `read(text, room, length)`, a call that gives a text, with as much room as it needs.
template <class Text, class Read>
SQLRETURN readText(Text& text, Read read) {
    constexpr SQLSMALLINT FIRST_ROOM = 512;
    constexpr SQLSMALLINT MOST_ROOM = 32000;
    SQLSMALLINT length = 0;
    text.assign(FIRST_ROOM, 0);
    SQLRETURN result = read(odbcText(text), FIRST_ROOM, &length);
    if (SQL_SUCCEEDED(result) && length >= FIRST_ROOM) {
        const SQLSMALLINT room = static_cast<SQLSMALLINT>(std::min(length + 1, +MOST_ROOM));
        text.assign(static_cast<size_t>(room), 0);
        result = read(odbcText(text), room, &length);
    }
    return result;
}

template <class Text, class Call>
SQLRETURN readDiagnosticBy(Call call, const OdbcHandle& handle, SQLSMALLINT record,
                           OdbcDiagnostic& diagnostic) {
    Text state(STATE_LENGTH, 0);
    Text words;
    const SQLRETURN result = readText(words, [&](auto* text, SQLSMALLINT room, auto* length) {
        SQLINTEGER native = 0;
        return call(handle.type(), handle.get(), record, odbcText(state), &native, text, room,
                    length);
    });
    diagnostic = {utf8(state), withoutLineEnd(message(words))};
    return result;
}

template <class Text, class Call>
SQLRETURN describeBy(Call call, SQLHSTMT statement, SQLUSMALLINT number,
                     OdbcColumnDescription& description) {
    Text name;
    const SQLRETURN result = readText(name, [&](auto* text, SQLSMALLINT room, auto* length) {
        SQLSMALLINT digits = 0;
        SQLSMALLINT nullable = 0;
        return call(statement, number, text, room, length, &description.type, &description.size,
                    &digits, &nullable);
    });
    description.name = utf8(name);
    return result;
}

}  // namespace

bool readDiagnostic(const OdbcHandle& handle, SQLSMALLINT record, bool narrow,
                    OdbcDiagnostic& diagnostic) {
    const NeutralLocale locale;
    return SQL_SUCCEEDED(
        narrow ? readDiagnosticBy<std::string>(SQLGetDiagRec, handle, record, diagnostic)
               : readDiagnosticBy<std::u16string>(SQLGetDiagRecW, handle, record, diagnostic));
}

/// The kind of driver is not known yet: the driver manager turns UTF-8 into what the driver takes.
SQLRETURN connectWithString(SQLHDBC connection, const std::string& connectionString) {
    const NeutralLocale locale;
    return SQLDriverConnect(connection, nullptr, odbcText(connectionString), SQL_NTS, nullptr, 0,
                            nullptr, SQL_DRIVER_NOPROMPT);
}

SQLRETURN executeQuery(SQLHSTMT statement, const std::string& query, bool narrow) {
    const NeutralLocale locale;
    return narrow ? SQLExecDirect(statement, odbcText(query), SQL_NTS)
                  : SQLExecDirectW(statement, odbcText(toUtf16(query)), SQL_NTS);
}

SQLRETURN prepareAndExecute(SQLHSTMT statement, const std::string& query, bool narrow) {
    const NeutralLocale locale;
    const SQLRETURN prepared = narrow ? SQLPrepare(statement, odbcText(query), SQL_NTS)
                                      : SQLPrepareW(statement, odbcText(toUtf16(query)), SQL_NTS);
    return SQL_SUCCEEDED(prepared) ? SQLExecute(statement) : executeQuery(statement, query, narrow);
}

SQLRETURN describeColumn(SQLHSTMT statement, SQLUSMALLINT number, bool narrow,
                         OdbcColumnDescription& description) {
    const NeutralLocale locale;
    return narrow ? describeBy<std::string>(SQLDescribeCol, statement, number, description)
                  : describeBy<std::u16string>(SQLDescribeColW, statement, number, description);
}

}  // namespace intake
