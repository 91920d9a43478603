#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/Platform.h"
#include "readers/html/HTMLHandler.h"
#include "tests/fakes/platform/FakeClock.h"
#include "tests/fakes/platform/FakeConnections.h"
#include "tests/platform/windows/mshtml/PageDouble.h"

namespace intake {

/// The reader of HTML pages over urlmon and MSHTML, with stand-ins for their objects:
///
///     (a comment)
///     HTML
///       DIV #results .wide "Results"
///         TABLE (name, points / Brazil, 7)
///       SECTION #prices .new
///         H2 "Closing prices"
///         TABLE #second (code / A / B)
///       P #note
class MshtmlTest : public testing::Test {
protected:
    MshtmlTest();

    void TearDown() override { EXPECT_EQ(page_.calls.living(), 0); }

    bool read();

    /// The script of a load that takes the table of that selector, which must not fail.
    std::string script(const std::string& selector);

    /// The error text of a load that takes the table of that selector, which must fail.
    std::string error(const std::string& selector);

    PageDouble page_;
    RequestRecord request_;
    std::string script_, error_;

private:
    MshtmlServices services_{page_.factory(), page_.openStream()};
    FakeClock clock_;
    ReaderLogger logger_{clock_, systemPlatform().textFiles};
    FakeConnections connections_;
    EndMark endMark_;
};

}  // namespace intake
