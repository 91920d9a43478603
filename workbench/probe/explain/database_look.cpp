#include "workbench/probe/explain/database_look.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "formats/text/fold_case.h"
#include "workbench/probe/database/QueryText.h"
#include "workbench/probe/database/open_database.h"
#include "workbench/probe/explain/KeyTally.h"
#include "workbench/probe/explain/QueryStop.h"
#include "workbench/probe/explain/RowRange.h"
#include "workbench/probe/explain/ScriptCheck.h"
#include "workbench/probe/explain/remedies.h"
#include "workbench/probe/explain/settings_check.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

constexpr std::size_t mostKept = 1000;  // rows, by which other keys are judged

struct Place {
    DatabaseFault fault;
    Stage stage;
    const char* seen;
};

constexpr std::array places{
    Place{DatabaseFault::ConnectionString, Stage::Settings, ""},
    Place{DatabaseFault::Provider, Stage::Address, ""},
    Place{DatabaseFault::Missing, Stage::Address, ""},
    Place{DatabaseFault::Unreachable, Stage::Address, ""},
    Place{DatabaseFault::Login, Stage::Fetched, "the login is refused"},
    Place{DatabaseFault::NoDatabase, Stage::Fetched, "no such database"},
    Place{DatabaseFault::Busy, Stage::Fetched, "locked"},
    Place{DatabaseFault::Late, Stage::Fetched, "no answer in time"},
    Place{DatabaseFault::NotReadable, Stage::Format, "not readable"},
};

/// What else goes wrong before there is a query is told as not readable.
const Place& placeOf(DatabaseFault fault) {
    const auto* const row = std::find_if(
        places.begin(), places.end(), [fault](const Place& each) { return each.fault == fault; });
    return row == places.end() ? places.back() : *row;
}

/// The stages before the one that fails have gone well.
void tellNotOpened(const std::string& place, const DatabaseFailure& failure, Ladder& ladder) {
    const Place& row = placeOf(failure.fault);
    const bool hadAddress = row.stage > Stage::Address;
    if (hadAddress) ladder.ok(Stage::Address, place);
    if (row.stage > Stage::Fetched) ladder.ok(Stage::Fetched, "");
    ladder.fail(row.stage, row.stage == Stage::Address ? place : row.seen, failure.what(),
                failure.next);
    if (!failure.proposal.empty()) ladder.propose(row.stage, failure.proposal);
    ladder.credentialsRefused = failure.fault == DatabaseFault::Login;
    ladder.isLate = failure.fault == DatabaseFault::Late;
}

/// What a query gives, row by row, judged as the plugin takes it.
class QueryLook {
public:
    QueryLook(const Settings& settings, Rows& rows, Ladder& ladder)
        : settings_(settings),
          range_(rowRangeOf(settings)),
          rows_(rows),
          ladder_(ladder),
          tally_(settings.key, "column"),
          script_(settings) {}

    void look() {
        key_ = keyColumn();
        takeRows();
        std::size_t offset = 0;
        const std::string seen = shownQuery(settings_.query, offset);
        if (count_ == 0) {
            ladder_.ok(Stage::Selection,
                       seen + ": 0 records: the query runs and finds no row; the source is fine");
            ladder_.ok(Stage::Rows, "no row");
            ladder_.records = 0;
            return;
        }
        ladder_.ok(Stage::Selection, seen + ": " + counted(count_, "row") + ", " +
                                         counted(rows_.columns().size(), "column"));
        ladder_.records = checkRows(settings_, count_, "row", ladder_);
        checkKey();
        if (settings_.mode == TargetMode::SharedMemory) return ladder_.ok(Stage::Script, "");
        script_.tell(ladder_);
    }

private:
    bool hasKey() const { return key_ < rows_.columns().size(); }

    std::size_t keyColumn() const {
        const auto& columns = rows_.columns();
        const auto found = std::find_if(columns.begin(), columns.end(), [this](const auto& name) {
            return intake::foldCase(name) == intake::foldCase(settings_.key);
        });
        return static_cast<std::size_t>(found - columns.begin());
    }

