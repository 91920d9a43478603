#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "workbench/cobalt/ScriptError.h"
#include "workbench/cobalt/Value.h"

namespace cobalt {

struct Target;

/// One named field of a store. Owned by its store, at the same address as long as the store lives.
/// Copies are cheap: they share the value until one of them is changed.
class Field {
public:
    explicit Field(std::string name);

    const std::string& name() const { return name_; }
    const Value& value() const { return *value_; }

    /// Of a value that was assigned as a whole; entries that were assigned one by one have theirs.
    Origin origin() const { return origin_; }

    void set(Value value, Origin origin);

    /// Sets the value, or the part of it that the target means.
    void assign(const Target& target, Value value, Origin origin);

    /// Sets the value to a text, whatever it looks like.
    void setText(std::string text) { set(Value::text(std::move(text)), {}); }

    /// Takes the value and the origin of a copy back.
    void restore(Field&& copy) noexcept;

private:
    std::string name_;
    std::shared_ptr<Value> value_;  // never null
    Origin origin_;
};

/// The data store of a scene: fields by name, in order of creation. Used on one thread. Fields are
/// never removed.
class Store {
public:
    Store() = default;
    Store(Store&&) = default;
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

    /// A copy with those fields that are wanted. It may be used on another thread, but goes on the
    /// one of this store.
    Store copyIf(const std::function<bool(const Field&)>& isWanted) const;

    /// The field of that name, or null.
    Field* find(std::string_view name);
    const Field* find(std::string_view name) const;

    /// The field of that name, made with an empty text when there is none.
    Field& define(std::string_view name);

    /// Carries out the assignments of `script`, making the fields that they name. A script that
    /// does not parse, or that there is no memory for, changes nothing and gives its first error.
    /// What is assigned bears the origin.
    std::optional<ScriptError> execute(std::string_view script, Origin origin = {});

    std::size_t size() const { return fields_.size(); }
    bool empty() const { return fields_.empty(); }
    auto begin() const { return fields_.begin(); }
    auto end() const { return fields_.end(); }

private:
    class Change;

    Field& add(Field field);

    std::deque<Field> fields_;                             // a deque, so that fields stay in place
    std::unordered_map<std::string_view, Field*> byName_;  // names belong to the fields
};

}  // namespace cobalt
