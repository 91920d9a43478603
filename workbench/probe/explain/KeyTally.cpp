#include "workbench/probe/explain/KeyTally.h"

#include <algorithm>

#include "workbench/cobalt/Target.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

constexpr std::size_t mostExamples = 20;

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
    const bool isNew = std::find(examples_.begin(), examples_.end(), *key) == examples_.end();
    if (isNew && examples_.size() < mostExamples) examples_.emplace_back(*key);
}

void KeyTally::tell(Ladder& ladder) const {
    const std::string all = std::to_string(records_);
    if (repeated_ > 0) {
        ladder.warn(Stage::Key, key_,
                    "The keys are not unique: " + counted(repeated_, "record") + " of " + all +
                        (repeated_ == 1 ? " takes" : " take") +
                        " the place of an earlier one with the same key: " + listOf(examples_) +
                        ". " + counted(seen_.size(), "record") +
                        (seen_.size() == 1 ? " is left." : " are left."),
                    std::string("Set \"Key\" (key) to a ") + thing_ +
                        " that differs from record to record, or \"Field is a: \" (mode) to "
                        "DataArray.");
    } else if (missing_ > 0) {
        ladder.warn(Stage::Key, key_,
                    std::to_string(missing_) + " of " + counted(records_, "record") +
                        (missing_ == 1 ? " has no such " : " have no such ") + thing_ +
                        (missing_ == 1 ? " and is left out." : " and are left out."));
    } else if (empty_ > 0) {
        ladder.warn(Stage::Key, key_, "The key of " + counted(empty_, "record") + " is empty.");
    } else {
        ladder.ok(Stage::Key, key_);
    }
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
