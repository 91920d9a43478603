#pragma once

#include <cstddef>
#include <string>

namespace bench {

/// A JSON document of at least `bytes` bytes and at most one item more, always the same for the
/// same size: {"items":[{"id":1,"name":"…","price":12.34,"flag":true,"tags":["a","b"],
/// "nested":{"x":1}},…]}. Names vary in length; some hold text beyond ASCII, some hold escapes.
std::string jsonItems(size_t bytes);

}  // namespace bench
