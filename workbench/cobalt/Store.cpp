#include "workbench/cobalt/Store.h"

#include <new>
#include <unordered_set>
#include <utility>
#include <vector>

#include "workbench/cobalt/script_parser.h"

namespace cobalt {

Field::Field(std::string name) : name_(std::move(name)), value_(std::make_shared<Value>()) {}

void Field::set(Value value, Origin origin) {
    value_ = std::make_shared<Value>(std::move(value));
    origin_ = origin;
}

void Field::assign(const Target& target, Value value, Origin origin) {
    if (target.kind == Target::Kind::Whole) return set(std::move(value), origin);
    const bool isShared = value_.use_count() > 1;
    if (isShared) value_ = std::make_shared<Value>(*value_);
    if (value_->isScalar()) origin_ = {};
    cobalt::assign(*value_, target, std::move(value), origin);
}

void Field::restore(Field&& copy) noexcept {
    value_.swap(copy.value_);
    origin_ = copy.origin_;
}

Store Store::copyIf(const std::function<bool(const Field&)>& isWanted) const {
    Store copy;
    for (const Field& field : fields_) {
        if (isWanted(field)) copy.add(field);
    }
    return copy;
}

Field& Store::add(Field field) {
    Field& added = fields_.emplace_back(std::move(field));
    byName_.emplace(added.name(), &added);
    return added;
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
    return add(Field(std::string(name)));
}

/// What a script has changed so far, which is taken back unless it was all.
class Store::Change {
public:
    explicit Change(Store& store) : store_(store), fieldsBefore_(store.fields_.size()) {}
    ~Change() {
        if (isWhole_) return;
        for (Former& former : former_)
            former.field->restore(std::move(former.content));
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
            former_.push_back({known, *known});
        }
        return field;
    }

    void keep() { isWhole_ = true; }

private:
    struct Former {
        Field* field;
        Field content;  // shares its value
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
