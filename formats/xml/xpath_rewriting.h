#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace intake {

// The functions that are called instead of unions and of double slashes within a path.
constexpr const char* UNION_FUNCTION = "_union";
constexpr const char* DESCENDANTS_FUNCTION = "_descendants";  // with the nodes themselves
constexpr const char* PARENTS_FUNCTION = "_parents";          // those of them that have children
constexpr const char* ELEMENTS_FUNCTION = "_elements";        // those of them that are elements

// The function that is called with nodes and a step's text: all that the step finds from each.
constexpr const char* EACH_FUNCTION = "_each";

/// The expression in a form that libxml2 evaluates rightly and soon. Unions, and double slashes
/// within a path, call functions that whoever evaluates it supplies: the library compares each node
/// of one side with each of the other. So do double slashes at the start where the library would
/// collect all nodes of the document, of which it holds only so many. The axis is written out
/// before a name that begins beyond ASCII: the library does not know an absolute path by such a
/// name. What is no expression stays none. `steps` receives the texts that EACH_FUNCTION is called
/// with: what is wrong with one would show only where it is reached.
std::string rewrittenXPath(std::string_view expression, std::vector<std::string>& steps);

}  // namespace intake
