#include "workbench/probe/nearest_name.h"

#include <algorithm>
#include <limits>

#include "formats/text/ascii.h"

namespace probe {

namespace {

// Levenshtein's distance, row by row.
std::size_t editDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row[b.size()];
}

}  // namespace

std::size_t typingErrors(std::string_view wanted, std::string_view name) {
    return editDistance(intake::lowerCase(wanted), intake::lowerCase(name));
}

std::string nearestName(std::string_view wanted, const std::vector<std::string>& names) {
    std::string nearest;
    std::size_t smallest = std::numeric_limits<std::size_t>::max();
    for (const std::string& name : names) {
        const std::size_t missing =
            std::max(wanted.size(), name.size()) - std::min(wanted.size(), name.size());
        if (missing >= smallest) continue;  // each takes an error
        const std::size_t distance = typingErrors(wanted, name);
        if (distance >= smallest) continue;
        smallest = distance;
        nearest = name;
    }
    return nearest;
}

}  // namespace probe
