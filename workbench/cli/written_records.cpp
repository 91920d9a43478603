#include "workbench/cli/written_records.h"

#include <algorithm>
#include <array>
#include <functional>
#include <unordered_map>
#include <unordered_set>
#include <variant>

#include "workbench/cli/UsageError.h"
#include "workbench/cobalt/number_text.h"

namespace workbench {

namespace {

using cobalt::Assignment;
using cobalt::Assignments;
using cobalt::Kind;
using cobalt::Target;
using cobalt::Value;

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

Assignments assignmentsOf(std::string_view script) {
    auto parsed = cobalt::parseScript(script);
    auto* assignments = std::get_if<Assignments>(&parsed);
    return assignments != nullptr ? std::move(*assignments) : Assignments{};
}

std::uint64_t mixed(std::uint64_t mark, std::uint64_t more) {
    return (mark ^ more) * 0x9E3779B97F4A7C15U + (mark >> 29U);
}

std::uint64_t markOf(std::string_view text) {
    return std::hash<std::string_view>()(text);
}

std::uint64_t markOf(const Value& value) {
    std::uint64_t mark = static_cast<std::uint64_t>(value.kind());
    if (value.isScalar()) return mixed(mark, markOf(value.text()));
    for (const cobalt::Entry& entry : value.entries())
        mark = mixed(mixed(mark, markOf(entry.key)), markOf(entry.value));
    return mark;
}

/// The numbers among plain values and the members of structures.
class NumberList {
public:
    void add(const std::string& name, const Value& value, int depth) {
        constexpr int deepest = 4;
        constexpr int mostVisited = 2000;
        if (++visited_ > mostVisited || numbers_.size() == mostNumbers) return;
        if (value.isScalar()) return addScalar(name, value);
        if (value.kind() != Kind::Structure || depth == deepest) return;
        for (const cobalt::Entry& member : value.entries())
            add(name + "." + member.key, member.value, depth + 1);
    }

    std::vector<WrittenNumber> take() { return std::move(numbers_); }

private:
    void addScalar(const std::string& name, const Value& value) {
        const auto number = cobalt::parseNumber(value.text());
        if (number) numbers_.push_back({name, *number, value.kind() == Kind::Text});
    }

