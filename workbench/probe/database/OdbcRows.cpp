#include "workbench/probe/database/OdbcRows.h"

#include <algorithm>
#include <array>

#include "formats/text/six_digits.h"
#include "formats/text/utf16.h"
#include "workbench/probe/database/odbc_text.h"

namespace probe {

namespace {

constexpr std::array textTypes{SQL_CHAR,  SQL_VARCHAR,  SQL_LONGVARCHAR,
                               SQL_WCHAR, SQL_WVARCHAR, SQL_WLONGVARCHAR};
constexpr std::array numberTypes{SQL_REAL, SQL_FLOAT, SQL_DOUBLE, SQL_DECIMAL, SQL_NUMERIC};

template <class Types>
bool isOneOf(const Types& types, SQLSMALLINT type) {
    return std::find(types.begin(), types.end(), type) != types.end();
}

/// The states and codes of a refusal because the transaction only reads.
bool isWrite(const OdbcMessage& message) {
    constexpr long mariaDbReadOnly = 1792;
    return message.state == "25006" || message.code == mariaDbReadOnly ||
           message.text.find("read-only transaction") != std::string::npos;
}

}  // namespace

CancelAtDeadline::CancelAtDeadline(SQLHSTMT statement, Deadline end)
    : thread_([this, statement, end] {
          std::unique_lock lock(mutex_);
          if (!ended_.wait_until(lock, end, [this] { return isEnded_; })) SQLCancel(statement);
      }) {}

CancelAtDeadline::~CancelAtDeadline() {
    {
        const std::lock_guard lock(mutex_);
        isEnded_ = true;
    }
    ended_.notify_one();
    thread_.join();
}

OdbcRows::OdbcRows(SQLHDBC connection, const std::string& query, Deadline end)
    : statement_(connection), end_(end), canceller_(statement_.get(), end) {
    const std::u16string text = intake::toUtf16(query);
    auto* const units = reinterpret_cast<SQLWCHAR*>(const_cast<char16_t*>(text.c_str()));
    const SQLRETURN result = SQLExecDirectW(statement_.get(), units, SQL_NTS);
    if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA) fail();
    describe();
}

void OdbcRows::fail() const {
    if (std::chrono::steady_clock::now() > end_)
        throw DatabaseFailure(DatabaseFault::Late, "It gave no answer in time.",
                              "Make the query quicker, or let it give fewer rows.");
    const OdbcMessage message = messageOf(SQL_HANDLE_STMT, statement_.get());
    throw DatabaseFailure(isWrite(message) ? DatabaseFault::Write : DatabaseFault::Query,
                          message.text);
}

void OdbcRows::describe() {
    SQLSMALLINT count = 0;
    SQLNumResultCols(statement_.get(), &count);
    for (SQLUSMALLINT i = 1; i <= static_cast<SQLUSMALLINT>(count); ++i) {
        std::array<SQLWCHAR, 512> name{};
        SQLSMALLINT length = 0;
        SQLSMALLINT type = 0;
        SQLULEN size = 0;
        SQLSMALLINT digits = 0;
        SQLSMALLINT nullable = 0;
        SQLDescribeColW(statement_.get(), i, name.data(), name.size(), &length, &type, &size,
                        &digits, &nullable);
        columns_.push_back(
            intake::toUtf8(std::u16string_view(reinterpret_cast<const char16_t*>(name.data()))));
        types_.push_back(type);
    }
}

bool OdbcRows::next() {
    const SQLRETURN result = SQLFetch(statement_.get());
    if (result == SQL_NO_DATA) return false;
    if (!SQL_SUCCEEDED(result) || std::chrono::steady_clock::now() > end_) fail();
    return true;
}

std::optional<std::string> OdbcRows::value(std::size_t column) {
    std::string text;
    const auto number = static_cast<SQLUSMALLINT>(column + 1);
    if (!readText(statement_.get(), number, text)) return std::nullopt;
    if (!isOneOf(numberTypes, types_[column])) return text;
    std::string digits;
    intake::appendSixDigits(digits, std::string_view(text));
    return digits;
}

bool OdbcRows::isText(std::size_t column) const {
    return isOneOf(textTypes, types_[column]);
}

}  // namespace probe
