#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "host/cobalt.h"
#include "host/lumo.h"

namespace cobaltlib {

/// What the library keeps for its whole process. Owned by the Host; host's thread only.
struct Library {
    int32_t (*print)(const char* format, ...) = &_lumoprintf;
    int32_t initialisationPending = 0;
    std::map<const IDataHandler*, std::string> boundFields;  // the field that each handler binds to
};

}  // namespace cobaltlib
