// A program of its own, since it takes a process that has not used ADO or windows yet.

#include <gtest/gtest.h>

#include <chrono>
#include <vector>

#include "platform/PlatformError.h"
#include "platform/windows/ado/AdoDatabases.h"
#include "tests/support/AsWorker.h"

namespace intake {
namespace {

TEST(AdoWorkers, LoadAdoWhileOthersStart) {
    constexpr std::chrono::seconds LIMIT{60};
    Threads& threads = systemPlatform().threads;
    const EndMark endMark;
    const auto other = threads.start([] { const AsWorker worker; });
    const auto reader = threads.start([&] {
        const AsWorker worker;
        EXPECT_THROW(AdoDatabases().createConnection(endMark)->open("Provider=Nobody"),
                     PlatformError);
    });
    for (ThreadHandle* const thread : {other.get(), reader.get()}) {
        if (!thread->waitFor(LIMIT)) {
            ADD_FAILURE() << "a worker hangs";
            std::_Exit(1);  // nothing else ends such a process
        }
    }
}

}  // namespace
}  // namespace intake
