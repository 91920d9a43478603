#pragma once

#include <string>
#include <string_view>

namespace workbench {

/// What arrives at the plugin's reader of a text that its command frames by bars and leaves as it
/// stands: a backslash makes the next character literal, and a bar ends the text.
std::string receivedText(std::string_view text);

}  // namespace workbench
