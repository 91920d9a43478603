#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/Platform.h"
#include "readers/sql/SQLHandler.h"
#include "tests/fakes/platform/FakeClock.h"
#include "tests/fakes/platform/FakeDatabases.h"

namespace intake {

/// A reader whose databases are fake. What a test leaves out of the request asks for everything.
/// The log is off unless a test asks for it.
class SQLHandlerFixture : public testing::Test {
protected:
    SQLHandlerFixture();

    bool read() { return handler_.Read(request_, script_, error_); }

    /// The script of a load in that mode. Fails the test when the load does, or when the data store
    /// cannot carry its script out.
    std::string script(TargetMode mode);

    /// The same without carrying it out, for what the store does not take.
    std::string scriptAlone(TargetMode mode);

    /// The error text of a load in that mode, which must fail.
    std::string error(TargetMode mode);

    /// The fields of an empty data store after a script.
    static std::string stored(const std::string& script);

    FakeClock clock_;
    FakeDatabases databases_;
    EndMark endMark_;
    ReaderLogger logger_{clock_, systemPlatform().textFiles};
    SQLHandler handler_{logger_, databases_, endMark_};
    RequestRecord request_;
    std::string script_, error_;
};

}  // namespace intake
