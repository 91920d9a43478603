#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/Platform.h"
#include "readers/html/HTMLHandler.h"
#include "tests/fakes/platform/FakeClock.h"
#include "tests/fakes/platform/FakeConnections.h"
#include "tests/fakes/platform/FakeHtml.h"

namespace intake {

/// A reader of a fake page, which has one row of names and one of values:
///
///     body
///       div #results .wide "Results"
///         table (a) #first .grid
///       p .note "Closing prices 2024"
///       section #prices ".wide new"
///         h2
///         table (b) .b
///       aside #empty .aside "Aside"
///
/// The log is off unless a test asks for it.
class HTMLHandlerFixture : public testing::Test {
protected:
    HTMLHandlerFixture() {
        logger_.setLevel(-1);
        html_.unreachable.clear();
        html_.page = {
            {.name = "body", .text = "all of it"},
            {.name = "div", .parent = 0, .id = "results", .className = "wide", .text = "Results"},
            {.name = "a", .parent = 1, .isTable = true, .id = "first", .className = "grid"},
            {.name = "p", .parent = 0, .className = "note", .text = "Closing prices 2024"},
            {.name = "section", .parent = 0, .id = "prices", .className = "wide new"},
            {.name = "h2", .parent = 4, .text = "Closing prices"},
            {.name = "b", .parent = 4, .isTable = true, .className = "b"},
            {.name = "aside", .parent = 0, .id = "empty", .className = "aside", .text = "Aside"},
        };
        for (FakeHtml::Element& each : html_.page) {
            each.text = each.text.empty() ? "text of " + each.name : each.text;
        }
        html_.rows = {{"name"}, {"x"}};
        request_.filename = "page.html";
        request_.key = "name";
        request_.table = 'T';
        request_.targetMode = DATA_FIELD_ARRAY;
        request_.fromRow = 1;
        request_.numRows = 1000000;
    }

    bool read() { return handler_.Read(request_, script_, error_); }

    FakeClock clock_;
    FakeHtml html_;
    EndMark endMark_;
    ReaderLogger logger_{clock_, systemPlatform().textFiles};
    FakeConnections connections_;
    HTMLHandler handler_{logger_, html_, connections_, endMark_};
    RequestRecord request_;
    std::string script_, error_;
};

}  // namespace intake
