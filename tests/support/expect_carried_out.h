#pragma once

#include <gtest/gtest.h>

#include <string>

#include "pipeline/RequestRecord.h"
#include "tests/workbench/cobalt/show.h"
#include "workbench/cobalt/Store.h"

namespace intake {

/// Fails the test when the data store cannot carry out the script of a load. What goes to shared
/// memory is no script.
inline void expectCarriedOut(const std::string& script, int32_t targetMode) {
    if (targetMode == SHARED_MEMORY) {
        return;
    }
    cobalt::Store store;
    if (const auto error = store.execute(script)) {
        ADD_FAILURE() << cobalt::show(*error) << "\n" << script;
    }
}

}  // namespace intake
