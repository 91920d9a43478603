#pragma once

#include <string>
#include <string_view>

namespace intake {

// The functions that are called instead of unions and of double slashes within a path.
constexpr const char* UNION_FUNCTION = "_union";
constexpr const char* DESCENDANTS_FUNCTION = "_descendants";  // with the nodes themselves
constexpr const char* PARENTS_FUNCTION = "_parents";          // those of them that have children

/// The expression in a form that libxml2 evaluates rightly and soon. Unions, and double slashes
/// within a path, call functions that whoever evaluates it supplies: the library compares each node
/// of one side with each of the other. The axis is written out before a name that begins beyond
/// ASCII: the library does not know an absolute path by such a name. What is no expression stays
/// none.
std::string rewrittenXPath(std::string_view expression);

}  // namespace intake
