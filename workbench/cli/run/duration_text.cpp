#include "workbench/cli/run/duration_text.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace workbench {

namespace {

struct Unit {
    double below;  // which seconds it is used
    double seconds;
    const char* format;
};

constexpr std::array units{Unit{0.9995, 0.001, "%.0f ms"}, Unit{9.95, 1, "%.1f s"},
                           Unit{99.5, 1, "%.0f s"},        Unit{5970, 60, "%.0f min"},
                           Unit{171000, 3600, "%.0f h"},   Unit{1e300, 86400, "%.0f d"}};
constexpr std::size_t wholeSeconds = 2;

std::string inUnits(double seconds, const Unit* unit) {
    while (seconds >= unit->below)
        ++unit;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), unit->format, seconds / unit->seconds);
    return text.data();
}

}  // namespace

std::string durationText(double seconds) {
    return inUnits(seconds, units.data());
}

std::string calmDurationText(double seconds) {
    return inUnits(std::floor(seconds), &units[wholeSeconds]);
}

}  // namespace workbench
