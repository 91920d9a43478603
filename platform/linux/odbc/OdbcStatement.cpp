#include "platform/linux/odbc/OdbcStatement.h"

#include "platform/linux/odbc/NeutralLocale.h"
#include "platform/linux/odbc/QueryCanceller.h"
#include "platform/linux/odbc/odbc_calls.h"
#include "platform/linux/odbc/odbc_errors.h"

namespace intake {

OdbcStatement::OdbcStatement(const OdbcSession& session, const OdbcDriver& driver,
                             const EndMark& endMark)
    : endMark_(endMark), driver_(driver), handle_(SQL_HANDLE_STMT, session.connection().get()) {}

void OdbcStatement::execute(const std::string& query) {
    SQLRETURN result = SQL_ERROR;
    {
        const QueryCanceller canceller(handle_.get(), endMark_);
        result = executeQuery(handle_.get(), query, driver_.narrow);
    }
    throwIfEnded();
    if (result != SQL_NO_DATA) {
        check(result);
    }
}

bool OdbcStatement::fetch() {
    throwIfEnded();
    const NeutralLocale locale;
    const SQLRETURN result = SQLFetch(handle_.get());
    if (result == SQL_NO_DATA) {
        return false;
    }
    check(result);
    return true;
}

void OdbcStatement::check(SQLRETURN result) const {
    if (!SQL_SUCCEEDED(result)) {
        throwOdbcFailure(handle_, driver_.narrow);
    }
}

void OdbcStatement::throwIfEnded() const {
    if (endMark_.isSet()) {
        throwQueryGivenUp();
    }
}

}  // namespace intake
