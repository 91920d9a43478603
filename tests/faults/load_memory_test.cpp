// Every allocation of a load fails in turn, alone and with all that follow.

#include <gtest/gtest.h>

#include <memory>

#include "pipeline/WorkerState.h"
#include "readers/Readers.h"
#include "tests/faults/FaultSources.h"
#include "tests/faults/MemoryFaults.h"
#include "tests/faults/extent.h"
#include "tests/support/AsWorker.h"

namespace intake {

namespace {

/// A worker that does one load again and again.
class RepeatedLoad {
public:
    explicit RepeatedLoad(std::string command) : command_(std::move(command)) {}

    Attempt operator()() {
        Attempt attempt;
        std::string error;
        try {
            worker_.ProcessCommand(command_, attempt.success, attempt.result, error);
        } catch (const std::bad_alloc&) {
            attempt.success = false;
            return attempt;
        } catch (...) {
            attempt.success = false;
            attempt.complaint = "throws something else than bad_alloc";
            return attempt;
        }
        if (!attempt.success) {
            attempt.complaint = error.empty() ? "fails without a reason" : nullptr;
            attempt.result.swap(error);
        }
        return attempt;
    }

private:
    const std::string command_;
    const AsWorker asWorker_;
    WorkerState worker_{systemPlatform(), makerOfReaders(systemPlatform())};
};

std::string faultsOf(const FaultLoad& load, Failing failing) {
    const auto begin = [&]() -> Attempts {
        return [repeated = std::make_shared<RepeatedLoad>(load.command)] { return (*repeated)(); };
    };
    return memoryFaults(begin, failing);
}

class LoadsWithoutMemory : public testing::TestWithParam<Failing> {
protected:
    const FaultSources sources_{triesAllFaults() ? 200 : 0};
};

TEST_P(LoadsWithoutMemory, OfFilesFailOrAreRight) {
    for (const FaultLoad& load : sources_.fromFiles()) {
        EXPECT_EQ(faultsOf(load, GetParam()), "") << load.name;
    }
}

TEST_P(LoadsWithoutMemory, OverHttpFailOrAreRight) {
    for (const FaultLoad& load : sources_.overHttp()) {
        EXPECT_EQ(faultsOf(load, GetParam()), "") << load.name;
    }
}

INSTANTIATE_TEST_SUITE_P(ForOneAllocation, LoadsWithoutMemory, testing::Values(Failing::ONE));
INSTANTIATE_TEST_SUITE_P(FromOneOn, LoadsWithoutMemory, testing::Values(Failing::ALL_BEHIND));

TEST(LoadsByOdbcWithoutMemory, FailOrAreRight) {
    EXPECT_EQ(faultsOf(FaultSources().byOdbc(), Failing::ONE), "");
}

/// Names the loads that come out otherwise when each allocation succeeds at its second attempt.
std::string differentLoads(const std::vector<FaultLoad>& loads) {
    std::string names;
    for (const FaultLoad& load : loads) {
        RepeatedLoad repeated(load.command);
        const Attempt usual = repeated();
        countAllocations(Failing::FIRST_ATTEMPTS);
        const Attempt late = repeated();
        endCounting();
        if (!usual.success || !late.success || late.result != usual.result) {
            names += load.name + " ";
        }
    }
    return names;
}

TEST(LoadsWhoseMemoryIsFoundAtTheSecondAttempt, AreRight) {
    const FaultSources sources;
    EXPECT_EQ(differentLoads(sources.fromFiles()), "");
    EXPECT_EQ(differentLoads(sources.overHttp()), "");
}

}  // namespace

}  // namespace intake
