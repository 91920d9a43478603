#include "platform/linux/workbook/WorkbookConnection.h"

#include <algorithm>
#include <new>
#include <string_view>
#include <system_error>
#include <utility>

#include "formats/connection/connection_string.h"
#include "formats/text/ascii.h"
#include "formats/workbook/WorkbookFault.h"
#include "formats/workbook/table_names.h"
#include "platform/PlatformError.h"
#include "platform/linux/base/com_failures.h"
#include "platform/linux/workbook/WorkbookRecordset.h"
#include "platform/linux/workbook/query_errors.h"
#include "platform/linux/workbook/query_names.h"

namespace intake {

namespace {

constexpr SqliteTimes TIMES{std::chrono::milliseconds(0)};  // nothing locks what is in memory

/// Lets a query read tables, and nothing else: no other file, no setting, no change.
int authorize(void* rights, int action, const char*, const char* name, const char*, const char*) {
    if (static_cast<const QueryRights*>(rights)->declaring) {
        return SQLITE_OK;
    }
    switch (action) {
        case SQLITE_SELECT:
        case SQLITE_READ:
        case SQLITE_RECURSIVE:
            return SQLITE_OK;
        case SQLITE_FUNCTION:
            return equalIgnoringCase(name, "load_extension") ? SQLITE_DENY : SQLITE_OK;
        default:
            return SQLITE_DENY;
    }
}

bool hasHeader(const ConnectionString& connection) {
    const auto extended =
        ConnectionString::parseExtendedProperties(connection.value("Extended Properties"));
    return !equalIgnoringCase(extended.value("HDR"), "NO");
}

[[noreturn]] void throwUnreadable(const std::string& path, const std::string& reason) {
    UNSPECIFIED.raise(WORKBOOK_PROVIDER, "The workbook \"" + path + "\" cannot be read: " + reason);
}

std::unique_ptr<RegularFile> openFile(const std::string& path) {
    try {
        return std::make_unique<RegularFile>(path);
    } catch (const std::system_error& error) {
        const bool isOther = error.code() == std::errc::not_supported;
        throwUnreadable(path, isOther ? "it is not a regular file" : error.code().message());
    }
}

/// Runs a step; what fails is thrown as the only error that the connection reports, with the
/// workbook's path in it.
template <class Step>
auto reported(const std::string& path, Step step) {
    try {
        try {
            return step();
        } catch (const WorkbookFault& fault) {
            throwUnreadable(path, fault.what());
        } catch (const GivenUp&) {
            raiseGivenUp(WORKBOOK_PROVIDER);
        }
    } catch (const PlatformError& error) {
        throw ConnectionFailure(error, {{error.code(), error.description()}});
    }
}

}  // namespace

WorkbookConnection::WorkbookConnection(const ConnectionString& connection, const EndMark& endMark)
    : endMark_(endMark),
      path_(connection.value("Data Source")),
      header_(hasHeader(connection)),
      file_(reported(path_, [this] { return openFile(path_); })),
      workbook_(reported(path_, [&] { return std::make_unique<Workbook>(*file_, endMark); })),
      database_(openDatabase()) {}

std::unique_ptr<SqliteSession> WorkbookConnection::openDatabase() {
    auto database = std::make_unique<SqliteSession>(
        ":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY, TIMES, endMark_);
    // What is sorted stays in memory too.
    SqliteStatement(*database, "PRAGMA temp_store=MEMORY").step();
    sqlite3_set_authorizer(database->get(), authorize, &rights_);
    return database;
}

std::unique_ptr<Recordset> WorkbookConnection::openRecordset(const std::string& query) {
    return reported(path_, [&]() -> std::unique_ptr<Recordset> {
        registerTables(query);
        return std::make_unique<WorkbookRecordset>(prepare(query), modules_, endMark_);
    });
}

/// Makes the tables known that the query may name.
void WorkbookConnection::registerTables(const std::string& query) {
    const std::vector<std::string> names = namesIn(query);
    for (const std::string& name : names) {
        const auto place = findTable(workbook_->index(), name);
        const bool known = std::any_of(modules_.begin(), modules_.end(), [&](const auto& module) {
            return equalIgnoringCase(module->name, name);
        });
        if (place && !known) {
            modules_.push_back(std::make_unique<SheetModule>(
                SheetModule{*workbook_, rights_, name, *place, header_, names}));
            registerSheetModule(database_->get(), *modules_.back());
        }
    }
}

SqliteStatement WorkbookConnection::prepare(const std::string& query) {
    try {
        SqliteStatement statement(*database_, query);
        if (statement.columnCount() == 0) {
            throwQueryError("The query has no result; only SELECT can be run on a workbook");
        }
        return statement;
    } catch (const SqliteError& error) {
        throwRefused(query, error);
    }
}

/// Throws why SQLite would not prepare the query: the table's own failure where one failed.
void WorkbookConnection::throwRefused(const std::string& query, const SqliteError& error) {
    for (const auto& module : modules_) {
        if (module->failure != nullptr) {
            std::rethrow_exception(std::exchange(module->failure, nullptr));
        }
    }
    throwQueryRefused(path_, workbook_->index(), modules_, query, error);
}

}  // namespace intake
