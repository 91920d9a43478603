#pragma once

#include <string>

#include "workbench/cobalt/Value.h"

namespace workbench {

/// The value in one line of UTF-8: a text or a number as it is, a structure as {a: 1, b: x}, an
/// array as [1, 2]. Long ones may be cut; they end with an ellipsis then.
std::string inlineText(const cobalt::Value& value);

/// The start of the same: at most 200 columns. As quick for long values as for short ones.
std::string startOf(const cobalt::Value& value);

/// Whether the keys of an array are 0, 1, 2 and so on, in order.
bool isList(const cobalt::Value& array);

/// A list of one structure, which is how scripts write table rows, counts as that structure.
const cobalt::Value& unwrapped(const cobalt::Value& value);

}  // namespace workbench
