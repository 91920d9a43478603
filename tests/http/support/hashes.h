#pragma once

#include <string>
#include <string_view>

namespace intake {

// Both give the bytes of the hash.

std::string md5(std::string_view text);
std::string hmacMd5(std::string_view key, std::string_view text);

}  // namespace intake
