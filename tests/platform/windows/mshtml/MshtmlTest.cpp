#include "tests/platform/windows/mshtml/MshtmlTest.h"

namespace intake {

MshtmlTest::MshtmlTest() {
    logger_.setLevel(-1);
    page_.nodes = {
        {.name = ""},
        {.name = "HTML", .text = "all of it"},
        {.name = "DIV", .parent = 1, .id = "results", .className = "wide", .text = "Results"},
    };
    page_.addTable(2, {{"name", "points"}, {"Brazil", "7"}});
    const size_t section = page_.nodes.size();
    page_.nodes.push_back({.name = "SECTION", .parent = 1, .id = "prices", .className = "new"});
    page_.nodes.push_back({.name = "H2", .parent = section, .text = "Closing prices"});
    const size_t second = page_.addTable(section, {{"code"}, {"A"}, {"B"}});
    page_.nodes[second].id = "second";
    page_.nodes.push_back({.name = "P", .parent = 1, .id = "note"});

    request_.filename = "page.html";
    request_.key = "code";
    request_.table = 'T';
    request_.targetMode = DATA_ARRAY;
    request_.fromRow = 1;
    request_.numRows = 1000000;
}

bool MshtmlTest::read() {
    script_.clear();
    error_.clear();
    return HTMLHandler(logger_, services_, connections_, endMark_).Read(request_, script_, error_);
}

std::string MshtmlTest::script(const std::string& selector) {
    request_.sheet = selector;
    EXPECT_TRUE(read());
    EXPECT_EQ(error_, "");
    return script_;
}

std::string MshtmlTest::error(const std::string& selector) {
    request_.sheet = selector;
    EXPECT_FALSE(read());
    EXPECT_EQ(script_, "");
    return error_;
}

}  // namespace intake
