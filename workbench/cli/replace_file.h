#pragma once

#include <filesystem>
#include <functional>
#include <string_view>

namespace workbench {

/// Gives a file a new content, at once for whoever reads it: the text is written to a new file
/// beside it, which then takes its name and its rights. Where there was none, others
/// may not read a private one. `isAllowed` is asked right before that, and may still say no. Throws
/// std::system_error, and changes nothing.
void replaceFile(const std::filesystem::path& file, std::string_view text, bool isPrivate,
                 const std::function<bool()>& isAllowed);

}  // namespace workbench
