#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace workbench {

/// A secret in the text of a parameter.
struct SecretPlace {
    std::size_t begin = 0;
    std::size_t length = 0;
    std::vector<std::string> forms;  // in which it may stand in other texts
    std::string inXml;               // that of a header as XML sends it: up to a further colon
};

/// The secrets in the text of a parameter, of any length, in their order: passwords, the user in an
/// address, the passwords of a connection string and the values of headers. None for other
/// parameters.
std::vector<SecretPlace> secretPlaces(std::string_view parameter, const std::string& text);

/// The names of the headers in a text of lines, as they stand there.
std::vector<std::string> headerNames(std::string_view text);

}  // namespace workbench
