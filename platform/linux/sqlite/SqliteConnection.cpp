#include "platform/linux/sqlite/SqliteConnection.h"

#include <sys/stat.h>

#include <cerrno>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/linux/base/com_failures.h"
#include "platform/linux/sqlite/SqliteError.h"
#include "platform/linux/sqlite/SqliteQueryRecords.h"

namespace intake {

namespace {

constexpr const char* SOURCE = "SQLite";
constexpr std::string_view MISSING_TABLE = "no such table: ";

/// SQLite's names for what is no file, or may be one.
bool isSpecialName(const std::string& path) {
    return path == ":memory:" || path.starts_with("file:");
}

/// Why nothing can be read from there; empty when it can. Nothing is opened: to close a file once
/// is to lose all locks that this process holds on it, also those of the host's own connections.
std::string reasonAgainst(const std::string& path) {
    struct stat status {};
    if (isSpecialName(path)) {
        return "";
    }
    if (stat(path.c_str(), &status) != 0) {
        return std::generic_category().message(errno);
    }
    return S_ISDIR(status.st_mode)   ? std::generic_category().message(EISDIR)
           : S_ISREG(status.st_mode) ? ""
                                     : "it is not a regular file";
}

[[noreturn]] void throwUnreadable(const std::string& path, const std::string& reason) {
    throwReported(UNSPECIFIED, SOURCE, "The database \"" + path + "\" cannot be opened: " + reason);
}

[[noreturn]] void throwQueryFailure(const SqliteError& error) {
    if (error.code() == SQLITE_EMPTY) {
        NO_COMMAND.raise(SOURCE, error.what());
    }
    if (std::string_view(error.what()).starts_with(MISSING_TABLE)) {
        throwReported(NO_TABLE, SOURCE, error.what());
    }
    const bool isWrong = error.code() == SQLITE_ERROR || error.code() == SQLITE_MISUSE;
    throwReported(isWrong ? ERRORS_IN_COMMAND : UNSPECIFIED, SOURCE, error.what());
}

/// Reading the first page says whether it is a database, and whether it is locked.
std::unique_ptr<SqliteSession> openSession(const SqliteSettings& settings, const EndMark& endMark) {
    if (const std::string reason = reasonAgainst(settings.path); !reason.empty()) {
        throwUnreadable(settings.path, reason);
    }
    try {
        auto session = std::make_unique<SqliteSession>(settings.path, SQLITE_OPEN_READWRITE,
                                                       SqliteTimes{settings.lockTime}, endMark);
        SqliteStatement(*session, "PRAGMA schema_version").step();
        return session;
    } catch (const SqliteError& error) {
        throwUnreadable(settings.path, error.what());
    }
}

/// Runs a step; what fails becomes the error of a database.
template <class Step>
auto reported(Step step) {
    try {
        return step();
    } catch (const SqliteError& error) {
        throwQueryFailure(error);
    } catch (const GivenUp&) {
        raiseGivenUp(SOURCE);
    }
}

}  // namespace

SqliteConnection::SqliteConnection(const SqliteSettings& settings, const EndMark& endMark)
    : ignored_(settings.ignored),
      endMark_(endMark),
      session_(reported([&] { return openSession(settings, endMark); })) {}

std::unique_ptr<Recordset> SqliteConnection::openRecordset(const std::string& query) {
    return reported([&]() -> std::unique_ptr<Recordset> {
        SqliteStatement statement(*session_, query);
        if (statement.columnCount() == 0) {
            statement.step();
            OBJECT_CLOSED.raise(SOURCE, "The statement does not return records.");
        }
        return std::make_unique<SqliteQueryRecords>(std::move(statement), SOURCE, endMark_);
    });
}

std::vector<std::string> SqliteConnection::warnings() {
    std::vector<std::string> warnings;
    for (const std::string& key : ignored_) {
        warnings.push_back("SQLite has no option \"" + key +
                           "\"; the connection string's is ignored.");
    }
    return warnings;
}

}  // namespace intake
