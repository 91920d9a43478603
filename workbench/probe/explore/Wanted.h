#pragma once

#include <string>
#include <string_view>

#include "formats/text/fold_case.h"

namespace probe {

/// A text that is looked for, letter case aside. Plain value; any thread.
class Wanted {
public:
    explicit Wanted(std::string_view text) : folded_(intake::foldCase(text)) {}

    bool isNone() const { return folded_.empty(); }

    bool isIn(std::string_view text) const {
        return intake::foldCase(text).find(folded_) != std::string::npos;
    }

private:
    std::string folded_;
};

}  // namespace probe
