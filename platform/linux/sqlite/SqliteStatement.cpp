#include "platform/linux/sqlite/SqliteStatement.h"

#include "platform/linux/sqlite/SqliteError.h"

namespace intake {

SqliteStatement::SqliteStatement(SqliteSession& session, const std::string& query)
    : session_(session) {
    const char* rest = nullptr;
    statement_ = prepare(session, query.c_str(), rest);
    if (statement_ == nullptr) {
        throw SqliteError(SQLITE_EMPTY, "The query is empty.");
    }
    const char* end = nullptr;
    if (prepare(session, rest, end) != nullptr) {
        throw SqliteError(SQLITE_MISUSE,
                          std::string("Something follows the end of the query: ") + rest);
    }
    refuseParameters();
}

/// Null when the text holds blanks and comments only.
SqliteStatement::Handle SqliteStatement::prepare(const SqliteSession& session, const char* text,
                                                 const char*& rest) {
    sqlite3_stmt* statement = nullptr;
    const int result = sqlite3_prepare_v2(session.get(), text, -1, &statement, &rest);
    Handle owner(statement);
    if (result != SQLITE_OK) {
        session.throwFailure(result);
    }
    return owner;
}

void SqliteStatement::refuseParameters() const {
    if (sqlite3_bind_parameter_count(get()) > 0) {
        const char* const name = sqlite3_bind_parameter_name(get(), 1);  // "?" has none
        throw SqliteError(SQLITE_MISUSE,
                          std::string("The query has a parameter without a value: ") +
                              (name == nullptr ? "?" : name));
    }
}

bool SqliteStatement::step() {
    const int result = session_.step(get());
    if (result != SQLITE_ROW && result != SQLITE_DONE) {
        session_.throwFailure(result);
    }
    return result == SQLITE_ROW;
}

}  // namespace intake
