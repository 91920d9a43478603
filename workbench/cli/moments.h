#pragma once

#include <cstdint>

namespace workbench {

/// The time in hundredths of a second, from 1 on since it was asked for first. Loads of an instance
/// are further apart.
std::uint32_t momentNow();

/// How long ago a moment was.
double secondsSince(std::uint32_t moment);

}  // namespace workbench
