// What becomes of requests for which there is no memory.

#include <cstdint>
#include <istream>
#include <new>
#include <streambuf>

#include "formats/json/SourceStream.h"
#include "pipeline/command_text.h"
#include "tests/pipeline/IntakeThreadFixture.h"
#include "tests/pipeline/allocation_limit.h"

namespace intake {

/// A client for whom an answer cannot be carried out.
class ThrowingClient final : public IntakeClient {
public:
    void deliver(bool, const std::string&, const std::string&) override { throw std::bad_alloc(); }
};

class WantOfMemory : public IntakeThreadFixture {
protected:
    static constexpr size_t LONG = 1'000'000;

    ~WantOfMemory() override { limitAllocations(NO_LIMIT); }

    static void runShort() { limitAllocations(LONG / 2); }

    /// The parser skips the blanks behind a command.
    static std::string longLoad(const std::string& file) {
        return load(file) + std::string(LONG, ' ');
    }

    /// Loads a large source, and waits for its answer.
    void postLarge(const std::string& name) {
        platform_.files.put(name, R"({"v":")" + std::string(2 * LONG, 'x') + R"("})");
        thread_->PostCommand(client_, load(name));
        waitUntilAnswered(name);
    }

    /// How many the host frees when it destroys the thread.
    size_t largeBlocksFreedWithTheThread() {
        const size_t before = largeBlocksFreed();
        thread_.reset();
        return largeBlocksFreed() - before;
    }

    Deliveries nextTwo() {
        EXPECT_TRUE(deliverNext());
        EXPECT_TRUE(deliverNext());
        return client_->deliveries();
    }
};

TEST_F(WantOfMemory, ARequestThatTheHostCannotCopyLeavesTheRingAsItWas) {
    keepBusy();
    const std::string command = longLoad("a");
    runShort();
    EXPECT_THROW(thread_->PostCommand(client_, command), std::bad_alloc);
    letGo();
    post("next");
    ASSERT_TRUE(deliverNext());
    ASSERT_TRUE(deliverNext());
    EXPECT_EQ(client_->deliveries(), (Deliveries{"ok: held.json", "ok: next"}));
}

TEST_F(WantOfMemory, ARequestThatTheWorkerCannotCopyFailsAndTheNextIsAnswered) {
    keepBusy();
    thread_->PostCommand(client_, longLoad("a"));
    post("b");
    runShort();
    letGo();
    ASSERT_TRUE(deliverNext());
    EXPECT_EQ(nextTwo(), (Deliveries{"ok: held.json", "failed: Out of memory.\n", "ok: b"}));
    EXPECT_EQ(platform_.files.timesOpened("a"), 0);
}

TEST_F(WantOfMemory, AFailureThatCannotNameItsSourceIsToldAndTheNextRequestIsAnswered) {
    const std::string longName(LONG, 'a');
    platform_.files.runAt(Step::OPEN, longName, [] {
        runShort();
        throw std::bad_alloc();
    });
    thread_->PostCommand(client_, load(longName));
    post("b");
    EXPECT_EQ(nextTwo(), (Deliveries{"failed: Out of memory.\n", "ok: b"}));
}

TEST_F(WantOfMemory, AWorkerThatHadTooLittleIsIdleAgain) {
    keepBusy();
    thread_->PostCommand(client_, longLoad("a"));
    runShort();
    letGo();
    EXPECT_EQ(nextTwo(), (Deliveries{"ok: held.json", "failed: Out of memory.\n"}));
    thread_->Terminate();
    EXPECT_EQ(platform_.threads.terminated(), 0);
}

TEST_F(WantOfMemory, ALargeAnswerIsFreedByTheWorkerAndNotInTheHostsFrame) {
    platform_.files.put("a", R"({"v":")" + std::string(2 * LONG, 'x') + R"("})");
    thread_->PostCommand(client_, load("a"));
    const size_t before = largeBlocksFreed();
    ASSERT_TRUE(deliverNext());
    EXPECT_EQ(largeBlocksFreed(), before);
}

TEST_F(WantOfMemory, ALargeAnswerWhoseDeliveryThrowsIsNotFreedInTheHostsFrameEither) {
    const auto thrower = std::make_shared<ThrowingClient>();
    platform_.files.put("a", R"({"v":")" + std::string(2 * LONG, 'x') + R"("})");
    thread_->PostCommand(thrower, load("a"));
    const size_t before = largeBlocksFreed();
    EXPECT_THROW(deliverNext(), std::bad_alloc);
    EXPECT_EQ(largeBlocksFreed(), before);
}

TEST_F(WantOfMemory, AnAnswerThatWaitsWhenItsWorkerHasEndedIsNotFreedInTheHostsFrame) {
    postLarge("a");
    thread_->Terminate();
    ASSERT_TRUE(allWorkersEnded());
    EXPECT_EQ(largeBlocksFreedWithTheThread(), 0U);
}

TEST_F(WantOfMemory, AnAnswerThatIsTakenWhenItsWorkerHasEndedIsNotFreedInTheHostsFrame) {
    postLarge("a");
    thread_->Terminate();
    ASSERT_TRUE(allWorkersEnded());
    ASSERT_TRUE(deliverNext());
    EXPECT_EQ(largeBlocksFreedWithTheThread(), 0U);
}

TEST_F(WantOfMemory, TheHostFreesTheAnswersOfAnEndedWorkerWhenThereIsNoThreadForIt) {
    postLarge("a");
    thread_->Terminate();
    ASSERT_TRUE(allWorkersEnded());
    platform_.threads.refuseThreads();
    EXPECT_EQ(largeBlocksFreedWithTheThread(), 1U);
}

TEST_F(WantOfMemory, AnAnswerThatCannotBeKeptFailsAndNamesItsSource) {
    platform_.files.put("a", R"({"v":")" + std::string(LONG, 'x') + R"("})");
    platform_.files.runAt(Step::READ, "a", runShort);
    thread_->PostCommand(client_, load("a"));
    post("b");
    EXPECT_EQ(nextTwo(), (Deliveries{"failed: Not enough memory to load a.\n", "ok: b"}));
}

TEST_F(WantOfMemory, AWordOfACommandThatCannotBeKeptIsNoEndOfIt) {
    /// One long word and then keys, without a text of that length anywhere.
    struct LongWord final : std::streambuf {
        int underflow() override {
            if (left_ == 0) {
                return traits_type::eof();
            }
            --left_;
            setg(&letter_, &letter_, &letter_ + 1);
            return letter_;
        }
        size_t left_ = LONG;
        char letter_ = 'x';
    } source;
    std::istream in(&source);
    RequestRecord record;
    runShort();
    EXPECT_THROW(ParseCommand(record, in), std::bad_alloc);
}

TEST_F(WantOfMemory, TheStackOfTheJsonParserThrowsWhereTheLibraryWouldNotLook) {
    ThrowingAllocator allocator;
    EXPECT_THROW(allocator.Malloc(SIZE_MAX / 2), std::bad_alloc);
    void* const memory = allocator.Malloc(16);
    EXPECT_THROW(allocator.Realloc(memory, 16, SIZE_MAX / 2), std::bad_alloc);
    ThrowingAllocator::Free(memory);
    EXPECT_EQ(allocator.Malloc(0), nullptr);
}

}  // namespace intake
