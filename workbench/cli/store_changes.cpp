#include "workbench/cli/store_changes.h"

#include <algorithm>
#include <utility>

#include "workbench/cli/display_text.h"
#include "workbench/cli/value_text.h"

namespace workbench {

namespace {

using cobalt::Entries;
using cobalt::Entry;
using cobalt::Field;
using cobalt::Origin;
using cobalt::Value;
using Kind = StoreChange::Kind;

bool isSame(const Value& one, const Value& other) {
    if (&one == &other) return true;
    if (one.kind() != other.kind()) return false;
    if (one.isScalar()) return one.text() == other.text();
    return std::equal(
        one.entries().begin(), one.entries().end(), other.entries().begin(), other.entries().end(),
        [](const Entry& a, const Entry& b) { return a.key == b.key && isSame(a.value, b.value); });
}

std::string textOf(const Value* value) {
    return value == nullptr ? "" : startOf(*value);
}

class Comparison {
public:
    Comparison(Origin load, std::size_t most) : load_(load), most_(most) {}

    void compare(const Field* before, const Field& after) {
        const bool hasEntries =
            !after.value().isScalar() && (before == nullptr || !before->value().isScalar());
        if (!hasEntries)
            return judge(after, "", before == nullptr ? nullptr : &before->value(), &after.value(),
                         after.origin());
        const Entries none;
        compare(after, before == nullptr ? none : before->value().entries());
    }

    StoreChanges take() { return std::move(changes_); }

private:
    void compare(const Field& field, const Entries& before) {
        const Entries& after = field.value().entries();
        for (const Entry& entry : after) {
            const bool hasOwn = entry.origin.writer != 0;
            judge(field, entry.key, before.find(entry.key), &entry.value,
                  hasOwn ? entry.origin : field.origin());
        }
        for (const Entry& entry : before) {
            if (after.find(entry.key) == nullptr)
                judge(field, entry.key, &entry.value, nullptr, {});
        }
    }

    void judge(const Field& field, const std::string& key, const Value* before, const Value* after,
               Origin origin) {
        const bool isOlder = origin.writer == load_.writer && origin.moment != load_.moment;
        if (before == nullptr) {
            note(Kind::New, field, key, before, after, 0);
        } else if (after == nullptr) {
            note(Kind::Gone, field, key, before, after, 0);
        } else if (!isSame(*before, *after)) {
            note(Kind::Changed, field, key, before, after, 0);
        } else if (isOlder) {
            note(Kind::Left, field, key, before, after, origin.moment);
        } else {
            ++changes_.same;
        }
    }

    void note(Kind kind, const Field& field, const std::string& key, const Value* before,
              const Value* after, std::uint32_t moment) {
        if (changes_.listed.size() == most_) {
            ++changes_.leftOut;
            return;
        }
        changes_.listed.push_back(
            {kind, toUtf8(field.name()), toUtf8(key), textOf(before), textOf(after), moment});
    }

    const Origin load_;
    const std::size_t most_;
    StoreChanges changes_;
};

}  // namespace

StoreChanges compareStores(const cobalt::Store& before, const cobalt::Store& after, Origin load,
                           std::size_t most) {
    Comparison comparison(load, most);
    for (const Field& field : after)
        comparison.compare(before.find(field.name()), field);
    return comparison.take();
}

}  // namespace workbench
