#pragma once

#include <string_view>

namespace intake {

/// What the type that a column declares says of its values beyond those that SQLite has.
enum class DeclaredType {
    OWN,      // nothing: each value is of its own type
    BOOLEAN,  // integers and words such as "true" are booleans
    REAL,     // integers are numbers as those with a fraction are
    DATE,     // whatever is there is a date or time
};

/// By the first word of its name, in upper or lower case.
DeclaredType declaredType(std::string_view name);

}  // namespace intake
