#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace probe {

/// "1 record", "40 records".
std::string counted(std::size_t count, std::string_view thing);

/// The first few of the names, each in one line and cut where it is long, and how many more there
/// are, with `further` ones that are not among them: "id, name and 12 more". "nothing" when there
/// is none.
std::string listOf(const std::vector<std::string>& names, std::size_t further = 0);

/// A number of bytes: "7.1 kB".
std::string sizeText(std::size_t bytes);

/// The text in double quotes, in one line and cut where it is long.
std::string quoted(std::string_view text);

/// The text with a capital at its start and a full stop at its end.
std::string asSentence(std::string_view text);

/// The name that was probably meant: one that differs from `wanted` by few typing errors, letter
/// case aside. Empty when there is none.
std::string nearName(std::string_view wanted, const std::vector<std::string>& names);

}  // namespace probe
