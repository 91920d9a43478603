#pragma once

#include <string_view>

namespace intake {

/// Whether what an expression finds may depend on attributes; false only where it surely does not.
/// Declarations of namespaces are none. Of a document without xml:id and DTD, in which id() finds
/// nothing.
bool mayLookAtAttributes(std::string_view expression);

}  // namespace intake
