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

constexpr int STEPS_BETWEEN_CHECKS = 10000;

int isEnded(void* endMark) {
    return static_cast<const EndMark*>(endMark)->isSet() ? 1 : 0;
}

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

}  // namespace

template <class Step>
auto WorkbookConnection::reported(Step step) {
    errors_.clear();
    try {
        try {
            return step();
        } catch (const WorkbookFault& fault) {
            throwUnreadable(fault.what());
        } catch (const GivenUp&) {
            raiseGivenUp(WORKBOOK_PROVIDER);
        }
    } catch (const PlatformError& error) {
        errors_.push_back({error.code(), error.description()});
        throw;
    }
}

void WorkbookConnection::open(const std::string& connectionString) {
    reported([&] {
        const auto properties = ConnectionString::parse(connectionString);
        const auto extended =
            ConnectionString::parseExtendedProperties(properties.value("Extended Properties"));
        path_ = properties.value("Data Source");
        header_ = !equalIgnoringCase(extended.value("HDR"), "NO");
        openWorkbook();
        openDatabase();
    });
}

void WorkbookConnection::openWorkbook() {
    try {
        file_ = std::make_unique<RegularFile>(path_);
    } catch (const std::system_error& error) {
        const bool isOther = error.code() == std::errc::not_supported;
        throwUnreadable(isOther ? "it is not a regular file" : error.code().message());
    }
    workbook_ = std::make_unique<Workbook>(*file_, endMark_);
}

void WorkbookConnection::throwUnreadable(const std::string& reason) const {
    UNSPECIFIED.raise(WORKBOOK_PROVIDER,
                      "The workbook \"" + path_ + "\" cannot be read: " + reason);
}

void WorkbookConnection::openDatabase() {
    sqlite3* database = nullptr;
    const int result =
        sqlite3_open_v2(":memory:", &database,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY | SQLITE_OPEN_NOMUTEX, nullptr);
    database_.reset(database);
    // What is sorted stays in memory too.
    if (result != SQLITE_OK || sqlite3_exec(database, "PRAGMA temp_store=MEMORY", nullptr, nullptr,
                                            nullptr) != SQLITE_OK) {
        throw std::bad_alloc();
    }
    sqlite3_set_authorizer(database, authorize, &rights_);
    sqlite3_progress_handler(database, STEPS_BETWEEN_CHECKS, isEnded,
                             const_cast<EndMark*>(&endMark_));
}

std::unique_ptr<Recordset> WorkbookConnection::openRecordset(const std::string& query) {
    return reported([&]() -> std::unique_ptr<Recordset> {
        registerTables(query);
        Statement statement(prepare(query));
        return std::make_unique<WorkbookRecordset>(std::move(statement), modules_, endMark_);
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
            registerSheetModule(database_.get(), *modules_.back());
        }
    }
}

sqlite3_stmt* WorkbookConnection::prepare(const std::string& query) {
    sqlite3_stmt* statement = nullptr;
    const char* rest = nullptr;
    const int result = sqlite3_prepare_v2(database_.get(), query.c_str(),
                                          static_cast<int>(query.size() + 1), &statement, &rest);
    Statement owner(statement);
    if (result != SQLITE_OK) {
        throwRefused(query);
    }
    refuseOtherStatements(statement, rest);
    return owner.release();
}

/// Throws why SQLite would not prepare the query: the table's own failure where one failed.
void WorkbookConnection::throwRefused(const std::string& query) {
    const std::string message = sqlite3_errmsg(database_.get());
    for (const auto& module : modules_) {
        if (module->failure != nullptr) {
            std::rethrow_exception(std::exchange(module->failure, nullptr));
        }
    }
    throwQueryRefused(path_, workbook_->index(), modules_, query, message);
}

}  // namespace intake
