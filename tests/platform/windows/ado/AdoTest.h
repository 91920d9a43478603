#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/Platform.h"
#include "platform/windows/ado/AdoDatabases.h"
#include "readers/sql/SQLHandler.h"
#include "tests/fakes/platform/FakeClock.h"
#include "tests/support/AsWorker.h"

namespace intake {

/// The reader of databases over ADO.
class AdoTest : public testing::Test {
protected:
    AdoTest();

    /// Reads a query of that request; the script and the error text are then there.
    bool read(DatabaseServices& databases);

    /// The script of a query's load in that mode, which must not fail.
    std::string script(DatabaseServices& databases, TargetMode mode);

    RequestRecord request_;
    std::string script_, error_;

private:
    const AsWorker worker_;
    FakeClock clock_;
    ReaderLogger logger_{clock_, systemPlatform().textFiles};
    EndMark endMark_;
};

}  // namespace intake
