#include "tests/pipeline/IntakeThreadFixture.h"

namespace intake {

/// What a host may do while an answer is delivered to it, and what becomes of the text afterwards.
class IntakeThreadDeliveryTest : public IntakeThreadFixture {
protected:
    /// A text that no string keeps inside itself.
    static constexpr size_t LONG = 100'000;

    void postLong(const std::string& name) {
        platform_.files.put(name, R"({"v":")" + std::string(LONG, 'x') + R"("})");
        thread_->PostCommand(client_, load(name));
        waitUntilAnswered(name);
    }
};

TEST_F(IntakeThreadDeliveryTest, TheHostMayTakeTheNextAnswerWhileOneIsDelivered) {
    post("a");
    post("b");
    waitUntilAnswered("b");
    bool nested = false;
    client_->onDeliver = [&] {
        client_->onDeliver = nullptr;
        nested = thread_->DeliverOneAnswer();
    };
    EXPECT_TRUE(thread_->DeliverOneAnswer());
    EXPECT_TRUE(nested);
    EXPECT_EQ(client_->deliveries(), (Deliveries{"ok: a", "ok: b"}));
    EXPECT_FALSE(thread_->DeliverOneAnswer());
}

TEST_F(IntakeThreadDeliveryTest, TheHostMayPostTheNextRequestWhileAnAnswerIsDelivered) {
    client_->onDeliver = [&] {
        client_->onDeliver = nullptr;
        post("b");
    };
    post("a");
    ASSERT_TRUE(deliverNext());
    ASSERT_TRUE(deliverNext());
    EXPECT_EQ(client_->deliveries(), (Deliveries{"ok: a", "ok: b"}));
}

TEST_F(IntakeThreadDeliveryTest, TheHostMayDestroyTheThreadWhileAnAnswerIsDelivered) {
    client_->onDeliver = [&] { thread_.reset(); };
    post("a");
    waitUntilAnswered("a");
    EXPECT_TRUE(thread_->DeliverOneAnswer());
    EXPECT_EQ(thread_, nullptr);
    EXPECT_EQ(client_->deliveries(), Deliveries{"ok: a"});
    EXPECT_TRUE(allWorkersEnded());
}

TEST_F(IntakeThreadDeliveryTest, TheHostMayDropItsClientWhileAnAnswerIsDelivered) {
    const auto deliveries = std::make_shared<Deliveries>();
    client_ = std::make_shared<RecordingClient>(deliveries);
    client_->onDeliver = [&] { client_.reset(); };
    post("a");
    waitUntilAnswered("a");
    EXPECT_TRUE(thread_->DeliverOneAnswer());
    EXPECT_EQ(client_, nullptr);
    EXPECT_EQ(*deliveries, Deliveries{"ok: a"});
}

TEST_F(IntakeThreadDeliveryTest, TheWorkerCannotPublishWhileAnAnswerIsDelivered) {
    post("a");
    waitUntilAnswered("a");
    client_->onDeliver = [&] {
        client_->onDeliver = nullptr;
        post("b");
        ASSERT_TRUE(eventually([&] { return platform_.files.timesOpened("b") > 0; }));
        EXPECT_FALSE(thread_->DeliverOneAnswer());
    };
    EXPECT_TRUE(thread_->DeliverOneAnswer());
    ASSERT_TRUE(deliverNext());
    EXPECT_EQ(client_->deliveries(), (Deliveries{"ok: a", "ok: b"}));
}

TEST_F(IntakeThreadDeliveryTest, AnExceptionOfTheClientLeavesTheRingUsable) {
    post("a");
    post("b");
    waitUntilAnswered("b");
    client_->onDeliver = [&] {
        client_->onDeliver = nullptr;
        throw 42;
    };
    EXPECT_THROW(thread_->DeliverOneAnswer(), int);
    EXPECT_TRUE(thread_->DeliverOneAnswer());
    post("c");
    ASSERT_TRUE(deliverNext());
    EXPECT_EQ(client_->deliveries(), (Deliveries{"ok: a", "ok: b", "ok: c"}));
}

TEST_F(IntakeThreadDeliveryTest, TheSlotLetsGoOfADeliveredText) {
    postLong("a");
    ASSERT_TRUE(thread_->DeliverOneAnswer());
    EXPECT_EQ(client_->deliveries().front().size(), LONG + 4);
    EXPECT_EQ(*client_->slotText(), "");
    EXPECT_LT(client_->slotText()->capacity(), 100U);
}

TEST_F(IntakeThreadDeliveryTest, AfterAnOverflowTheSlotKeepsItsTextSinceItIsTakenTwice) {
    for (int number = 1; number <= 11; ++number) {
        postLong(std::to_string(number));
    }
    ASSERT_TRUE(thread_->DeliverOneAnswer());
    EXPECT_EQ(client_->slotText()->size(), LONG);

    ASSERT_TRUE(thread_->DeliverOneAnswer());
    EXPECT_LT(client_->slotText()->capacity(), 100U);
}

}  // namespace intake
