#include "workbench/probe/explore/explore_source.h"

#include "formats/connection/sqlite_connection_string.h"
#include "workbench/probe/LookFailure.h"
#include "workbench/probe/database/open_database.h"
#include "workbench/probe/explore/database_outline.h"
#include "workbench/probe/explore/html_outline.h"
#include "workbench/probe/explore/json_outline.h"
#include "workbench/probe/explore/workbook_outline.h"
#include "workbench/probe/explore/xml_outline.h"
#include "workbench/probe/fetch/fetched_words.h"
#include "workbench/probe/fetch/login.h"
#include "workbench/probe/fetch/source_start.h"
#include "workbench/probe/kinds.h"

namespace probe {

namespace {

constexpr long firstErrorStatus = 400;

Outline outlineOf(QueryType type, const Fetched& source, const OutlineWish& wish) {
    switch (type) {
        case QueryType::Json:
            return jsonOutline(source.body, wish);
        case QueryType::Xml:
            return xmlOutline(source, wish);
        case QueryType::Html:
            return htmlOutline(source, wish);
        case QueryType::Excel:
            return workbookOutline(source, wish);
        default:
            throw LookFailure("is an SQLite database; it can only be looked into as a file");
    }
}

/// The headers of a fetch are those of the query type: an address by whose settings nothing can be
/// fetched is asked for as JSON is.
Settings fetchable(Settings settings) {
    const bool reads = settings.queryMode == QueryType::Json ||
                       settings.queryMode == QueryType::Xml ||
                       settings.queryMode == QueryType::Html;
    if (isUrl(settings.filename) && !reads) settings.queryMode = QueryType::Json;
    return settings;
}

Explored exploreDatabase(const std::string& connectionString, const OutlineWish& wish,
                         double timeoutSeconds) {
    using Clock = std::chrono::steady_clock;
    const auto patience =
        std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(timeoutSeconds));
    const auto database = openDatabase(connectionString, Clock::now() + patience);
    Explored explored;
    explored.words = database->words();
    explored.source = {{"queryMode", valueOf(QueryType::Sql)}, {"connStr", connectionString}};
    explored.outline = databaseOutline(*database, wish);
    return explored;
}

/// How the source came, to follow what it is: ", with status 404".
std::string circumstancesOf(const Fetched& source) {
    std::string words;
    if (source.status >= firstErrorStatus)
        words += ", with status " + std::to_string(source.status);
    if (source.isProxyUnknown)
        words += ", without a proxy, since the system does not say in time which to use";
    return words;
}

bool isFileOfSqlite(const Settings& settings) {
    return !settings.filename.empty() && !isUrl(settings.filename) &&
           recognise(startOfFile(settings.filename)) == Kind::Sqlite;
}

}  // namespace

Explored exploreSource(const Settings& settings, const OutlineWish& wish, double timeoutSeconds) {
    if (settings.queryMode == QueryType::Sql && !settings.connStr.empty())
        return exploreDatabase(settings.connStr, wish, timeoutSeconds);
    if (isFileOfSqlite(settings))
        return exploreDatabase(intake::sqliteConnectionString(settings.filename), wish,
                               timeoutSeconds);
    const Fetched source = fetch(fetchable(settings), timeoutSeconds);
    if (asksForLogin(source.status)) {
        std::string fault = loginFault(settings, source);
        fault.pop_back();  // what is said ends with a full stop
        throw LookFailure("answers with status " + std::to_string(source.status) + ". " + fault);
    }
    const Kind kind = recognise(source.body);
    Explored explored;
    explored.words = wordsFor(kind, source) + circumstancesOf(source);
    explored.bytes = source.body.size();
    const auto type = queryTypeFor(kind);
    if (!type)
        throw LookFailure(
            "is " + explored.words +
            "; what is looked into is JSON, XML, HTML pages, workbooks and databases");
    explored.source = {{"queryMode", valueOf(*type)}};
    explored.outline = outlineOf(*type, source, wish);
    const bool isEmpty = explored.outline.total == 0U && wish.find.empty();
    if (source.status >= firstErrorStatus && isEmpty)
        throw LookFailure("is " + explored.words + "; nothing in it can be selected");
    return explored;
}

}  // namespace probe
