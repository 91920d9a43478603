#include "tests/pipeline/IntakeThreadFixture.h"

namespace intake {

class IntakeThreadOverflowTest : public IntakeThreadFixture {
protected:
    /// Posts twelve requests, named by their number, while the worker is busy.
    void postTwelve() {
        keepBusy();
        for (int number = 1; number <= 12; ++number) {
            post(std::to_string(number));
        }
    }
};

TEST_F(IntakeThreadOverflowTest, TenCommandsWaitAndAreCarriedOutInTheirOrder) {
    keepBusy();
    for (int number = 1; number <= 10; ++number) {
        post(std::to_string(number));
    }
    letGo();
    for (int answers = 0; answers < 11; ++answers) {
        ASSERT_TRUE(deliverNext());
    }
    EXPECT_EQ(client_->deliveries(),
              (Deliveries{"ok: held.json", "ok: 1", "ok: 2", "ok: 3", "ok: 4", "ok: 5", "ok: 6",
                          "ok: 7", "ok: 8", "ok: 9", "ok: 10"}));
}

TEST_F(IntakeThreadOverflowTest, TheEleventhAndTwelfthCommandOverwriteTheTwoOldest) {
    postTwelve();
    letGo();
    for (int answers = 0; answers < 13; ++answers) {
        ASSERT_TRUE(deliverNext());
    }
    EXPECT_EQ(client_->deliveries(),
              (Deliveries{"ok: held.json", "ok: 11", "ok: 12", "ok: 3", "ok: 4", "ok: 5", "ok: 6",
                          "ok: 7", "ok: 8", "ok: 9", "ok: 10", "ok: 11", "ok: 12"}));
    EXPECT_FALSE(thread_->DeliverOneAnswer());
}

TEST_F(IntakeThreadOverflowTest, AnOverwrittenCommandIsNeverCarriedOut) {
    postTwelve();
    letGo();
    for (int answers = 0; answers < 13; ++answers) {
        ASSERT_TRUE(deliverNext());
    }
    EXPECT_EQ(platform_.files.timesOpened("1"), 0);
    EXPECT_EQ(platform_.files.timesOpened("2"), 0);
    EXPECT_EQ(platform_.files.timesOpened("11"), 2);
}

TEST_F(IntakeThreadOverflowTest, AnswersThatTheHostDoesNotTakeOverwriteTheOldest) {
    for (int number = 1; number <= 12; ++number) {
        post(std::to_string(number));
        waitUntilAnswered(std::to_string(number));
    }
    while (thread_->DeliverOneAnswer()) {
    }
    EXPECT_EQ(client_->deliveries(),
              (Deliveries{"ok: 11", "ok: 12", "ok: 3", "ok: 4", "ok: 5", "ok: 6", "ok: 7", "ok: 8",
                          "ok: 9", "ok: 10", "ok: 11", "ok: 12"}));
}

}  // namespace intake
