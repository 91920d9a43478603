#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/Platform.h"
#include "readers/xml/XMLHandler.h"
#include "tests/fakes/platform/FakeClock.h"
#include "tests/fakes/platform/FakeConnections.h"
#include "tests/fakes/platform/FakeXml.h"

namespace intake {

/// A reader whose XML services are fake. The log is off unless a test asks for it.
class XMLHandlerFixture : public testing::Test {
protected:
    XMLHandlerFixture();

    bool read() { return handler_.Read(request_, script_, error_); }

    FakeClock clock_;
    FakeXml xml_;
    EndMark endMark_;
    ReaderLogger logger_{clock_, systemPlatform().textFiles};
    FakeConnections connections_;
    XMLHandler handler_{logger_, xml_, connections_, endMark_};
    RequestRecord request_;
    std::string script_, error_;
};

}  // namespace intake
