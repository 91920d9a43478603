#include "workbench/cli/serve/EventFeed.h"

#include <gtest/gtest.h>

namespace {

using Events = std::vector<std::string>;
using workbench::EventFeed;

}  // namespace

TEST(EventFeedTest, NumbersEventsFromOne) {
    EventFeed feed;
    EXPECT_EQ(feed.last(), 0U);
    EXPECT_EQ(feed.add("\"a\": 1"), "{\"seq\": 1, \"a\": 1}");
    EXPECT_EQ(feed.last(), 1U);
}

TEST(EventFeedTest, GivesWhatCameSince) {
    EventFeed feed;
    EXPECT_EQ(feed.since(0), Events{});
    feed.add("\"a\": 1");
    feed.add("\"a\": 2");
    EXPECT_EQ(feed.since(0), (Events{"{\"seq\": 1, \"a\": 1}", "{\"seq\": 2, \"a\": 2}"}));
    EXPECT_EQ(feed.since(1), Events{"{\"seq\": 2, \"a\": 2}"});
    EXPECT_EQ(feed.since(2), Events{});
}

TEST(EventFeedTest, AsksForAFreshStartWhereThereIsAGap) {
    EventFeed feed;
    for (int i = 0; i < 201; ++i)
        feed.add("\"a\": 1");
    EXPECT_EQ(feed.since(1).size(), 200U);
    EXPECT_EQ(feed.since(0), Events{"{\"seq\": 201, \"type\": \"resync\"}"});
    EXPECT_EQ(feed.since(202), Events{"{\"seq\": 201, \"type\": \"resync\"}"});
    EXPECT_EQ(feed.since(UINT64_MAX), Events{"{\"seq\": 201, \"type\": \"resync\"}"});
}
