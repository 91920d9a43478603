#pragma once

#include "workbench/probe/database/Database.h"
#include "workbench/probe/database/QueryText.h"
#include "workbench/probe/explain/Ladder.h"

namespace probe {

/// Finds the name in a query that a database refuses, and what there is instead. Borrows all that
/// it is given.
class QueryStop {
public:
    QueryStop(const std::string& query, const std::string& refusal, Database& database);

    /// Notes where the query stops and what may mend it.
    void tell(Ladder& ladder) const;

private:
    const QueryWord* refusedWord() const;
    bool isTable(const QueryWord& word) const;
    std::string causeOf(const QueryWord& word, const std::vector<std::string>& there) const;
    std::vector<std::string> namesFor(const QueryWord& word) const;
    std::vector<std::string> columnsOfTables() const;
    std::vector<std::string> meantBy(const QueryWord& word,
                                     const std::vector<std::string>& there) const;
    void proposeMended(const QueryWord& word, const std::vector<std::string>& there,
                       Ladder& ladder) const;

    const std::string& query_;
    const std::string& refusal_;
    Database& database_;
    const QueryText text_;
    const std::vector<QueryWord> usedTables_;
    const std::vector<TableEntry> tables_;
};

/// The query in one line, of a long one the part around a place; `offset` becomes that place in it.
std::string shownQuery(const std::string& query, std::size_t& offset);

}  // namespace probe
