#pragma once

#include <array>

namespace intake {

using CallNames = std::array<char, 512>;

/// The exported functions that the caller was called from, the innermost first: "inner < outer".
/// Asks for no memory, so that it can be called within an allocation and after a crash; for the
/// first time while there is some.
CallNames callNames();

}  // namespace intake
