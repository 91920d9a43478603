#include "workbench/probe/explain/QueryStop.h"

#include <algorithm>
#include <array>

#include "formats/text/ascii.h"
#include "formats/text/fold_case.h"
#include "workbench/probe/database/sql_names.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

constexpr std::string_view ellipsis = "…";

bool isWordCharacter(char c) {
    return intake::isLetter(c) || intake::isDigit(c) || c == '_' || c == '$' || !intake::isAscii(c);
}

bool isSame(const std::string& one, const std::string& other) {
    return intake::foldCase(one) == intake::foldCase(other);
}

bool isKeyword(const QueryWord& word) {
    constexpr std::array keywords{"SELECT", "FROM", "WHERE",  "JOIN", "ON",    "GROUP",
                                  "ORDER",  "BY",   "HAVING", "AS",   "LIMIT", "WITH"};
    return std::any_of(keywords.begin(), keywords.end(),
                       [&](const char* each) { return isKeyword(word, each); });
}

/// Whether a message has the name as a word of its own, and not before a dot; `quotesOnly`: at the
/// end of what stands within quotes.
bool names(const std::string& message, const std::string& name, bool quotesOnly) {
    constexpr std::string_view quotes = "\"'`]";
    for (auto at = message.find(name); at != std::string::npos; at = message.find(name, at + 1)) {
        const char before = at == 0 ? ' ' : message[at - 1];
        const auto end = at + name.size();
        const char behind = end == message.size() ? ' ' : message[end];
        const bool isBeforeDot =
            behind == '.' && end + 1 < message.size() && isWordCharacter(message[end + 1]);
        const bool isWord = !isWordCharacter(before) && !isWordCharacter(behind) && !isBeforeDot;
        if (isWord && (!quotesOnly || quotes.find(behind) != std::string_view::npos)) return true;
    }
    return false;
}

std::string withoutDigits(std::string name) {
    std::erase_if(name, intake::isDigit);
    return name;
}

/// A letter more or less makes another word of a short one, as of "wage" "age", and another number
/// another column of any.
std::string nearColumn(const std::string& wanted, std::vector<std::string> names) {
    constexpr std::size_t shortest = 5;
    std::erase_if(names, [&](const std::string& name) {
        return (wanted.size() < shortest && name.size() != wanted.size()) ||
               withoutDigits(name) == withoutDigits(wanted);
    });
    return nearName(wanted, names);
}

}  // namespace

std::string shownQuery(const std::string& query, std::size_t& offset) {
    constexpr std::size_t longest = 70;  // bytes
    constexpr std::size_t before = 30;
    std::string line = query;
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
    const auto isInside = [&](std::size_t at) {
        return (static_cast<unsigned char>(line[at]) & 0xC0U) == 0x80;
    };
    if (line.size() <= longest) return line;
    std::size_t start = offset > before ? offset - before : 0;
    std::size_t end = std::min(line.size(), start + longest);
    while (start > 0 && isInside(start))
        --start;
    while (end < line.size() && isInside(end))
        ++end;
    std::string shown = start == 0 ? "" : std::string(ellipsis);
    offset = offset - start + shown.size();
    shown += line.substr(start, end - start);
    return end == line.size() ? shown : shown + std::string(ellipsis);
}

QueryStop::QueryStop(const std::string& query, const std::string& refusal, Database& database)
    : query_(query),
      refusal_(refusal),
      database_(database),
      text_(query),
      usedTables_(text_.tables()),
      tables_(database.tables()) {}

/// Databases name it within quotes, but not all of them and not always.
const QueryWord* QueryStop::refusedWord() const {
    const std::vector<QueryWord>& words = text_.words();
    for (const bool quotesOnly : {true, false}) {
        const auto found = std::find_if(words.begin(), words.end(), [&](const QueryWord& word) {
            return !word.text.empty() && !isKeyword(word) && names(refusal_, word.text, quotesOnly);
        });
        if (found != words.end()) return &*found;
    }
    return nullptr;
}

bool QueryStop::isTable(const QueryWord& word) const {
    return std::any_of(usedTables_.begin(), usedTables_.end(),
                       [&](const QueryWord& table) { return table.offset == word.offset; });
}

std::vector<std::string> QueryStop::columnsOfTables() const {
    std::vector<std::string> names;
    for (const TableEntry& table : tables_) {
        const bool isUsed =
            std::any_of(usedTables_.begin(), usedTables_.end(),
                        [&](const QueryWord& each) { return isSame(each.text, table.name); });
        if (!isUsed) continue;
        for (const ColumnEntry& column : database_.columns(table))
            names.push_back(column.name);
    }
    return names;
}

std::vector<std::string> QueryStop::namesFor(const QueryWord& word) const {
    if (!isTable(word)) return columnsOfTables();
    std::vector<std::string> names;
    for (const TableEntry& table : tables_)
        names.push_back(table.name);
    return names;
}

std::string QueryStop::causeOf(const QueryWord& word, const std::vector<std::string>& there) const {
    const bool isThere = std::any_of(there.begin(), there.end(), [&](const std::string& name) {
        return isSame(name, word.text);
    });
    const std::string said = asSentence(refusal_);
    if (isThere || there.empty()) return said;
    return said + (isTable(word) ? " The database has: " : " The tables of the query have: ") +
           listOf(there) + ".";
}

/// Those that may have been meant, the likeliest first. Any table may be; but a column that is
/// named otherwise would bring wrong values.
std::vector<std::string> QueryStop::meantBy(const QueryWord& word,
                                            const std::vector<std::string>& there) const {
    if (!isTable(word)) return {nearColumn(word.text, there)};
    std::vector<std::string> names{nearName(word.text, there)};
    names.insert(names.end(), there.begin(), there.end());
    names.resize(std::min(names.size(), mostProposals));
    return names;
}

/// The query with the name replaced by those that may have been meant.
void QueryStop::proposeMended(const QueryWord& word, const std::vector<std::string>& there,
                              Ladder& ladder) const {
    for (const std::string& name : meantBy(word, there)) {
        if (name.empty()) continue;
        const auto table = std::find_if(tables_.begin(), tables_.end(),
                                        [&](const TableEntry& each) { return each.name == name; });
        const bool hasSchema = isTable(word) && table != tables_.end();
        const std::string written =
            hasSchema ? writtenName(*table, database_) : writtenName(name, database_);
        ladder.propose(Stage::Selection,
                       {{"query", std::string(query_).replace(word.offset, word.length, written)}});
    }
}

void QueryStop::tell(Ladder& ladder) const {
    const QueryWord* const word = refusedWord();
    Step step;
    step.state = State::Failed;
    step.placeOffset = word == nullptr ? 0 : word->offset;
    step.seen = shownQuery(query_, step.placeOffset);
    step.cause = asSentence(refusal_);
    step.next = "Correct \"SQL Query\" (query).";
    if (word != nullptr) {
        const bool isName = refusal_.find("syntax") == std::string::npos;
        const std::vector<std::string> there =
            isName ? namesFor(*word) : std::vector<std::string>();
        step.place = query_.substr(word->offset, word->length);
        step.cause = causeOf(*word, there);
        proposeMended(*word, there, ladder);
    }
    ladder.add(Stage::Selection, step);
}

}  // namespace probe
