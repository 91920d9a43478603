#pragma once

#include "formats/html/Token.h"

namespace intake::html {

/// Gives the names of a start tag in foreign content their upper-case letters and prefixes, which
/// HTML does not know. The token's tag stays.
void adjustForeignNames(Token& token, Namespace space);

}  // namespace intake::html
