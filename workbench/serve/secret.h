#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace serve {

/// 256 random bits, in hexadecimal digits.
std::string newSecret();

/// Whether a text is the secret. Takes as long for any text of the same length.
bool isSecret(std::string_view text, std::string_view secret);

/// The secret of the server before on this port, so that its pages need not be opened anew. A new
/// one for the port 0, which stands for any, and where there is none that can be trusted.
std::string sessionSecret(uint16_t port);

}  // namespace serve
