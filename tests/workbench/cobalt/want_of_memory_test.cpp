// What becomes of a script for which there is no memory: nothing.

#include <gtest/gtest.h>

#include "tests/pipeline/allocation_limit.h"
#include "tests/workbench/cobalt/show.h"
#include "workbench/cobalt/Store.h"

namespace cobalt {
namespace {

constexpr std::size_t LONG = 100'000;

class StoreWithoutMemory : public testing::Test {
protected:
    ~StoreWithoutMemory() override { intake::limitAllocations(intake::NO_LIMIT); }

    /// Carries a script out while no text of so many bytes can be made.
    std::optional<ScriptError> executeWithLess(const std::string& script, std::size_t bytes) {
        intake::limitAllocations(bytes);
        auto error = store_.execute(script);
        intake::limitAllocations(intake::NO_LIMIT);
        return error;
    }

    Store store_;
};

TEST_F(StoreWithoutMemory, TakesBackWhatAScriptHasChanged) {
    store_.execute("A=1;T[0]={{x=1;};};");
    std::string script = "A=2;B=3;T[0]={{x=2;};};";
    for (int i = 0; i < 3000; ++i) {
        script += "T[" + std::to_string(i) + "]=4;";
    }
    const std::string before = show(store_);

    for (const std::size_t bytes : {LONG, LONG / 2, LONG / 10, LONG / 100}) {
        const auto error = executeWithLess(script, bytes);
        if (error) {
            EXPECT_EQ(error->message, "not enough memory for it");
            EXPECT_EQ(show(store_), before) << bytes;
        }
    }
    EXPECT_TRUE(executeWithLess(script, 1000).has_value());
    EXPECT_EQ(show(store_), before);
    EXPECT_FALSE(store_.execute(script).has_value());
    EXPECT_NE(show(store_), before);
}

TEST_F(StoreWithoutMemory, DoesNotParseWhatIsTooLong) {
    const auto error = executeWithLess("A=\"" + std::string(LONG, 'x') + "\";", LONG / 2);
    ASSERT_TRUE(error.has_value());
    EXPECT_EQ(store_.size(), 0U);
}

}  // namespace
}  // namespace cobalt