    static constexpr std::size_t mostNumbers = 200;
    int visited_ = 0;
    std::vector<WrittenNumber> numbers_;
};

}  // namespace

WrittenRecords::Settings WrittenRecords::settingsOf(const lumo::ParameterTable& parameters,
                                                    const lumo::Record& record) {
    constexpr int32_t sql = 1;  // behind EXCEL, before the other query types
    constexpr int32_t json = 3;
    const int32_t queryMode = numberOf("queryMode", parameters, record);
    return {static_cast<Mode>(numberOf("mode", parameters, record)),
            queryMode <= sql,
            queryMode == json && textOf("xpath", parameters, record).empty(),
            !textOf("key", parameters, record).empty(),
            textOf("varsPrefix", parameters, record),
            textOf("delimiter", parameters, record),
            textOf("rowsDelimiter", parameters, record)};
}

WrittenRecords::WrittenRecords(std::string_view written, const lumo::ParameterTable& parameters,
                               const lumo::Record& record)
    : written_(written), settings_(settingsOf(parameters, record)) {
    if (settings_.mode != Mode::SharedMemory) assignments_ = assignmentsOf(written);
}

std::size_t WrittenRecords::count() const {
    if (settings_.mode == Mode::SharedMemory) return pieces().size();
    if (settings_.isWhole) return countWhole();
    switch (settings_.mode) {
        case Mode::FieldArray:
            return countElements();
        case Mode::Structure:
            return countFields();
        default:
            return countEntries();
    }
}

std::size_t WrittenRecords::countEntries() const {
    std::unordered_set<std::string> keys;
    for (const Assignment& each : assignments_) {
        if (each.target.kind != Target::Kind::Whole)
            keys.insert(cobalt::entrySetBy(each.target.key));
    }
    return keys.size();
}

// Pages write their count without the prefix.
bool WrittenRecords::isCount(std::string_view name) const {
    constexpr std::string_view count = "READER_NUM_RECORDS";
    return name.ends_with(count) &&
           (name.size() == count.size() || name == settings_.prefix + std::string(count));
}

std::size_t WrittenRecords::countFields() const {
    std::unordered_set<std::string_view> names;
    for (const Assignment& each : assignments_) {
        if (!isCount(each.target.name)) names.insert(each.target.name);
    }
    return names.size();
}

std::size_t WrittenRecords::countElements() const {
    std::size_t elements = 0;
    for (const Assignment& each : assignments_) {
        if (each.target.kind == Target::Kind::Range) elements += each.value.entries().size();
    }
    return elements;
}

std::size_t WrittenRecords::countWhole() const {
    std::size_t records = countElements();
    for (const Assignment& each : assignments_) {
        if (each.target.kind == Target::Kind::Whole) ++records;
    }
    return records;
}

// A query that "Number of rows" cuts short ends with a delimiter, behind which no record stands.
std::vector<std::string_view> WrittenRecords::pieces() const {
    const std::string& delimiter = settings_.recordDelimiter();
    std::string_view rest = written_;
    if (rest.empty()) return {};
    if (delimiter.empty()) return {rest};
    if (settings_.isQuery && rest.ends_with(delimiter)) rest.remove_suffix(delimiter.size());
    std::vector<std::string_view> pieces;
    for (auto end = rest.find(delimiter); end != std::string_view::npos;
         end = rest.find(delimiter)) {
        pieces.push_back(rest.substr(0, end));
        rest.remove_prefix(end + delimiter.size());
    }
    pieces.push_back(rest);
    return pieces;
}

std::optional<std::vector<std::uint64_t>> WrittenRecords::marks() const {
    constexpr std::size_t mostLookedThrough = 256U << 10;
    if (written_.size() > mostLookedThrough) return std::nullopt;
    std::vector<std::uint64_t> marks;
    if (settings_.mode == Mode::SharedMemory) {
        for (const std::string_view piece : pieces())
            marks.push_back(markOf(piece));
    } else if (settings_.isWhole || settings_.mode == Mode::FieldArray) {
        marks = marksOfElements();
    } else {
        marks = marksOfNamed();
    }
    std::sort(marks.begin(), marks.end());
    return marks;
}

std::vector<std::uint64_t> WrittenRecords::marksOfElements() const {
    std::vector<std::uint64_t> marks;
    for (const Assignment& each : assignments_) {
        if (each.target.kind == Target::Kind::Range) {
            for (const cobalt::Entry& element : each.value.entries())
                marks.push_back(markOf(element.value));
        } else if (settings_.isWhole && each.target.kind == Target::Kind::Whole) {
            marks.push_back(markOf(each.value));
        }
    }
    return marks;
}

/// Of entries, or of the fields that a structure is written to: several assignments may set one.
std::vector<std::uint64_t> WrittenRecords::marksOfNamed() const {
    const bool isStructure = settings_.mode == Mode::Structure;
    std::unordered_map<std::string, std::uint64_t> byName;
    for (const Assignment& each : assignments_) {
        const bool isRecord =
            isStructure ? !isCount(each.target.name) : each.target.kind != Target::Kind::Whole;
        if (!isRecord) continue;
        std::string name =
            isStructure ? std::string(each.target.name) : cobalt::entrySetBy(each.target.key);
        const std::uint64_t start = isStructure || settings_.hasKey ? markOf(name) : 0;
        std::uint64_t& mark = byName.try_emplace(std::move(name), start).first->second;
        mark = mixed(mark, markOf(each.value));
    }
    std::vector<std::uint64_t> marks;
    for (const auto& [name, mark] : byName)
        marks.push_back(mark);
    return marks;
}

std::vector<WrittenNumber> WrittenRecords::numbers() const {
    NumberList numbers;
    for (const Assignment& each : assignments_) {
        if (each.target.kind == Target::Kind::Whole)
            numbers.add(std::string(each.target.name), each.value, 0);
    }
    return numbers.take();
}

std::size_t writtenRecords(std::string_view written, const lumo::ParameterTable& parameters,
                           const lumo::Record& record) {
    return WrittenRecords(written, parameters, record).count();
}

bool isCountable(const lumo::ParameterTable& parameters, const lumo::Record& record) {
    const WrittenRecords::Settings settings = WrittenRecords::settingsOf(parameters, record);
    if (settings.mode != WrittenRecords::Mode::SharedMemory) return true;
    const bool dividesFieldsToo = settings.isQuery && settings.rowsDelimiter == settings.delimiter;
    return !settings.recordDelimiter().empty() && !dividesFieldsToo;
}

void requireCountable(const lumo::ParameterTable& parameters, const lumo::Record& record) {
    if (isCountable(parameters, record)) return;
    const WrittenRecords::Settings settings = WrittenRecords::settingsOf(parameters, record);
    const char* const name = settings.isQuery ? "rowsDelimiter" : "delimiter";
    if (settings.recordDelimiter().empty())
        throw UsageError(std::string("--expect-records cannot count the records of a text that "
                                     "nothing divides; set ") +
                         name + ".");
    throw UsageError(
        "--expect-records cannot tell records from fields when both are divided by \"" +
        settings.delimiter + "\"; set rowsDelimiter to something else.");
}

}  // namespace workbench
