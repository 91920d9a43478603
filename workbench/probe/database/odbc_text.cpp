#include "workbench/probe/database/odbc_text.h"

#include <sqlucode.h>

#include <array>
#include <string_view>

#include "formats/text/utf16.h"
#include "workbench/probe/database/Database.h"

namespace probe {

namespace {

std::string inOneLine(std::string text) {
    for (char& c : text)
        c = c == '\n' || c == '\r' || c == '\t' ? ' ' : c;
    text.erase(text.find_last_not_of(" ;") + 1);
    return text;
}

/// Each of those that pass a message on puts its name before it, in brackets.
std::string withoutSenders(std::string_view text) {
    while (text.starts_with('[')) {
        const auto end = text.find(']');
        if (end == std::string_view::npos) break;
        text.remove_prefix(end + 1);
    }
    const auto start = text.find_first_not_of(' ');
    return std::string(start == std::string_view::npos ? "" : text.substr(start));
}

/// What drivers say behind the database's words and helps nobody.
std::string withoutTail(std::string text) {
    constexpr std::string_view tail = "; Error while executing the query";
    if (text.ends_with(tail)) text.erase(text.size() - tail.size());
    return text;
}

}  // namespace

std::vector<OdbcMessage> messagesOf(SQLSMALLINT type, SQLHANDLE handle) {
    std::vector<OdbcMessage> messages;
    std::array<SQLWCHAR, 6> state{};
    std::array<SQLWCHAR, 2048> text{};
    SQLINTEGER code = 0;
    SQLSMALLINT length = 0;
    for (SQLSMALLINT i = 1; SQL_SUCCEEDED(SQLGetDiagRecW(type, handle, i, state.data(), &code,
                                                         text.data(), text.size(), &length));
         ++i) {
        const auto utf8 = [](const SQLWCHAR* units) {
            return intake::toUtf8(std::u16string_view(reinterpret_cast<const char16_t*>(units)));
        };
        messages.push_back(
            {utf8(state.data()), code, withoutTail(withoutSenders(inOneLine(utf8(text.data()))))});
    }
    return messages;
}

OdbcMessage messageOf(SQLSMALLINT type, SQLHANDLE handle) {
    const std::vector<OdbcMessage> messages = messagesOf(type, handle);
    return messages.empty() ? OdbcMessage{"HY000", 0, "the driver does not say why"}
                            : messages.front();
}

std::string infoOf(SQLHDBC connection, SQLUSMALLINT what) {
    std::array<SQLWCHAR, 256> text{};
    SQLSMALLINT length = 0;
    const SQLRETURN result =
        SQLGetInfoW(connection, what, text.data(), static_cast<SQLSMALLINT>(sizeof(text)), &length);
    if (!SQL_SUCCEEDED(result)) return "";
    return intake::toUtf8(std::u16string_view(reinterpret_cast<const char16_t*>(text.data())));
}

bool readText(SQLHSTMT statement, SQLUSMALLINT column, std::string& text) {
    std::array<char16_t, 2048> part{};
    std::u16string units;
    for (;;) {
        SQLLEN length = 0;
        const SQLRETURN result =
            SQLGetData(statement, column, SQL_C_WCHAR, part.data(), sizeof(part), &length);
        if (result == SQL_NO_DATA) break;
        if (!SQL_SUCCEEDED(result))
            throw DatabaseFailure(DatabaseFault::Query, messageOf(SQL_HANDLE_STMT, statement).text);
        if (length == SQL_NULL_DATA) return false;
        units += part.data();
        if (result == SQL_SUCCESS) break;
    }
    text = intake::toUtf8(units);
    return true;
}

}  // namespace probe
