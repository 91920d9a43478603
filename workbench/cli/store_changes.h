#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "workbench/cobalt/Store.h"

namespace workbench {

/// What a load would make of a field, or of one entry of it. Texts are UTF-8, values in one line.
struct StoreChange {
    enum class Kind { New, Changed, Gone, Left };  // Left: it stays, from an older load

    Kind kind = Kind::New;
    std::string field;
    std::string key;  // of an entry; empty for the whole field
    std::string before;
    std::string after;
    std::uint32_t moment = 0;  // when a load wrote what is left
};

struct StoreChanges {
    std::vector<StoreChange> listed;  // the first few
    std::size_t leftOut = 0;          // further ones
    std::size_t same = 0;             // fields and entries that stay as they are
};

/// What a load, which has this origin, has made of a store: the store before and after it.
StoreChanges compareStores(const cobalt::Store& before, const cobalt::Store& after,
                           cobalt::Origin load, std::size_t most);

}  // namespace workbench
