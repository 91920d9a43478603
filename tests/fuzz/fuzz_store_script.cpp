// Any script is carried out or refused with a place inside it; a refused one changes nothing.

#include <cstdlib>

#include "tests/fuzz/FuzzInput.h"
#include "workbench/cobalt/Store.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    cobalt::Store store;
    const auto error = store.execute(intake::FuzzInput(data, size).rest());
    if (error && (!store.empty() || error->line == 0 || error->column == 0)) {
        std::abort();
    }
    return 0;
}
