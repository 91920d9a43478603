#include "workbench/probe/explain/KeyTally.h"

#include <algorithm>
#include <initializer_list>

#include "workbench/cobalt/Target.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

constexpr std::size_t mostExamples = 20;

std::string joined(std::initializer_list<std::string> sentences) {
    std::string text;
    for (const std::string& each : sentences)
        text += (text.empty() || each.empty() ? "" : " ") + each;
    return text;
}

}  // namespace

void KeyTally::add(std::optional<std::string_view> key) {
    ++records_;
    if (!key) {
        ++missing_;
        return;
    }
    if (key->empty()) ++empty_;
    if (seen_.insert(cobalt::entrySetBy(*key)).second) return;
    ++repeated_;
    // Only an empty one would not be seen as it is.
    const std::string example(key->empty() ? quoted(*key) : *key);
    const bool isNew = std::find(examples_.begin(), examples_.end(), example) == examples_.end();
    if (isNew && examples_.size() < mostExamples) examples_.push_back(example);
}

void KeyTally::tell(Ladder& ladder) const {
    const std::string cause = joined({repeatedWords(), missingWords(), emptyWords()});
    if (cause.empty()) return ladder.ok(Stage::Key, key_);
    const std::string next =
        repeated_ == 0 ? ""
                       : std::string("Set \"Key\" (key) to a ") + thing_ +
                             " that differs from record to record, or \"Field is a: \" (mode) to "
                             "DataArray.";
    ladder.warn(Stage::Key, key_, cause, next);
}

std::string KeyTally::repeatedWords() const {
    if (repeated_ == 0) return "";
    return "The keys are not unique: " + counted(repeated_, "record") + " of " +
           std::to_string(records_) + (repeated_ == 1 ? " takes" : " take") +
           " the place of an earlier one with the same key: " + listOf(examples_) + ". " +
           counted(seen_.size(), "record") + (seen_.size() == 1 ? " is left." : " are left.");
}

std::string KeyTally::missingWords() const {
    if (missing_ == 0) return "";
    return std::to_string(missing_) + " of " + counted(records_, "record") +
           (missing_ == 1 ? " has no such " : " have no such ") + thing_ +
           (missing_ == 1 ? " and is left out." : " and are left out.");
}

std::string KeyTally::emptyWords() const {
    return empty_ == 0 ? "" : "The key of " + counted(empty_, "record") + " is empty.";
}

void tellOneStructure(std::size_t records, Ladder& ladder) {
    ladder.records = std::min<std::size_t>(1, records);
    if (records <= 1) return ladder.ok(Stage::Key, "none is needed");
    ladder.warn(Stage::Key, "none is used",
                "All " + counted(records, "record") +
                    " are written to the same structure, and each takes the place of the one "
                    "before. The last is left.",
                "Set \"Field is a: \" (mode) to DataArray, or load just one.");
    ladder.propose(Stage::Key, {{"mode", "DataArray"}});
}

}  // namespace probe
