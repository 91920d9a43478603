#include "workbench/cli/serve/SeriesLog.h"

#include <gtest/gtest.h>

#include <cmath>

#include "workbench/cli/serve/series_json.h"

using workbench::LoadEvent;
using workbench::SeriesLog;

namespace {

LoadEvent loadOf(const std::string& name) {
    LoadEvent event;
    event.writer = 1;
    event.numbers.push_back({name, 7});
    return event;
}

bool has(const SeriesLog& log, const std::string& name) {
    const workbench::Redaction redact{probe::Settings{}};
    return workbench::toldAs(name, log.of(1), redact) != nullptr;
}

}  // namespace

TEST(SeriesLog, FindsANameThatIsNotAscii) {
    SeriesLog log;
    log.add(loadOf("Z\xFCrich"));
    EXPECT_TRUE(has(log, "Zürich"));
}

TEST(SeriesLog, ForgetsANameThatFiveHundredLoadsHaveNotWritten) {
    SeriesLog log;
    log.add(loadOf("old"));
    for (int i = 0; i < 500; ++i)
        log.add(loadOf("new"));
    EXPECT_TRUE(has(log, "old"));
    log.add(loadOf("new"));
    EXPECT_FALSE(has(log, "old"));
    EXPECT_TRUE(has(log, "new"));
}

TEST(SeriesLog, LeavesOutWhatIsNoNumber) {
    SeriesLog log;
    LoadEvent event = loadOf("none");
    event.numbers.front().value = std::nan("");
    log.add(event);
    EXPECT_FALSE(has(log, "none"));
}
