#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "workbench/cobalt/Entries.h"

namespace cobalt {

/// How deep braces and parentheses may stand in each other.
inline constexpr int maxNesting = 500;

enum class Kind { Text, Number, Structure, Array };

/// A value of the data store. Owned by its field or by the value that it is part of; copies are
/// deep, moves are cheap. Nesting is limited, so that a value may be walked by
/// recursion.
class Value {
public:
    Value() = default;  ///< an empty text

    static Value text(std::string text);
    static Value number(double number);  ///< written with up to 15 significant digits
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

    /// The entries of a structure or an array, which is left without them.
    Entries takeEntries() &&;

    /// Sets the member or element of that name. A text or a number gives way to an array.
    void assignEntry(std::string_view key, Value value, Origin origin);

    /// Sets all these members or elements. A text or a number gives way to an array.
    void assignEntries(Entries entries, Origin origin);

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

    Entries& requireEntries();

    std::variant<std::string, Number, Structure, Array> content_;  // in the order of Kind
};

/// A member of a structure or an element of an array.
struct Entry {
    std::string key;
    Value value;
    Origin origin;  // of one that was assigned by itself
};

}  // namespace cobalt
