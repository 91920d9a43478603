#include "workbench/cobalt/Store.h"

#include <new>
#include <unordered_set>
#include <utility>
#include <vector>

#include "workbench/cobalt/script_parser.h"

namespace cobalt {

void Field::assign(const Target& target, Value value, Origin origin) {
    const bool isWhole = target.kind == Target::Kind::Whole;
    if (isWhole || value_.isScalar()) origin_ = isWhole ? origin : Origin{};
    cobalt::assign(value_, target, std::move(value), origin);
}

Field* Store::find(std::string_view name) {
    const auto found = byName_.find(name);
    return found == byName_.end() ? nullptr : found->second;
}

const Field* Store::find(std::string_view name) const {
    const auto found = byName_.find(name);
    return found == byName_.end() ? nullptr : found->second;
}

Field& Store::define(std::string_view name) {
    if (Field* field = find(name)) return *field;
    Field& field = fields_.emplace_back(std::string(name));
    byName_.emplace(field.name(), &field);
    return field;
}

/// What a script has changed so far, which is taken back unless it was all.
class Store::Change {
public:
    explicit Change(Store& store) : store_(store), fieldsBefore_(store.fields_.size()) {}
    ~Change() {
        if (isWhole_) return;
        for (Former& former : former_)
            former.field->set(std::move(former.value), former.origin);
        while (store_.fields_.size() > fieldsBefore_) {
            store_.byName_.erase(store_.fields_.back().name());
            store_.fields_.pop_back();
        }
    }
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;

    /// A field that is about to be changed; it is made where there is none.
    Field& fieldOf(std::string_view name) {
        Field* const known = store_.find(name);
        Field& field = known != nullptr ? *known : store_.define(name);
        if (touched_.insert(&field).second && known != nullptr) {
            former_.push_back({known, known->value(), known->origin()});
        }
        return field;
    }

    void keep() { isWhole_ = true; }

private:
    struct Former {
        Field* field;
        Value value;
        Origin origin;
    };

    Store& store_;
    const std::size_t fieldsBefore_;
    std::unordered_set<const Field*> touched_;
    std::vector<Former> former_;
    bool isWhole_ = false;
};

std::optional<ScriptError> Store::execute(std::string_view script, Origin origin) {
    try {
        auto parsed = parseScript(script);
        if (auto* error = std::get_if<ScriptError>(&parsed)) return std::move(*error);
        Change change(*this);
        auto& assignments = std::get<Assignments>(parsed);
        for (; !assignments.empty(); assignments.pop_front()) {
            Assignment& next = assignments.front();
            change.fieldOf(next.target.name).assign(next.target, std::move(next.value), origin);
        }
        change.keep();
        return std::nullopt;
    } catch (const std::bad_alloc&) {
        return ScriptError{1, 1, "not enough memory for it"};
    }
}

}  // namespace cobalt
