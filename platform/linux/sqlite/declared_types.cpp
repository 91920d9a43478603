#include "platform/linux/sqlite/declared_types.h"

#include <algorithm>
#include <array>

#include "formats/text/ascii.h"

namespace intake {

namespace {

struct TypeRow {
    std::string_view start;  // of the name, which may go on: BOOLEAN, TIMESTAMP, NUMERIC(9,2)
    DeclaredType type;
};

constexpr std::array<TypeRow, 8> TYPES{{
    {"bool", DeclaredType::BOOLEAN},
    {"bit", DeclaredType::BOOLEAN},
    {"date", DeclaredType::DATE},
    {"time", DeclaredType::DATE},
    {"numeric", DeclaredType::REAL},
    {"float", DeclaredType::REAL},
    {"double", DeclaredType::REAL},
    {"real", DeclaredType::REAL},
}};

}  // namespace

DeclaredType declaredType(std::string_view name) {
    const auto row = std::find_if(TYPES.begin(), TYPES.end(), [name](const TypeRow& each) {
        return startsWithIgnoringCase(name, each.start);
    });
    return row == TYPES.end() ? DeclaredType::OWN : row->type;
}

}  // namespace intake
