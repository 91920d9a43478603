#include "tests/pipeline/IntakeThreadFixture.h"

namespace intake {

/// What a host may do while an answer is delivered to it.
class IntakeThreadDeliveryTest : public IntakeThreadFixture {
protected:
    /// A text that no string keeps inside itself.
    static constexpr size_t LONG = 100'000;
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

/// A client that takes the next answer before it looks at its own.
class NestingClient final : public IntakeClient {
public:
    explicit NestingClient(IntakeThread& thread) : thread_(thread) {}

    void deliver(bool, const std::string& answer, const std::string&) override {
        thread_.DeliverOneAnswer();
        seen.push_back(answer);
    }

    std::vector<std::string> seen;

private:
    IntakeThread& thread_;
};

TEST_F(IntakeThreadDeliveryTest, ElevenAnswersMayBeTakenInsideOfEachOther) {
    const auto client = std::make_shared<NestingClient>(*thread_);
    std::vector<std::string> expected;
    for (int number = 1; number <= 11; ++number) {
        const std::string name = std::to_string(number);
        const std::string text(LONG, static_cast<char>('a' + number));
        platform_.files.put(name, R"({"v":")" + text + R"("})");
        thread_->PostCommand(client, load(name));
        ASSERT_TRUE(eventually([&] { return platform_.files.timesOpened(name) > 0; }));
        ASSERT_TRUE(eventually([&] { return client.use_count() == 1; }));
        expected.insert(expected.begin(), text);
    }
    expected.back() = expected.front();  // the first was overwritten by the eleventh

    EXPECT_TRUE(thread_->DeliverOneAnswer());
    EXPECT_EQ(client->seen, expected);
}

}  // namespace intake
