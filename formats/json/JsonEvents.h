#pragma once

#include <rapidjson/reader.h>

#include <cstdint>
#include <string_view>
#include <vector>

#include "formats/json/JsonDocument.h"

namespace intake {

/// Appends one entry per value of a document, or of one row of it after the other. An event that
/// answers false ends the parse.
class JsonEvents {
public:
    using Length = rapidjson::SizeType;

    JsonEvents(const char* text, std::vector<JsonEntry>& entries)
        : text_(text), entries_(entries) {}

    bool Null() { return append(Type::NULL_VALUE, 0, 0); }
    bool Bool(bool value) { return append(Type::BOOL, 0, value ? 1 : 0); }
    bool RawNumber(const char* characters, Length length, bool) {
        return append(Type::NUMBER, offset(characters), length);
    }
    bool String(const char* characters, Length length, bool) {
        return append(Type::STRING, offset(characters), length);
    }
    bool Key(const char* characters, Length length, bool) {
        nameOffset_ = offset(characters);
        nameLength_ = length;
        return length <= JsonEntry::MAX_NAME_LENGTH;
    }
    bool StartObject() { return open(Type::OBJECT); }
    bool StartArray() { return open(Type::ARRAY); }
    bool EndObject(Length members) { return close(members); }
    bool EndArray(Length elements) { return close(elements); }

    /// The name of the value that comes next; empty when it has none.
    std::string_view name() const { return {text_ + nameOffset_, nameLength_}; }
    void dropName() { nameLength_ = 0; }

private:
    using Type = JsonDocument::Type;

    uint32_t offset(const char* characters) const {
        return static_cast<uint32_t>(characters - text_);
    }

    bool append(Type type, uint32_t position, uint32_t length) {
        JsonEntry entry{};
        entry.position = position;
        entry.length = length;
        entry.nameOffset = nameOffset_;
        entry.nameLength = nameLength_ & JsonEntry::MAX_NAME_LENGTH;
        entry.type = static_cast<uint32_t>(type) & 0xFU;
        entries_.push_back(entry);
        nameLength_ = 0;
        return true;
    }

    bool open(Type type) {
        open_.push_back(static_cast<uint32_t>(entries_.size()));
        return append(type, 0, 0);
    }

    bool close(Length children) {
        JsonEntry& container = entries_[open_.back()];
        container.position = static_cast<uint32_t>(entries_.size());
        container.length = children;
        open_.pop_back();
        return true;
    }

    const char* text_;
    std::vector<JsonEntry>& entries_;
    std::vector<uint32_t> open_;
    uint32_t nameOffset_ = 0;
    uint32_t nameLength_ = 0;
};

}  // namespace intake