    void takeRows() {
        const bool hasNames = settings_.mode != TargetMode::FieldArray;
        for (const std::string& name : rows_.columns()) {
            if (hasNames) script_.name(name);
        }
        if (hasNames) script_.record({rows_.columns().begin(), rows_.columns().end()});
        for (; rows_.next(); ++count_) {
            if (range_.contains(count_)) takeRow();
        }
    }

    void takeRow() {
        std::vector<std::string> values;
        for (std::size_t i = 0; i < rows_.columns().size(); ++i) {
            values.push_back(rows_.value(i).value_or(""));
            const bool isWritten = settings_.mode != TargetMode::FieldArray || i == key_;
            if (isWritten && rows_.isText(i)) script_.value(rows_.columns()[i], values.back());
        }
        if (hasKey()) {
            const bool isArray = settings_.mode == TargetMode::FieldArray;
            if (!isArray && needsKey(settings_)) script_.key(values[key_]);
            tally_.add(values[key_]);
        }
        if (kept_.size() < mostKept) kept_.push_back(std::move(values));
    }

    void checkKey() {
        const bool isNamed =
            settings_.mode == TargetMode::DataStructure && !settings_.table.empty();
        if (isNamed) ladder_.records = std::min<std::size_t>(1, *ladder_.records);
        if (!needsKey(settings_)) return ladder_.ok(Stage::Key, "none is needed");
        if (*ladder_.records == 0) return;
        if (!hasKey()) return tellKeyMissing();
        if (settings_.mode == TargetMode::FieldArray) return ladder_.ok(Stage::Key, settings_.key);
        ladder_.records = tally_.entries();
        tally_.tell(ladder_);
        if (ladder_.at(Stage::Key).state == State::Warning) proposeKeys();
    }

    void tellKeyMissing() {
        ladder_.records = 0;
        ladder_.fail(Stage::Key, settings_.key,
                     "None of the columns of the query is " + quoted(settings_.key) +
                         ". They are: " + listOf(rows_.columns()) + ".",
                     "Set \"Key\" (key) to one of these, or add it to the query.");
        const std::string near = nearName(settings_.key, rows_.columns());
        if (!near.empty()) ladder_.propose(Stage::Key, {{"key", near}});
        proposeKeys();
    }

    /// By the first rows alone: what is proposed is loaded before it is shown.
    void proposeKeys() {
        std::size_t proposed = 0;
        for (std::size_t i = 0; i < rows_.columns().size(); ++i) {
            KeyTally tally(rows_.columns()[i], "column");
            for (const std::vector<std::string>& row : kept_)
                tally.add(row[i]);
            if (tally.entries() == kept_.size() && proposed++ < mostProposals)
                ladder_.propose(Stage::Key, {{"key", rows_.columns()[i]}});
        }
        ladder_.propose(Stage::Key, {{"mode", "DataArray"}});
    }

    const Settings& settings_;
    const RowRange range_;
    Rows& rows_;
    Ladder& ladder_;
    KeyTally tally_;
    ScriptCheck script_;
    std::size_t key_ = 0;  // a column; the number of columns where there is none
    std::size_t count_ = 0;
    std::vector<std::vector<std::string>> kept_;
};

bool givesNoRecords(const QueryText& query) {
    constexpr std::array verbs{"INSERT", "UPDATE", "DELETE", "MERGE",   "REPLACE",
                               "CREATE", "DROP",   "ALTER",  "TRUNCATE"};
    const bool returns =
        std::any_of(query.words().begin(), query.words().end(),
                    [](const QueryWord& word) { return isKeyword(word, "RETURNING"); });
    return !returns && std::find(verbs.begin(), verbs.end(), query.verb()) != verbs.end();
}

