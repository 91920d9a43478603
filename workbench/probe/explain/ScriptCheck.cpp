#include "workbench/probe/explain/ScriptCheck.h"

#include <algorithm>
#include <optional>
#include <variant>

#include "workbench/cobalt/script_parser.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

using cobalt::Assignment;
using cobalt::Assignments;
using cobalt::Target;
using cobalt::Value;

using Parsed = std::variant<Assignments, cobalt::ScriptError>;

/// How a record of one member is written, or an array of one element; something follows, as in
/// every script.
struct Shape {
    std::string_view opening;
    std::string_view closing;
};
constexpr Shape listed{"r[0]={{", ";},}; z=1;"};
constexpr Shape nested{"r[0]={{", ";};}; z=1;"};
constexpr Shape flat{"r={", ";}; z=1;"};
constexpr Shape element{"r[0-0]=", "; z=1;"};

const Shape& shapeFor(const Settings& settings) {
    if (settings.mode == TargetMode::FieldArray) return element;
    if (settings.mode == TargetMode::DataStructure) return flat;
    return settings.queryMode == QueryType::Json ? listed : nested;
}

/// XML and queries frame the values of records by one double quote on each side, all else by two.
std::string_view quotesFor(const Settings& settings) {
    const bool areSingle =
        settings.mode != TargetMode::FieldArray &&
        (settings.queryMode == QueryType::Xml || settings.queryMode == QueryType::Excel ||
         settings.queryMode == QueryType::Sql);
    return areSingle ? "\"" : "\"\"";
}

std::string scriptWith(const Shape& shape, std::string_view content) {
    return std::string(shape.opening) + std::string(content) + std::string(shape.closing);
}

/// The only member or element that a script sets; none when it does anything else.
const cobalt::Entry* onlyEntry(const Parsed& parsed) {
    const auto* const assignments = std::get_if<Assignments>(&parsed);
    const bool isUsual = assignments != nullptr && assignments->size() == 2 &&
                         assignments->back().target.name == "z";
    if (!isUsual) return nullptr;
    const cobalt::Entry* entry = nullptr;
    for (const Value* value = &assignments->front().value; value->entries().size() == 1;
         value = &entry->value)
        entry = &*value->entries().begin();
    return entry != nullptr && entry->value.isScalar() ? entry : nullptr;
}

bool nameArrives(std::string_view name, const Settings& settings) {
    if (name.empty()) return false;
    const std::string script = scriptWith(shapeFor(settings), std::string(name) + "=\"\"x\"\"");
    const Parsed parsed = cobalt::parseScript(script);
    const cobalt::Entry* const member = onlyEntry(parsed);
    return member != nullptr && member->key == name && member->value.text() == "x";
}

/// The only thing that a script sets; none when it does anything else.
std::optional<Target> targetOf(const std::string& script) {
    const Parsed parsed = cobalt::parseScript(script);
    const auto* const assignments = std::get_if<Assignments>(&parsed);
    if (assignments == nullptr || assignments->size() != 1) return std::nullopt;
    return assignments->front().target;
}

bool keyArrivesInBrackets(std::string_view key) {
    // A dash may make a range of it.
    const bool isPlain = key.find_first_of("]-\r\n\t ") == std::string_view::npos;
    if (isPlain) return true;
    const std::string script = "r[" + std::string(key) + "]={a=\"\"x\"\";};";
    const auto target = targetOf(script);
    return target && target->kind == Target::Kind::Entry && target->key == key;
}

bool keyArrivesAsName(std::string_view key) {
    const std::string script = std::string(key) + "={a=\"\"x\"\";};";
    const auto target = targetOf(script);
    return target && target->kind == Target::Kind::Whole && target->name == key;
}

/// What the store makes of a value.
struct Arrival {
    bool isWhole = false;
    std::string behind;  // the names of what is set behind the value's end
};

/// The names of the members of a record besides the one that is asked for.
void addOtherMembers(const Value& record, std::vector<std::string>& names) {
    const Value* value = &record;
    while (value->entries().size() == 1 && !value->entries().begin()->value.isScalar())
        value = &value->entries().begin()->value;
    if (value->kind() != cobalt::Kind::Structure) return;
    for (const cobalt::Entry& each : value->entries()) {
        if (each.key != "v") names.push_back(each.key);
    }
}

