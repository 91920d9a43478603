#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "plugin/Intake.h"
#include "tests/fakes/host/FakeHost.h"
#include "tests/plugin/SteppedPlatform.h"
#include "tests/plugin/TestRecord.h"
#include "tests/plugin/entry_points.h"

namespace intake {

using Calls = std::vector<std::string>;

/// What every test of the frame has: a system, a host, and a record with the registered defaults.
class PluginTest : public testing::Test {
protected:
    /// Binds an instance to the record and forgets the calls that this took.
    Intake& bindInstance() {
        PLUGIN_LOAD(record.get());
        host.initPending = 0;
        host.takeCalls();
        return *record->instance;
    }

    ReaderParams& params() { return record.params(); }

    SteppedPlatform platform;
    FakeHost host;
    TestRecord record;
};

}  // namespace intake
