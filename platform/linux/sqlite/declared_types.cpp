#include "platform/linux/sqlite/declared_types.h"

#include <algorithm>
#include <array>

#include "formats/text/ascii.h"

namespace intake {

namespace {

struct TypeRow {
    std::string_view word;  // the first of the name, behind which may follow more: NUMERIC(9,2)
    DeclaredType type;
};

constexpr std::array<TypeRow, 14> TYPES{{
    {"bool", DeclaredType::BOOLEAN},
    {"boolean", DeclaredType::BOOLEAN},
    {"bit", DeclaredType::BOOLEAN},
    {"date", DeclaredType::DATE},
    {"datetime", DeclaredType::DATE},
    {"datetime2", DeclaredType::DATE},
    {"time", DeclaredType::DATE},
    {"timetz", DeclaredType::DATE},
    {"timestamp", DeclaredType::DATE},
    {"timestamptz", DeclaredType::DATE},
    {"numeric", DeclaredType::REAL},
    {"float", DeclaredType::REAL},
    {"double", DeclaredType::REAL},
    {"real", DeclaredType::REAL},
}};

std::string_view firstWord(std::string_view name) {
    const auto end = std::find_if_not(name.begin(), name.end(), [](char character) {
        return isLetter(character) || isDigit(character) || character == '_';
    });
    return name.substr(0, static_cast<size_t>(end - name.begin()));
}

}  // namespace

DeclaredType declaredType(std::string_view name) {
    const std::string_view word = firstWord(name);
    const auto row = std::find_if(TYPES.begin(), TYPES.end(), [word](const TypeRow& each) {
        return equalIgnoringCase(word, each.word);
    });
    return row == TYPES.end() ? DeclaredType::OWN : row->type;
}

}  // namespace intake
