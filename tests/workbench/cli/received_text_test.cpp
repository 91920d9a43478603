#include "workbench/cli/received_text.h"

#include <gtest/gtest.h>

namespace workbench {

namespace {

TEST(ReceivedText, IsMostlyWhatWasSet) {
    EXPECT_EQ(receivedText(""), "");
    EXPECT_EQ(receivedText("ID final"), "ID final");
}

TEST(ReceivedText, EndsAtABar) {
    EXPECT_EQ(receivedText("X-Key: a|b"), "X-Key: a");
}

TEST(ReceivedText, HasWhatIsBehindABackslashAsItStands) {
    EXPECT_EQ(receivedText("a\\|b\\\\c\\d"), "a|b\\cd");
    EXPECT_EQ(receivedText("a\\"), "a");
}

}  // namespace

}  // namespace workbench