Arrival arrivalOf(std::string_view value, const Settings& settings) {
    const Shape& shape = shapeFor(settings);
    const std::string quotes(quotesFor(settings));
    const std::string framed = quotes + std::string(value) + quotes;
    const std::string script = scriptWith(shape, (&shape == &element ? "" : "v=") + framed);
    const Parsed parsed = cobalt::parseScript(script);
    const cobalt::Entry* const entry = onlyEntry(parsed);
    Arrival arrival;
    arrival.isWhole = entry != nullptr && entry->value.text() == value;
    const auto* const assignments = std::get_if<Assignments>(&parsed);
    if (arrival.isWhole || assignments == nullptr) return arrival;
    std::vector<std::string> names;
    for (const Assignment& each : *assignments) {
        const std::string_view name = each.target.name;
        if (name != "r" && name != "z") names.emplace_back(name);
    }
    addOtherMembers(assignments->front().value, names);
    arrival.behind = names.empty() ? "" : listOf(names);
    return arrival;
}

}  // namespace

void ScriptCheck::name(std::string_view name) {
    const auto [known, isNew] = names_.try_emplace(std::string(name), true);
    if (isNew) known->second = nameArrives(name, settings_);
    if (known->second || !isNew) return;
    if (badNames_.count++ == 0)
        badNames_.first = name.empty()
                              ? "A field has no name, which a script needs."
                              : "The name " + quoted(name) + " cannot stand in a script as it is.";
}

void ScriptCheck::record(std::vector<std::string_view> names) {
    std::sort(names.begin(), names.end());
    for (auto same = std::adjacent_find(names.begin(), names.end()); same != names.end();
         same = std::adjacent_find(same + 1, names.end())) {
        if (repeatedNames_.contains(*same)) continue;
        repeatedNames_.emplace(*same);
        if (badNames_.count++ == 0)
            badNames_.first =
                "The name " + quoted(*same) + " comes twice in a record; the last value counts.";
    }
}

void ScriptCheck::key(std::string_view key) {
    const bool isName = settings_.mode == TargetMode::DataStructure;
    if (isName ? keyArrivesAsName(key) : keyArrivesInBrackets(key)) return;
    if (badKeys_.count++ == 0)
        badKeys_.first = "The key " + quoted(key) +
                         (isName ? " cannot stand in a script as a name."
                                 : " cannot stand in brackets as it is.");
}

void ScriptCheck::value(std::string_view name, std::string_view value) {
    // Behind the doubled quotes of a frame a list goes on, a member ends, or a record does.
    constexpr std::string_view startsThatEndAFrame = ",;}";
    const bool mayEndItsFrame =
        value.find('"') != std::string_view::npos ||
        (!value.empty() && startsThatEndAFrame.find(value.front()) != std::string_view::npos);
    if (!mayEndItsFrame) return;
    const Arrival arrival = arrivalOf(value, settings_);
    if (arrival.isWhole) return;
    Finding& finding = arrival.behind.empty() ? badValues_ : runningValues_;
    if (finding.count++ > 0) return;
    finding.first = "The value " + quoted(value) + (name.empty() ? "" : " of " + quoted(name)) +
                    " ends its own frame.";
    if (!arrival.behind.empty())
        finding.first += " What is behind its end is carried out: it sets " + arrival.behind + ".";
}

void ScriptCheck::tell(Ladder& ladder) const {
    for (const Finding* finding : {&runningValues_, &badValues_, &badNames_, &badKeys_}) {
        if (finding->count == 0) continue;
        const std::size_t more = finding->count - 1;
        const std::string others = more == 0   ? ""
                                   : more == 1 ? " There is 1 more."
                                               : " There are " + std::to_string(more) + " more.";
        ladder.warn(Stage::Script, "names and values are copied as they are",
                    finding->first + others,
                    "Have it written otherwise in the source, or leave it out of what is loaded.");
    }
    ladder.ok(Stage::Script, "");
}

}  // namespace probe
