#include "platform/linux/base/truth_words.h"

#include <algorithm>
#include <array>

#include "formats/text/ascii.h"

namespace intake {

namespace {

struct WordRow {
    std::string_view word;
    bool truth;
};

constexpr std::array<WordRow, 8> WORDS{{
    {"true", true},
    {"t", true},
    {"yes", true},
    {"y", true},
    {"false", false},
    {"f", false},
    {"no", false},
    {"n", false},
}};

}  // namespace

std::optional<bool> truthOf(std::string_view word) {
    const auto row = std::find_if(WORDS.begin(), WORDS.end(), [&](const WordRow& each) {
        return equalIgnoringCase(each.word, word);
    });
    return row == WORDS.end() ? std::nullopt : std::optional(row->truth);
}

}  // namespace intake
