#include "formats/text/fold_case.h"

#include <algorithm>
#include <iterator>

#include "formats/text/ascii.h"
#include "formats/text/lower_case.h"
#include "formats/text/utf8.h"

namespace intake {

namespace {

char32_t lower(char32_t character) {
    const auto* const range = std::lower_bound(
        std::begin(LOWER_CASE), std::end(LOWER_CASE), character,
        [](const LowerCaseRange& each, char32_t wanted) { return each.last < wanted; });
    const bool hasLowerCase = range != std::end(LOWER_CASE) && character >= range->first &&
                              (character - range->first) % range->step == 0;
    return hasLowerCase ? static_cast<char32_t>(static_cast<int32_t>(character) + range->distance)
                        : character;
}

}  // namespace

std::string foldCase(std::string_view text) {
    if (!isValidUtf8(text)) {
        return std::string(text);
    }
    std::string folded;
    folded.reserve(text.size());
    while (!text.empty()) {
        const Utf8Character character = utf8CharacterAt(text);
        text.remove_prefix(character.length);
        if (character.length == 1) {
            folded += toLower(static_cast<char>(character.code));
        } else {
            appendUtf8(lower(character.code), folded);
        }
    }
    return folded;
}

}  // namespace intake
