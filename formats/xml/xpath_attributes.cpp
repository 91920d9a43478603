#include "formats/xml/xpath_attributes.h"

#include <algorithm>
#include <array>

#include "formats/xml/xpath_rewriting.h"

namespace intake {

/// Looked for wherever they stand, also in names and literals. EACH_FUNCTION can be called by an
/// expression itself, with a step that is put together when it is evaluated.
bool mayLookAtAttributes(std::string_view expression) {
    constexpr std::array<std::string_view, 4> WAYS{"@", "attribute", "lang", EACH_FUNCTION};
    return std::any_of(WAYS.begin(), WAYS.end(), [expression](std::string_view way) {
        return expression.find(way) != std::string_view::npos;
    });
}

}  // namespace intake
