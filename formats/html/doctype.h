#pragma once

#include <string_view>

#include "formats/html/Token.h"

namespace intake::html {

/// Reads what stands between "<!doctype" and ">". The name is as written.
void parseDoctype(std::string_view declaration, Token& token);

/// Whether a page with this doctype is laid out as browsers of the nineties did.
bool asksForQuirks(const Token& doctype);

}  // namespace intake::html
