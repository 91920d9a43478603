#include "workbench/probe/database/odbc_connect.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "formats/text/ascii.h"
#include "workbench/probe/database/odbc_text.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

/// What a failure to connect means. Drivers do not agree on states, so their words count too.
struct Meaning {
    std::string_view state;  // empty for any
    long code;               // 0 for any
    std::string_view words;  // somewhere in the text; empty for any
    DatabaseFault fault;
};

// The first that fits.
constexpr std::array meanings{
    Meaning{"", 1044, "to database", DatabaseFault::NoDatabase},
    Meaning{"", 1049, "", DatabaseFault::NoDatabase},
    Meaning{"", 4060, "", DatabaseFault::NoDatabase},
    Meaning{"", 0, "FATAL: database", DatabaseFault::NoDatabase},
    Meaning{"", 0, "authentication failed", DatabaseFault::Login},
    Meaning{"", 0, "no password supplied", DatabaseFault::Login},
    Meaning{"", 0, "FATAL: role", DatabaseFault::Login},
    Meaning{"", 1045, "", DatabaseFault::Login},
    Meaning{"", 18456, "", DatabaseFault::Login},
    Meaning{"28000", 0, "", DatabaseFault::Login},
    Meaning{"IM002", 0, "", DatabaseFault::Provider},
    Meaning{"01000", 0, "Can't open lib", DatabaseFault::Provider},
    Meaning{"HYT00", 0, "", DatabaseFault::Late},
    Meaning{"HYT01", 0, "", DatabaseFault::Late},
};

struct Advice {
    DatabaseFault fault;
    const char* text;
};

constexpr std::array advices{
    Advice{DatabaseFault::NoDatabase,
           "Set the database in \"Connection String\" (connStr) to one that is there and that the "
           "user may use."},
    Advice{DatabaseFault::Login,
           "Correct user (Uid) and password (Pwd) in \"Connection String\" (connStr). They were "
           "not sent again: accounts lock after a few times."},
    Advice{DatabaseFault::Provider,
           "Correct the driver or the data source in \"Connection String\" (connStr)."},
    Advice{DatabaseFault::Late, "Check that the server runs and is not overloaded."},
    Advice{DatabaseFault::Unreachable,
           "Check server and port in \"Connection String\" (connStr), that the database runs, and "
           "that no firewall keeps it from this machine."},
};

DatabaseFault faultOf(const OdbcMessage& message) {
    const auto fits = [&](const Meaning& each) {
        return (each.state.empty() || each.state == message.state) &&
               (each.code == 0 || each.code == message.code) &&
               message.text.find(each.words) != std::string::npos;
    };
    const auto* const found = std::find_if(meanings.begin(), meanings.end(), fits);
    return found == meanings.end() ? DatabaseFault::Unreachable : found->fault;
}

const char* adviceOn(DatabaseFault fault) {
    return std::find_if(advices.begin(), advices.end(),
                        [fault](const Advice& each) { return each.fault == fault; })
        ->text;
}

/// One blank where there are several, so that words can be found.
std::string withSingleBlanks(const std::string& text) {
    std::string single;
    for (const char c : text) {
        if (c != ' ' || !single.ends_with(' ')) single += c;
    }
    return single;
}

bool isDatabaseKey(std::string_view key) {
    return intake::equalIgnoringCase(key, "Database");
}

/// The connection string with another database, or with none.
intake::ConnectionString withDatabase(const intake::ConnectionString& odbc, const char* database) {
    intake::ConnectionString result;
    for (const intake::ConnectionProperty& each : odbc.properties()) {
        if (!isDatabaseKey(each.key)) result.add(each);
    }
    if (database != nullptr) result.add({"Database", database, database});
    return result;
}

std::vector<std::string> firstColumn(SQLHSTMT statement) {
    std::vector<std::string> names;
    std::string name;
    while (SQL_SUCCEEDED(SQLFetch(statement))) {
        if (readText(statement, 1, name)) names.push_back(name);
    }
    return names;
}

SQLCHAR* asText(const char* text) {
    return reinterpret_cast<SQLCHAR*>(const_cast<char*>(text));
}

/// The databases of a server, asked for by whichever of the two ways it knows. Empty when it does
/// not say.
std::vector<std::string> databasesOf(const intake::ConnectionString& odbc, Deadline end) {
    constexpr const char* postgresQuery =
        "SELECT datname FROM pg_database WHERE NOT datistemplate ORDER BY datname";
    for (const char* database : {"postgres", static_cast<const char*>(nullptr)}) {
        OdbcHandles handles;
        if (!handles.connect(withDatabase(odbc, database).text(), end)) continue;
        const OdbcStatementHandle statement(handles.connection());
        const SQLRETURN result =
            database != nullptr ? SQLExecDirect(statement.get(), asText(postgresQuery), SQL_NTS)
                                : SQLTables(statement.get(), asText(SQL_ALL_CATALOGS), SQL_NTS,
                                            asText(""), SQL_NTS, asText(""), SQL_NTS, nullptr, 0);
        if (SQL_SUCCEEDED(result)) return firstColumn(statement.get());
    }
    return {};
}

[[noreturn]] void failForDatabase(const intake::ConnectionString& odbc, const std::string& written,
                                  const OdbcMessage& message, Deadline end) {
    const std::string wanted = odbc.value("Database");
    const std::vector<std::string> there = databasesOf(odbc, end);
    const std::string near = nearName(wanted, there);
    const auto at = written.find(wanted);
    Proposal proposal;
    if (!near.empty() && at != std::string::npos)
        proposal = {{"connStr", std::string(written).replace(at, wanted.size(), near)}};
    const std::string list = there.empty() ? "" : " The user may see: " + listOf(there) + ".";
    throw DatabaseFailure(DatabaseFault::NoDatabase, asSentence(message.text) + list,
                          adviceOn(DatabaseFault::NoDatabase), std::move(proposal));
}

}  // namespace

std::unique_ptr<OdbcHandles> connectOdbc(const intake::ConnectionString& odbc,
                                         const std::string& written, Deadline end) {
    auto handles = std::make_unique<OdbcHandles>();
    if (handles->connect(odbc.text(), end)) return handles;
    OdbcMessage message = messageOf(SQL_HANDLE_DBC, handles->connection());
    message.text = withSingleBlanks(message.text);
    const DatabaseFault fault = faultOf(message);
    if (fault == DatabaseFault::NoDatabase) failForDatabase(odbc, written, message, end);
    throw DatabaseFailure(fault, asSentence(message.text), adviceOn(fault));
}

}  // namespace probe
