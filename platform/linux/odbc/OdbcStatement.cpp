#include "platform/linux/odbc/OdbcStatement.h"

#include <algorithm>
#include <cstddef>

#include "platform/linux/base/NeutralLocale.h"
#include "platform/linux/base/com_failures.h"
#include "platform/linux/odbc/odbc_calls.h"
#include "platform/linux/odbc/odbc_errors.h"

namespace intake {

namespace {

constexpr ComFailure LIMIT_REACHED{0x80040E31,
                                   "Execution aborted because a resource limit has been reached."};

}  // namespace

OdbcStatement::OdbcStatement(const OdbcSession& session, const OdbcDriver& driver,
                             const EndMark& endMark, std::chrono::milliseconds limit)
    : endMark_(endMark),
      driver_(driver),
      limit_(limit),
      handle_(SQL_HANDLE_STMT, session.connection().get()),
      canceller_(handle_.get(), endMark, limit) {}

/// Runs a call that may block. What a cancelled one returns differs from driver to driver.
template <class Call>
SQLRETURN OdbcStatement::run(Call call) const {
    const SQLRETURN result = canceller_.run(call);
    raiseIfEnded(endMark_, ODBC_SOURCE);
    if (canceller_.isLate()) {
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(limit_);
        throwReported(LIMIT_REACHED, ODBC_SOURCE,
                      "The query was cancelled: no record came within " +
                          std::to_string(seconds.count()) + " seconds.");
    }
    return result;
}

void OdbcStatement::execute(const std::string& query) {
    const auto start = driver_.preparesQueries ? prepareAndExecute : executeQuery;
    const SQLRETURN result = run([&] { return start(handle_.get(), query, driver_.narrow); });
    if (result != SQL_NO_DATA) {
        check(result);
    }
}

void OdbcStatement::takeAtATime(SQLULEN records) {
    states_.resize(records);
    setAttribute(SQL_ATTR_ROW_ARRAY_SIZE, reinterpret_cast<SQLPOINTER>(records));
    setAttribute(SQL_ATTR_ROW_STATUS_PTR, states_.data());
    setAttribute(SQL_ATTR_ROWS_FETCHED_PTR, &fetched_);
}

void OdbcStatement::setAttribute(SQLINTEGER attribute, SQLPOINTER value) const {
    check(SQLSetStmtAttr(handle_.get(), attribute, value, 0));
}

SQLULEN OdbcStatement::fetch() {
    raiseIfEnded(endMark_, ODBC_SOURCE);
    const NeutralLocale locale;
    const SQLRETURN result = run([this] { return SQLFetch(handle_.get()); });
    canceller_.forgetTime();
    if (result == SQL_NO_DATA) {
        return 0;
    }
    check(result);
    if (result == SQL_SUCCESS_WITH_INFO) {
        checkRecords();
    }
    return fetched_;
}

SQLRETURN OdbcStatement::getData(SQLUSMALLINT column, SQLSMALLINT cType, char* out, size_t room,
                                 SQLLEN& length) const {
    const NeutralLocale locale;
    return run([&] {
        return SQLGetData(handle_.get(), column, cType, out, static_cast<SQLLEN>(room), &length);
    });
}

/// A fetch of several records succeeds even if one of them failed.
void OdbcStatement::checkRecords() const {
    const auto end =
        states_.begin() + static_cast<std::ptrdiff_t>(std::min<size_t>(fetched_, states_.size()));
    if (std::find(states_.begin(), end, SQL_ROW_ERROR) != end) {
        throwOdbcFailure(handle_, driver_.narrow);
    }
}

void OdbcStatement::goTo(SQLULEN record) const {
    check(SQLSetPos(handle_.get(), record + 1, SQL_POSITION, SQL_LOCK_NO_CHANGE));
}

void OdbcStatement::check(SQLRETURN result) const {
    if (!SQL_SUCCEEDED(result)) {
        throwOdbcFailure(handle_, driver_.narrow);
    }
}

}  // namespace intake
