#include "workbench/cli/written_records.h"

#include <array>
#include <string>
#include <unordered_set>
#include <variant>

#include "workbench/cli/UsageError.h"
#include "workbench/cobalt/script_parser.h"

namespace workbench {

namespace {

using cobalt::Assignment;
using cobalt::Assignments;
using cobalt::Target;

enum class Mode { Table, Array, Structure, FieldArray, SharedMemory };

// What decides how records are counted, from the record of the instance.
struct Settings {
    Mode mode;
    bool isQuery;  // of a database or a worksheet: their records are rows of several fields
    bool isWhole;  // JSON without a path to records: the document itself is written
    std::string prefix;
    std::string delimiter;
    std::string rowsDelimiter;

    const std::string& recordDelimiter() const { return isQuery ? rowsDelimiter : delimiter; }
};

int32_t numberOf(const char* name, const lumo::ParameterTable& parameters,
                 const lumo::Record& record) {
    const auto index = parameters.find(name);
    return index ? record.integer(*index) : 0;
}

std::string textOf(const char* name, const lumo::ParameterTable& parameters,
                   const lumo::Record& record) {
    const auto index = parameters.find(name);
    return index ? std::string(record.text(*index)) : "";
}

Settings settingsOf(const lumo::ParameterTable& parameters, const lumo::Record& record) {
    constexpr int32_t sql = 1;  // behind EXCEL, before the other query types
    constexpr int32_t json = 3;
    const int32_t queryMode = numberOf("queryMode", parameters, record);
    return {static_cast<Mode>(numberOf("mode", parameters, record)),
            queryMode <= sql,
            queryMode == json && textOf("xpath", parameters, record).empty(),
            textOf("varsPrefix", parameters, record),
            textOf("delimiter", parameters, record),
            textOf("rowsDelimiter", parameters, record)};
}

Assignments assignmentsOf(std::string_view script) {
    auto parsed = cobalt::parseScript(script);
    auto* assignments = std::get_if<Assignments>(&parsed);
    return assignments != nullptr ? std::move(*assignments) : Assignments{};
}

std::size_t countEntries(const Assignments& assignments) {
    std::unordered_set<std::string> keys;
    for (const Assignment& each : assignments) {
        if (each.target.kind != Target::Kind::Whole)
            keys.insert(cobalt::entrySetBy(each.target.key));
    }
    return keys.size();
}

// Pages write their count without the prefix.
std::size_t countFields(const Assignments& assignments, const std::string& prefix) {
    const std::array counts{std::string("READER_NUM_RECORDS"), prefix + "READER_NUM_RECORDS"};
    std::unordered_set<std::string_view> names;
    for (const Assignment& each : assignments) {
        const std::string_view name = each.target.name;
        if (name != counts[0] && name != counts[1]) names.insert(name);
    }
    return names.size();
}

std::size_t countElements(const Assignments& assignments) {
    std::size_t elements = 0;
    for (const Assignment& each : assignments) {
        if (each.target.kind == Target::Kind::Range) elements += each.value.entries().size();
    }
    return elements;
}

std::size_t countWhole(const Assignments& assignments) {
    std::size_t records = countElements(assignments);
    for (const Assignment& each : assignments) {
        if (each.target.kind == Target::Kind::Whole) ++records;
    }
    return records;
}

// A query that "Number of rows" cuts short ends with a delimiter, behind which no record stands.
std::size_t countPieces(std::string_view text, const Settings& settings) {
    const std::string& delimiter = settings.recordDelimiter();
    if (text.empty()) return 0;
    if (delimiter.empty()) return 1;
    if (settings.isQuery && text.ends_with(delimiter)) text.remove_suffix(delimiter.size());
    std::size_t pieces = 1;
    for (auto at = text.find(delimiter); at != std::string_view::npos;
         at = text.find(delimiter, at + delimiter.size()))
        ++pieces;
    return pieces;
}

}  // namespace

std::size_t writtenRecords(std::string_view written, const lumo::ParameterTable& parameters,
                           const lumo::Record& record) {
    const Settings settings = settingsOf(parameters, record);
    if (settings.mode == Mode::SharedMemory) return countPieces(written, settings);
    if (settings.isWhole) return countWhole(assignmentsOf(written));
    switch (settings.mode) {
        case Mode::FieldArray:
            return countElements(assignmentsOf(written));
        case Mode::Structure:
            return countFields(assignmentsOf(written), settings.prefix);
        default:
            return countEntries(assignmentsOf(written));
    }
}

void requireCountable(const lumo::ParameterTable& parameters, const lumo::Record& record) {
    const Settings settings = settingsOf(parameters, record);
    if (settings.mode != Mode::SharedMemory) return;
    const char* const name = settings.isQuery ? "rowsDelimiter" : "delimiter";
    if (settings.recordDelimiter().empty())
        throw UsageError(std::string("--expect-records cannot count the records of a text that "
                                     "nothing divides; set ") +
                         name + ".");
    if (settings.isQuery && settings.rowsDelimiter == settings.delimiter)
        throw UsageError(
            "--expect-records cannot tell records from fields when both are divided by \"" +
            settings.delimiter + "\"; set rowsDelimiter to something else.");
}

}  // namespace workbench
