#include "platform/linux/odbc/OdbcConnection.h"

#include <array>

#include "platform/linux/odbc/OdbcRecordset.h"
#include "platform/linux/odbc/abandonable_call.h"
#include "platform/linux/odbc/driver_library.h"
#include "platform/linux/odbc/odbc_errors.h"

namespace intake {

namespace {

constexpr std::chrono::seconds CONNECT_TIME(15);

struct Setting {
    const char* key;
    const char* text;
};

/// Otherwise SQLite's driver takes what stands before a dot for the name of a table, even in an
/// alias, and waits 100 seconds for a locked database. It keeps all records in memory; StepAPI=1
/// would not, but then it does not know the types of expressions.
constexpr std::array<Setting, 3> SQLITE_SETTINGS{{
    {"LongNames", ";LongNames=1"},
    {"ShortNames", ";ShortNames=1"},
    {"Timeout", ";Timeout=15000"},
}};

/// With the settings that we want where the user does not want others.
std::string withSettings(const std::string& connectionString) {
    std::string text = connectionString;
    if (driverLibrary(connectionString).find("sqlite3odbc") == std::string::npos) {
        return text;
    }
    for (const Setting& setting : SQLITE_SETTINGS) {
        if (settingOf(connectionString, setting.key).empty()) {
            text += setting.text;
        }
    }
    return text;
}

/// What drivers say of an empty query misleads, such as "out of memory".
bool isBlank(const std::string& query) {
    return query.find_first_not_of(" \t\r\n;") == std::string::npos;
}

}  // namespace

void OdbcConnection::open(const std::string& connectionString) {
    keepErrors([&] {
        if (const auto reason = loadDriver(connectionString)) {
            throwOdbcError(*reason);
        }
        connect(withSettings(connectionString));
        driver_ = describeDriver(session_->connection().get());
    });
}

/// Not every driver can be told how long it may take, and none gives up when it is asked to.
void OdbcConnection::connect(const std::string& connectionString) {
    const auto connected = std::make_shared<bool>(false);
    const auto call = [session = session_, connected, connectionString] {
        *connected = session->connect(connectionString);
    };
    const CallOutcome outcome = makeAbandonableCall(call, endMark_, CONNECT_TIME);
    if (outcome != CallOutcome::DONE) {
        session_ = std::make_shared<OdbcSession>();
    }
    if (outcome == CallOutcome::ENDED) {
        throwQueryGivenUp();
    }
    if (outcome == CallOutcome::LATE) {
        throwOdbcError("The database server does not answer.");
    }
    if (!*connected) {
        throwOdbcFailure(session_->connection(), false);
    }
}

std::unique_ptr<Recordset> OdbcConnection::openRecordset(const std::string& query) {
    std::unique_ptr<Recordset> records;
    keepErrors([&] {
        if (isBlank(query)) {
            throwNoQuery();
        }
        records = std::make_unique<OdbcRecordset>(*session_, driver_, query, endMark_);
    });
    return records;
}

void OdbcConnection::keepErrors(const std::function<void()>& step) {
    errors_.clear();
    try {
        step();
    } catch (const OdbcFailure& failure) {
        errors_ = failure.errors();
        throw;
    }
}

}  // namespace intake
