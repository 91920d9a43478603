// A process in which nothing is as it should be: closed streams, no room for files, no folder,
// signals all the time. And what loads leave behind in one.

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "tests/faults/ChildFindings.h"
#include "tests/faults/FaultSources.h"
#include "tests/faults/TestWorker.h"
#include "tests/support/TempDirectory.h"
#include "tests/support/eventually.h"

namespace intake {

namespace {

size_t entriesOf(const char* folder) {
    return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

class OddProcess : public testing::Test {
protected:
    OddProcess() {
        std::vector<FaultLoad> overHttp = sources_.overHttp();
        loads_.insert(loads_.end(), overHttp.begin(), overHttp.end());
        loads_.push_back(sources_.byOdbc());
    }

    /// Does all loads in a child process, in which `spoil` has made something odd, some times over.
    void expectAllRightBehind(const std::function<void()>& spoil, int times = 1) {
        std::vector<std::string> scripts;
        for (const FaultLoad& load : loads_) {
            scripts.push_back(TestWorker().load(load.command).script);
            EXPECT_NE(scripts.back(), "") << load.name;
        }
        const ChildFindings findings = ChildFindings::of([&](ChildFindings& child) {
            TestWorker worker;
            spoil();
            for (size_t i = 0; i < loads_.size() * static_cast<size_t>(times); ++i) {
                const size_t number = i % loads_.size();
                child.startTry(i);
                const LoadResult result = worker.load(loads_[number].command);
                if (result.script != scripts[number]) {
                    child.add(loads_[number].name + ": " + result.script + result.error);
                }
            }
        });
        EXPECT_EQ(findings.text(), "");
        EXPECT_FALSE(findings.crashed());
    }

    void logAll() {
        for (FaultLoad& load : loads_) {
            const std::string silent = "LOG_LEVEL -1";
            load.command.replace(load.command.find(silent), silent.size(), "LOG_LEVEL 4");
        }
    }

    const FaultSources sources_;
    std::vector<FaultLoad> loads_ = sources_.fromFiles();
};

TEST_F(OddProcess, WithoutStandardStreamsLoadsAll) {
    expectAllRightBehind([] {
        for (const int stream : {0, 1, 2}) {
            close(stream);
        }
    });
}

TEST_F(OddProcess, ThatMayWriteNoFileLoadsAll) {
    logAll();
    const TempWorkingDirectory folder;
    expectAllRightBehind([] {
        const rlimit none{0, 0};
        setrlimit(RLIMIT_FSIZE, &none);
    });
}

TEST_F(OddProcess, WhoseFolderIsGoneLoadsAll) {
    logAll();
    const TempWorkingDirectory folder;
    expectAllRightBehind([] {
        const std::filesystem::path lost = std::filesystem::current_path() / "lost";
        std::filesystem::create_directory(lost);
        std::filesystem::current_path(lost);
        std::filesystem::remove(lost);
    });
}

TEST_F(OddProcess, InWhichEverySystemCallIsInterruptedLoadsAll) {
    expectAllRightBehind(
        [] {
            struct sigaction action {};
            action.sa_handler = [](int) {};  // and without SA_RESTART
            sigaction(SIGALRM, &action, nullptr);
            sigset_t alarm;
            sigemptyset(&alarm);
            sigaddset(&alarm, SIGALRM);
            pthread_sigmask(SIG_UNBLOCK, &alarm, nullptr);  // which workers block
            const itimerval eachMillisecond{{0, 1000}, {0, 1000}};
            setitimer(ITIMER_REAL, &eachMillisecond, nullptr);
        },
        20);
}

TEST_F(OddProcess, IsLeftWithAsManyDescriptorsAndThreadsAsBefore) {
    const TempWorkingDirectory folder;  // in which some drivers make what they do not find
    const auto loadAll = [&] {
        TestWorker worker;
        for (const FaultLoad& load : loads_) {
            worker.load(load.command);
            std::string broken = load.command;  // which then finds nothing
            std::replace(broken.begin(), broken.end(), '/', '_');
            worker.load(broken);
        }
    };
    loadAll();
    const size_t descriptors = entriesOf("/proc/self/fd");
    const size_t threads = entriesOf("/proc/self/task");
    for (int i = 0; i < 20; ++i) {
        loadAll();
    }
    EXPECT_EQ(entriesOf("/proc/self/fd"), descriptors);
    EXPECT_TRUE(eventually([=] { return entriesOf("/proc/self/task") <= threads; }));
}

}  // namespace

}  // namespace intake
