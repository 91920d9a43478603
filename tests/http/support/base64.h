#pragma once

#include <string>
#include <string_view>

namespace intake {

std::string toBase64(std::string_view bytes);
std::string fromBase64(std::string_view text);

}  // namespace intake