/// A query that may write is the plugin's to run, and that only on wish.
void tellNotRun(const Settings& settings, const QueryText& query, bool mayWrite, Ladder& ladder) {
    std::size_t offset = 0;
    const std::string seen = shownQuery(settings.query, offset);
    ladder.mustNotLoad = !mayWrite;
    if (givesNoRecords(query))
        return ladder.fail(Stage::Selection, seen,
                           query.verb() + " gives no records, so nothing arrives." +
                               (mayWrite ? "" : " It was not run, since it writes."),
                           "Set \"SQL Query\" (query) to a SELECT.");
    if (mayWrite) return;
    ladder.warn(
        Stage::Selection, seen,
        "It is not certain that the query only reads, so it was not run: what is run is one "
        "plain SELECT or WITH.",
        "Explain it with --allow-writes, which runs it.");
}

void tellQueryFailure(const Settings& settings, const DatabaseFailure& failure, bool mayWrite,
                      Database& database, Ladder& ladder) {
    ladder.mustNotLoad = !mayWrite;
    if (failure.fault == DatabaseFault::Query)
        return QueryStop(settings.query, failure.what(), database).tell(ladder);
    if (failure.fault == DatabaseFault::Write)
        return tellNotRun(settings, QueryText(settings.query), mayWrite, ladder);
    std::size_t offset = 0;
    ladder.fail(Stage::Selection, shownQuery(settings.query, offset), failure.what(), failure.next);
    ladder.isLate = failure.fault == DatabaseFault::Late;
}

/// A query whose first word is misspelt; false when it is not.
bool tellMisspelt(const Settings& settings, const QueryText& query, Ladder& ladder) {
    const std::string verb = query.verb();
    const std::string near = nearName(verb, {"SELECT", "WITH"});
    if (verb.empty() || near.empty() || near == verb) return false;
    const QueryWord& word = query.words().front();
    Step step;
    step.state = State::Failed;
    step.placeOffset = word.offset;
    step.seen = shownQuery(settings.query, step.placeOffset);
    step.place = word.text;
    step.cause = "No query begins with this word.";
    step.next = "Correct \"SQL Query\" (query).";
    ladder.add(Stage::Selection, step);
    ladder.propose(
        Stage::Selection,
        {{"query", std::string(settings.query).replace(word.offset, word.length, near)}});
    return true;
}

void lookAtQuery(const Settings& settings, bool mayWrite, Database& database, Ladder& ladder) {
    const QueryText query(settings.query);
    ladder.mustNotLoad = query.isBlank() && !mayWrite;
    if (query.isBlank())
        return ladder.fail(Stage::Selection, "", "\"SQL Query\" (query) is empty.",
                           "Set it to a SELECT; explore lists the tables.");
    try {
        if (tellMisspelt(settings, query, ladder)) return;
        const bool isCertain = query.isCertain() || database.hasPlainSyntax();
        if (!query.isReading() || !isCertain) return tellNotRun(settings, query, mayWrite, ladder);
        const auto rows = database.query(settings.query);
        QueryLook(settings, *rows, ladder).look();
    } catch (const DatabaseFailure& failure) {
        tellQueryFailure(settings, failure, mayWrite, database, ladder);
    }
}

}  // namespace

void lookAtDatabase(const Settings& settings, bool mayWrite, Deadline end, Ladder& ladder) {
    using Clock = std::chrono::steady_clock;
    const std::string place = placeOfDatabase(settings.connStr);
    const auto start = Clock::now();
    try {
        const auto database = openDatabase(settings.connStr, end);
        const std::chrono::duration<double, std::milli> taken = Clock::now() - start;
        ladder.ok(Stage::Address, place);
        ladder.ok(Stage::Fetched,
                  "connected, " + std::to_string(std::lround(taken.count())) + " ms");
        ladder.ok(Stage::Format, database->words());
        lookAtQuery(settings, mayWrite, *database, ladder);
        const auto look = [&](const Settings& mended) {
            Ladder again;
            checkSettings(mended, again);
            lookAtQuery(mended, mayWrite, *database, again);
            return again;
        };
        completeRemedies(settings, look, mostProposals, start + (end - start) / 2, ladder);
    } catch (const DatabaseFailure& failure) {
        tellNotOpened(place, failure, ladder);
    }
}

}  // namespace probe
