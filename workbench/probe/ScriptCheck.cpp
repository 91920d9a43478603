#include "workbench/probe/ScriptCheck.h"

#include <variant>

#include "workbench/cobalt/script_parser.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

using cobalt::Assignment;
using cobalt::Assignments;
using cobalt::Target;
using cobalt::Value;

constexpr std::string_view structural = "=[]{};,\"";

/// The only assignment of a script; none when there are others or when it cannot be read.
const Assignment* onlyAssignment(const std::variant<Assignments, cobalt::ScriptError>& parsed) {
    const auto* const assignments = std::get_if<Assignments>(&parsed);
    return assignments != nullptr && assignments->size() == 1 ? &assignments->front() : nullptr;
}

/// The only member of a record of the name "r" that a script sets.
const cobalt::Entry* onlyMember(const std::variant<Assignments, cobalt::ScriptError>& parsed) {
    const Assignment* const record = onlyAssignment(parsed);
    const bool isRecord = record != nullptr && record->value.kind() == cobalt::Kind::Structure &&
                          record->value.entries().size() == 1;
    return isRecord ? &*record->value.entries().begin() : nullptr;
}

bool nameArrives(std::string_view name) {
    if (name.empty()) return false;
    const std::string script = "r={" + std::string(name) + "=\"\"x\"\";};";
    const auto parsed = cobalt::parseScript(script);
    const cobalt::Entry* const member = onlyMember(parsed);
    return member != nullptr && member->key == name && member->value.text() == "x";
}

bool keyArrives(std::string_view key) {
    const std::string script = "r[" + std::string(key) + "]={a=\"\"x\"\";};";
    const auto parsed = cobalt::parseScript(script);
    const Assignment* const record = onlyAssignment(parsed);
    const bool isEntry = record != nullptr && record->target.kind == Target::Kind::Entry;
    return isEntry && record->target.key == key;
}

std::string framed(std::string_view value, ScriptCheck::Frame frame) {
    const std::string_view quotes = frame == ScriptCheck::Frame::Doubled  ? "\"\""
                                    : frame == ScriptCheck::Frame::Single ? "\""
                                                                          : "";
    return std::string(quotes) + std::string(value) + std::string(quotes);
}

/// What the store makes of a value.
struct Arrival {
    bool isWhole = false;
    std::string behind;  // the names of what is set behind the value's end
};

Arrival arrivalOf(std::string_view value, ScriptCheck::Frame frame) {
    const std::string script = "r={v=" + framed(value, frame) + ";};";
    const auto parsed = cobalt::parseScript(script);
    const cobalt::Entry* const member = onlyMember(parsed);
    Arrival arrival;
    arrival.isWhole =
        member != nullptr && member->value.isScalar() && member->value.text() == value;
    const auto* const assignments = std::get_if<Assignments>(&parsed);
    if (arrival.isWhole || assignments == nullptr) return arrival;
    std::vector<std::string> names;
    for (const Assignment& each : *assignments) {
        if (&each != &assignments->front()) names.emplace_back(each.target.name);
    }
    const Value& record = assignments->front().value;
    for (const cobalt::Entry& each : record.entries()) {
        if (each.key != "v") names.push_back(each.key);
    }
    arrival.behind = names.empty() ? "" : listOf(names);
    return arrival;
}

bool mayBreak(std::string_view value, ScriptCheck::Frame frame) {
    return frame == ScriptCheck::Frame::None
               ? value.find_first_of(structural) != std::string_view::npos
               : value.find('"') != std::string_view::npos;
}

}  // namespace

void ScriptCheck::name(std::string_view name) {
    const auto [known, isNew] = names_.try_emplace(std::string(name), true);
    if (isNew) known->second = nameArrives(name);
    if (known->second || !isNew) return;
    if (badNames_.count++ == 0)
        badNames_.first = name.empty()
                              ? "A field has no name."
                              : "The name " + quoted(name) + " cannot stand in a script as it is.";
}

void ScriptCheck::key(std::string_view key) {
    const bool isPlain = key.find_first_of("]\r\n\t ") == std::string_view::npos;
    if (isPlain || keyArrives(key)) return;
    if (badKeys_.count++ == 0)
        badKeys_.first = "The key " + quoted(key) + " cannot stand in brackets as it is.";
}

void ScriptCheck::value(std::string_view name, std::string_view value) {
    if (!mayBreak(value, frame_)) return;
    const Arrival arrival = arrivalOf(value, frame_);
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
        ladder.warn(Stage::Script, "values are copied as they are", finding->first + others,
                    "Have it written otherwise in the source, or leave it out of what is loaded.");
    }
    ladder.ok(Stage::Script, "");
}

}  // namespace probe
