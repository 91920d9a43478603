#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace cobalt {

enum class Kind { Text, Number, Structure, Array };

struct Entry;
class KeyIndex;
class Value;

/// The members of a structure or the elements of an array: named by text, in order of creation,
/// each name once. The elements of a list are named "0", "1", "2" and so on. Finding is quick for
/// any number of entries. References and positions hold until the next entry is added.
class Entries {
public:
    Entries();
    explicit Entries(std::vector<Entry> entries);  ///< of entries that share a name the last holds
    Entries(const Entries& other);
    Entries(Entries&& other) noexcept;
    Entries& operator=(Entries other) noexcept;
    ~Entries();

    std::size_t size() const;
    bool empty() const { return size() == 0; }
    const Entry* begin() const;
    const Entry* end() const;
    const Entry& operator[](std::size_t position) const;

    /// The value of that name, or null.
    const Value* find(std::string_view key) const;
    Value* find(std::string_view key);

    /// Sets the value of that name. An entry that exists keeps its place.
    void assign(std::string_view key, Value value);

private:
    std::vector<Entry> entries_;
    std::unique_ptr<KeyIndex> index_;  // null while there are too few entries to need one
};

/// A value of the data store. Owned by its field or by the value that it is part of; copies are
/// deep, moves are cheap. Nested at most maxNesting deep (see Script.h), so that it may be walked
/// by recursion.
class Value {
public:
    Value() = default;  ///< an empty text

    static Value text(std::string text);
    static Value number(double number);
    static Value structure(Entries members);
    static Value array(Entries elements);

    /// An unquoted value: a number when it reads as one, which keeps its writing, else a text.
    static Value fromUnquoted(std::string_view written);

    Kind kind() const { return static_cast<Kind>(content_.index()); }
    bool isScalar() const { return kind() == Kind::Text || kind() == Kind::Number; }

    /// A text as it is and a number as it was written (7.50 stays 7.50); empty for anything else.
    const std::string& text() const;

    /// The number, infinite when it is beyond the range of a double; 0 for anything else.
    double number() const;

    /// The members of a structure, the elements of an array; none for anything else.
    const Entries& entries() const;

    /// Sets the member or element of that name. A text or a number gives way to an array.
    void assignEntry(std::string_view key, Value value);

private:
    struct Number {
        std::string written;
    };
    struct Structure {
        Entries members;
    };
    struct Array {
        Entries elements;
    };

    std::variant<std::string, Number, Structure, Array> content_;  // in the order of Kind
};

/// A member of a structure or an element of an array.
struct Entry {
    std::string key;
    Value value;
};

}  // namespace cobalt
