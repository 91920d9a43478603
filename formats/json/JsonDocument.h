#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "formats/json/json_rows.h"
#include "formats/source/ByteBuffer.h"

namespace intake {

/// One node of a parsed document, as it is stored.
struct JsonEntry {
    static constexpr uint32_t MAX_NAME_LENGTH = (1U << 28) - 1;

    uint32_t position;  // of the text in the source; of a container, the node behind it
    uint32_t length;    // of the text; of a container, its children; of a bool, its value
    uint32_t nameOffset;
    uint32_t nameLength : 28;
    uint32_t type : 4;
};
static_assert(sizeof(JsonEntry) == 16);

/// A parsed JSON document: all its nodes in one array, each before its children, over the source
/// text that they point into. A node is named by its position; the root is 0. Duplicate members are
/// kept. Reading allocates nothing and the views hold as long as the document.
class JsonDocument {
public:
    using Node = uint32_t;

    enum class Type : uint32_t { NULL_VALUE, STRING, NUMBER, BOOL, ARRAY, OBJECT };

    static constexpr Node ROOT = 0;
    static constexpr Node NONE = ROOT;  // the root is nobody's child

    /// Parses `text`, which ends with a zero byte that counts; its strings are decoded in
    /// place. A UTF-8 byte-order mark is skipped. Nesting is limited by memory only. Throws
    /// std::invalid_argument with line, column and cause when the text is not JSON in UTF-8.
    explicit JsonDocument(ByteBuffer text);

    /// A document without nodes, to read rows of a text.
    JsonDocument() = default;

    /// Parses `text` as the constructor does, but keeps no more than a row: while the query's
    /// `take` runs, a wanted row is the root, and there is nothing beside it. Returns how many rows
    /// there were; those that were taken before it throws are void.
    int64_t readRows(ByteBuffer text, const JsonRowQuery& query);

    /// About how far the source is read where a node ends, in bytes.
    size_t sourceOffsetBehind(Node node) const;

    /// Bytes of the source text.
    size_t sourceSize() const { return text_.size(); }

    Type type(Node node) const { return static_cast<Type>(entries_[node].type); }

    bool isContainer(Node node) const { return type(node) >= Type::ARRAY; }

    /// The member's name; empty for the root, unless it is a row, and for elements of arrays.
    std::string_view name(Node node) const {
        return {text_.data() + entries_[node].nameOffset, entries_[node].nameLength};
    }

    /// Elements or members of a container.
    uint32_t childCount(Node node) const { return entries_[node].length; }

    /// The first child of a container that has one is the node behind it; the next sibling of a
    /// node is the node behind its last descendant.
    static Node firstChild(Node node) { return node + 1; }
    Node behind(Node node) const { return isContainer(node) ? entries_[node].position : node + 1; }

    /// The first member of that name, or NONE; also when the node is no object.
    Node find(Node node, std::string_view name) const;

    /// An array without objects and arrays among its elements.
    bool isFlatArray(Node node) const;

    /// A string's text, a number's characters as they stand in the source, true, false or null; a
    /// container has no text.
    std::string_view asString(Node node) const;

    bool asBool(Node node) const { return entries_[node].length != 0; }

private:
    int64_t parse(ByteBuffer text, const JsonRowQuery& query);

    ByteBuffer text_;
    std::vector<JsonEntry> entries_;
};

}  // namespace intake
