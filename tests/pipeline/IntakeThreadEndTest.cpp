#include "tests/pipeline/IntakeThreadFixture.h"

namespace intake {

/// Stop, Terminate and the destructor, on a worker that is idle or inside a reader.
class IntakeThreadEndTest : public IntakeThreadFixture {
protected:
    using Waits = std::vector<std::chrono::milliseconds>;

    static inline const Waits ONE_SECOND{std::chrono::milliseconds(1000)};
};

TEST_F(IntakeThreadEndTest, TheThreadRunsFromItsConstructionOn) {
    EXPECT_TRUE(thread_->isOpen());
    EXPECT_EQ(IntakeThread::liveWorkers(), 1);
}

TEST_F(IntakeThreadEndTest, StopOfAnIdleWorkerEndsItAndClosesTheHandle) {
    ASSERT_TRUE(hasSlept(1));
    thread_->Stop();
    EXPECT_FALSE(thread_->isOpen());
    EXPECT_EQ(IntakeThread::liveWorkers(), 0);
    EXPECT_EQ(platform_.threads.left(), 1);
    EXPECT_EQ(platform_.threads.waits(), ONE_SECOND);
    EXPECT_EQ(platform_.threads.terminated(), 0);
}

TEST_F(IntakeThreadEndTest, StopOfAStoppedWorkerDoesNothing) {
    thread_->Stop();
    thread_->Stop();
    EXPECT_FALSE(thread_->isOpen());
    EXPECT_EQ(platform_.threads.waits(), ONE_SECOND);
}

TEST_F(IntakeThreadEndTest, WhatIsPostedAfterStopIsNeverAnswered) {
    thread_->Stop();
    post("a");
    EXPECT_FALSE(thread_->DeliverOneAnswer());
    EXPECT_EQ(platform_.files.timesOpened("a"), 0);
}

TEST_F(IntakeThreadEndTest, AnswersFromBeforeStopCanStillBeDelivered) {
    post("a");
    waitUntilAnswered("a");
    thread_->Stop();
    EXPECT_TRUE(thread_->DeliverOneAnswer());
    EXPECT_EQ(client_->deliveries(), Deliveries{"ok: a"});
}

TEST_F(IntakeThreadEndTest, StopInsideALongReadWaitsASecondAndLeavesTheHandleOpen) {
    keepBusy();
    thread_->Stop();
    EXPECT_EQ(platform_.threads.waits(), ONE_SECOND);
    EXPECT_TRUE(thread_->isOpen());
    EXPECT_EQ(IntakeThread::liveWorkers(), 1);
}

TEST_F(IntakeThreadEndTest, DestroyingTheThreadAfterAStopInVainEndsTheWorkerForcibly) {
    keepBusy();
    thread_->Stop();
    thread_.reset();
    EXPECT_EQ(platform_.threads.terminated(), 1);
    letGo();
    EXPECT_TRUE(allWorkersEnded());
    EXPECT_EQ(client_->deliveries(), Deliveries{});
}

TEST_F(IntakeThreadEndTest, AStoppedWorkerFinishesItsCommandPublishesItAndTakesNoOther) {
    keepBusy();
    post("next");
    thread_->Stop();
    letGo();
    ASSERT_TRUE(allWorkersEnded());
    EXPECT_TRUE(thread_->DeliverOneAnswer());
    EXPECT_FALSE(thread_->DeliverOneAnswer());
    EXPECT_EQ(client_->deliveries(), Deliveries{"ok: held.json"});
    EXPECT_EQ(platform_.files.timesOpened("next"), 0);
}

TEST_F(IntakeThreadEndTest, TerminateInsideAReaderEndsTheWorkerForciblyWithoutWaitingForIt) {
    keepBusy();
    thread_->Terminate();
    EXPECT_EQ(platform_.threads.terminated(), 1);
    EXPECT_EQ(platform_.threads.waits(), Waits{});
    letGo();
    EXPECT_TRUE(allWorkersEnded());
}

TEST_F(IntakeThreadEndTest, TerminateOfAnIdleWorkerLetsItEndByItself) {
    ASSERT_TRUE(hasSlept(1));
    thread_->Terminate();
    EXPECT_EQ(platform_.threads.terminated(), 0);
    EXPECT_EQ(platform_.threads.waits(), Waits{});
    EXPECT_TRUE(allWorkersEnded());
    EXPECT_TRUE(thread_->isOpen());
}

TEST_F(IntakeThreadEndTest, WhatIsPostedAfterTerminateIsNeverAnswered) {
    thread_->Terminate();
    ASSERT_TRUE(allWorkersEnded());
    post("a");
    EXPECT_FALSE(thread_->DeliverOneAnswer());
    EXPECT_EQ(platform_.files.timesOpened("a"), 0);
}

TEST_F(IntakeThreadEndTest, TerminateInsideAReaderReturnsAndNothingIsPublishedAfterwards) {
    keepBusy();
    post("next");
    thread_->Terminate();
    EXPECT_EQ(IntakeThread::liveWorkers(), 1);
    letGo();
    ASSERT_TRUE(allWorkersEnded());
    EXPECT_FALSE(thread_->DeliverOneAnswer());
    EXPECT_EQ(client_->deliveries(), Deliveries{});
    EXPECT_EQ(platform_.files.timesOpened("next"), 0);
}

TEST_F(IntakeThreadEndTest, TerminateTwiceAndThenTheDestructorAreHarmless) {
    thread_->Terminate();
    thread_->Terminate();
    thread_.reset();
    EXPECT_TRUE(allWorkersEnded());
}

TEST_F(IntakeThreadEndTest, TheDestructorInsideAReaderReturnsAndTheWorkerEndsWithTheReader) {
    keepBusy();
    thread_.reset();
    EXPECT_EQ(IntakeThread::liveWorkers(), 1);
    letGo();
    EXPECT_TRUE(allWorkersEnded());
    EXPECT_EQ(client_->deliveries(), Deliveries{});
}

TEST_F(IntakeThreadEndTest, AnAbandonedWorkerLetsGoOfTheClient) {
    keepBusy();
    thread_.reset();
    letGo();
    ASSERT_TRUE(allWorkersEnded());
    EXPECT_EQ(client_.use_count(), 1);
}

TEST_F(IntakeThreadEndTest, AWorkerThatIsJustStartingCanBeDestroyed) {
    for (int i = 0; i < 200; ++i) {
        IntakeThread starting(platform_.services, makerOfReaders(platform_.services));
    }
    thread_.reset();
    EXPECT_TRUE(allWorkersEnded());
}

}  // namespace intake
