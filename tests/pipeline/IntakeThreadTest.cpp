#include "pipeline/IntakeThread.h"

#include <stdexcept>
#include <system_error>

#include "tests/pipeline/IntakeThreadFixture.h"

namespace intake {

using IntakeThreadTest = IntakeThreadFixture;

TEST_F(IntakeThreadTest, AnAnswerIsDeliveredToTheClientThatAsked) {
    post("a");
    ASSERT_TRUE(deliverNext());
    EXPECT_EQ(client_->deliveries(), Deliveries{"ok: a"});
}

TEST_F(IntakeThreadTest, AFailureIsDeliveredWithItsError) {
    platform_.files.runAt(Step::OPEN, "a", [] { throw std::invalid_argument("Too late."); });
    post("a");
    ASSERT_TRUE(deliverNext());
    EXPECT_EQ(client_->deliveries(), Deliveries{"failed: Too late."});
}

TEST_F(IntakeThreadTest, AReaderThatThrowsDoesNotEndTheWorker) {
    platform_.files.runAt(Step::OPEN, "bad", [] { throw std::runtime_error("The cable is cut."); });
    post("bad");
    post("good");
    ASSERT_TRUE(deliverNext());
    ASSERT_TRUE(deliverNext());
    EXPECT_EQ(client_->deliveries(), (Deliveries{"failed: The cable is cut.", "ok: good"}));
}

TEST_F(IntakeThreadTest, AnswersComeInTheOrderOfTheRequests) {
    keepBusy();
    post("a");
    post("b");
    post("c");
    letGo();
    for (int i = 0; i < 4; ++i) {
        ASSERT_TRUE(deliverNext());
    }
    EXPECT_EQ(client_->deliveries(), (Deliveries{"ok: held.json", "ok: a", "ok: b", "ok: c"}));
}

TEST_F(IntakeThreadTest, WithoutAnAnswerThereIsNothingToDeliver) {
    EXPECT_FALSE(thread_->DeliverOneAnswer());
    keepBusy();
    EXPECT_FALSE(thread_->DeliverOneAnswer());
    EXPECT_EQ(client_->deliveries(), Deliveries{});
}

TEST_F(IntakeThreadTest, OneCallDeliversOneAnswer) {
    post("a");
    post("b");
    waitUntilAnswered("b");
    EXPECT_TRUE(thread_->DeliverOneAnswer());
    EXPECT_EQ(client_->deliveries(), Deliveries{"ok: a"});
    EXPECT_TRUE(thread_->DeliverOneAnswer());
    EXPECT_EQ(client_->deliveries(), (Deliveries{"ok: a", "ok: b"}));
    EXPECT_FALSE(thread_->DeliverOneAnswer());
}

TEST_F(IntakeThreadTest, ACommandWhoseClientHasGoneIsSkippedAndNotAnswered) {
    keepBusy();
    auto gone = std::make_shared<RecordingClient>();
    platform_.files.put("gone", R"({"v":"gone"})");
    thread_->PostCommand(gone, load("gone"));
    gone.reset();
    post("b");
    letGo();
    waitUntilAnswered("b");
    EXPECT_TRUE(thread_->DeliverOneAnswer());
    EXPECT_TRUE(thread_->DeliverOneAnswer());
    EXPECT_FALSE(thread_->DeliverOneAnswer());
    EXPECT_EQ(client_->deliveries(), (Deliveries{"ok: held.json", "ok: b"}));
    EXPECT_EQ(platform_.files.timesOpened("gone"), 0);
}

TEST_F(IntakeThreadTest, AnAnswerWhoseClientHasGoneIsTakenAndDropped) {
    const auto deliveries = std::make_shared<Deliveries>();
    auto gone = std::make_shared<RecordingClient>(deliveries);
    const std::weak_ptr<RecordingClient> watched = gone;
    platform_.files.put("gone", R"({"v":"gone"})");
    thread_->PostCommand(gone, load("gone"));
    ASSERT_TRUE(eventually([&] { return platform_.files.timesOpened("gone") > 0; }));
    gone.reset();
    ASSERT_TRUE(eventually([&] { return watched.expired(); }));  // the worker is through with it

    EXPECT_TRUE(thread_->DeliverOneAnswer());
    EXPECT_FALSE(thread_->DeliverOneAnswer());
    EXPECT_EQ(*deliveries, Deliveries{});
}

TEST_F(IntakeThreadTest, ClientsGetTheirOwnAnswers) {
    auto other = std::make_shared<RecordingClient>();
    post("a");
    platform_.files.put("b", R"({"v":"b"})");
    thread_->PostCommand(other, load("b"));
    ASSERT_TRUE(deliverNext());
    ASSERT_TRUE(deliverNext());
    EXPECT_EQ(client_->deliveries(), Deliveries{"ok: a"});
    EXPECT_EQ(other->deliveries(), Deliveries{"ok: b"});
}

TEST_F(IntakeThreadTest, TheCommandTextIsCopied) {
    keepBusy();
    platform_.files.put("a", R"({"v":"a"})");
    std::string command = load("a");
    thread_->PostCommand(client_, command);
    command.assign(command.size(), '#');
    letGo();
    ASSERT_TRUE(deliverNext());
    ASSERT_TRUE(deliverNext());
    EXPECT_EQ(client_->deliveries(), (Deliveries{"ok: held.json", "ok: a"}));
}

TEST_F(IntakeThreadTest, TwoThreadsWorkSideBySide) {
    IntakeThread second(platform_.services, makerOfReaders(platform_.services));
    keepBusy();
    platform_.files.put("b", R"({"v":"b"})");
    second.PostCommand(client_, load("b"));
    ASSERT_TRUE(eventually([&] { return second.DeliverOneAnswer(); }));
    EXPECT_EQ(client_->deliveries(), Deliveries{"ok: b"});
    letGo();
    ASSERT_TRUE(deliverNext());
    EXPECT_EQ(client_->deliveries(), (Deliveries{"ok: b", "ok: held.json"}));
}

TEST_F(IntakeThreadTest, NoAnswerIsLostWhileTheHostPostsAndDelivers) {
    Deliveries expected;
    for (int i = 0; i < 300; ++i) {
        const std::string name = std::to_string(i);
        expected.push_back("ok: " + name);
        post(name);
        if (i % 3 == 2) {
            ASSERT_TRUE(deliverNext());
            ASSERT_TRUE(deliverNext());
            ASSERT_TRUE(deliverNext());
        }
    }
    EXPECT_EQ(client_->deliveries(), expected);
}

TEST_F(IntakeThreadTest, APostWhoseWaitForTheMutexFailsIsTriedAgainAfterTwoMilliseconds) {
    platform_.threads.failLocks(REQUEST_MUTEX, 3);
    post("a");
    EXPECT_EQ(platform_.clock.sleepsOf(std::chrono::milliseconds(2)), 3);
    ASSERT_TRUE(deliverNext());
    EXPECT_EQ(client_->deliveries(), Deliveries{"ok: a"});
}

TEST_F(IntakeThreadTest, AnAnswerWhoseWaitForTheMutexFailsIsTriedAgainAfterFiveMilliseconds) {
    platform_.threads.failLocks(RESULT_MUTEX, 3);
    post("a");
    ASSERT_TRUE(deliverNext());
    EXPECT_EQ(platform_.clock.sleepsOf(std::chrono::milliseconds(5)), 3);
    EXPECT_EQ(client_->deliveries(), Deliveries{"ok: a"});
}

TEST_F(IntakeThreadTest, ARequestRingThatIsBusyIsLookedAtAgainAfterAPause) {
    keepBusy();
    post("a");
    platform_.threads.failTryLocks(REQUEST_MUTEX, 3);
    letGo();
    ASSERT_TRUE(deliverNext());
    ASSERT_TRUE(deliverNext());
    EXPECT_EQ(client_->deliveries(), (Deliveries{"ok: held.json", "ok: a"}));
}

TEST_F(IntakeThreadTest, AResultRingThatIsBusyIsNotWaitedFor) {
    post("a");
    waitUntilAnswered("a");
    platform_.threads.failTryLocks(RESULT_MUTEX, 2);
    EXPECT_FALSE(thread_->DeliverOneAnswer());
    EXPECT_FALSE(thread_->DeliverOneAnswer());
    EXPECT_EQ(client_->deliveries(), Deliveries{});
    EXPECT_TRUE(thread_->DeliverOneAnswer());
    EXPECT_EQ(client_->deliveries(), Deliveries{"ok: a"});
}

TEST_F(IntakeThreadTest, AWorkerWithoutRequestsSleepsUntilItIsPostedTo) {
    ASSERT_TRUE(hasSlept(1));
    post("a");
    waitUntilAnswered("a");
    ASSERT_TRUE(hasSlept(2));
    ASSERT_TRUE(thread_->DeliverOneAnswer());
    post("b");
    waitUntilAnswered("b");
    ASSERT_TRUE(hasSlept(3));
    EXPECT_EQ(platform_.clock.sleepsOf(std::chrono::milliseconds(20)), 2);
    ASSERT_TRUE(thread_->DeliverOneAnswer());
    EXPECT_EQ(client_->deliveries(), (Deliveries{"ok: a", "ok: b"}));
}

TEST_F(IntakeThreadTest, AWorkerIsWokenToFreeALargeAnswerThatWasDelivered) {
    platform_.files.put("a", R"({"v":")" + std::string(100'000, 'x') + R"("})");
    ASSERT_TRUE(hasSlept(1));
    platform_.clock.hold();
    thread_->PostCommand(client_, load("a"));
    waitUntilAnswered("a");
    EXPECT_TRUE(hasSlept(2));
    EXPECT_TRUE(thread_->DeliverOneAnswer());
    EXPECT_TRUE(platform_.clock.letGo());
    EXPECT_TRUE(hasSlept(3));
}

TEST_F(IntakeThreadTest, AWorkerIsNotWokenForASmallAnswerThatWasDelivered) {
    ASSERT_TRUE(hasSlept(1));
    platform_.clock.hold();
    post("a");
    waitUntilAnswered("a");
    EXPECT_TRUE(hasSlept(2));
    EXPECT_TRUE(thread_->DeliverOneAnswer());
    EXPECT_FALSE(platform_.clock.letGo());
}

TEST_F(IntakeThreadTest, TheWorkerSleepsTwentyMillisecondsAfterEachAnswer) {
    keepBusy();
    const int before = platform_.clock.sleepsOf(std::chrono::milliseconds(20));
    post("a");
    letGo();
    waitUntilAnswered("a");
    EXPECT_GE(platform_.clock.sleepsOf(std::chrono::milliseconds(20)), before + 1);
}

TEST_F(IntakeThreadTest, TheWorkerEntersAndLeavesTheSystemsServicesOnce) {
    post("a");
    ASSERT_TRUE(deliverNext());
    EXPECT_EQ(platform_.threads.entered(), 1);
    EXPECT_EQ(platform_.threads.left(), 0);
    thread_.reset();
    platform_.threads.join();
    EXPECT_EQ(platform_.threads.entered(), 1);
    EXPECT_EQ(platform_.threads.left(), 1);
}

TEST_F(IntakeThreadTest, WithoutAThreadToGiveTheConstructorThrowsAndLeavesNoWorker) {
    const int32_t before = IntakeThread::liveWorkers();
    platform_.threads.refuseThreads();
    EXPECT_THROW(IntakeThread(platform_.services, makerOfReaders(platform_.services)),
                 std::system_error);
    EXPECT_EQ(IntakeThread::liveWorkers(), before);
}

TEST(IntakeThreadOnTheSystem, LoadsAFile) {
    const TempWorkingDirectory directory;
    std::ofstream("a.json") << R"({"a":1})";
    const auto client = std::make_shared<RecordingClient>();
    {
        IntakeThread thread(systemPlatform(), makerOfReaders(systemPlatform()));
        thread.PostCommand(client, "MODE |JSON| FILENAME |a.json| TABLE |T| ");
        ASSERT_TRUE(eventually([&] { return thread.DeliverOneAnswer(); }));
    }
    EXPECT_TRUE(eventually([] { return IntakeThread::liveWorkers() == 0; }));
    EXPECT_EQ(client->deliveries(), RecordingClient::Deliveries{"ok: T={a=1;};"});
}

}  // namespace intake
