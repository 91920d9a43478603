#pragma once

#include <cstddef>
#include <deque>
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
class Field {
public:
    explicit Field(std::string name) : name_(std::move(name)) {}

    const std::string& name() const { return name_; }
    const Value& value() const { return value_; }
    Value& value() { return value_; }

    /// Of a value that was assigned as a whole; entries that were assigned one by one have theirs.
    Origin origin() const { return origin_; }

    void set(Value value, Origin origin) {
        value_ = std::move(value);
        origin_ = origin;
    }

    /// Sets the value, or the part of it that the target means.
    void assign(const Target& target, Value value, Origin origin);

    /// Sets the value to a text, whatever it looks like.
    void setText(std::string text) { set(Value::text(std::move(text)), {}); }

private:
    std::string name_;
    Value value_;
    Origin origin_;
};

/// The data store of a scene: fields by name, in order of creation. Used on one thread. Fields are
/// never removed.
class Store {
public:
    Store() = default;
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

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

    std::deque<Field> fields_;                             // a deque, so that fields stay in place
    std::unordered_map<std::string_view, Field*> byName_;  // names belong to the fields
};

}  // namespace cobalt
