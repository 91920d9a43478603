#pragma once

#include <string>
#include <vector>

#include "workbench/cli/run/InstanceState.h"

namespace workbench {

/// What a terminal can show.
struct Screen {
    std::size_t columns = 80;
    std::size_t rows = 24;
    bool hasUnicode = false;
    bool hasColours = false;

    bool operator==(const Screen&) const = default;
};

/// A line for each instance below a header, in the order of the scene. Where there is not room for
/// all, the most urgent ones, and a line that counts the others. None is wider than the screen.
std::vector<std::string> displayLines(const std::vector<InstanceState>& states,
                                      const Screen& screen);

}  // namespace workbench
