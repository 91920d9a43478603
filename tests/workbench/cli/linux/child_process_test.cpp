#include "workbench/cli/child_process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <thread>

#include "tests/http/support/EnvironmentVariable.h"

using workbench::askChild;
using workbench::ChildAnswer;

namespace {

constexpr double patience = 20;

ChildAnswer shell(const std::string& script, const std::string& input = "") {
    return askChild({"/bin/sh", "-c", script}, input, patience);
}

}  // namespace

TEST(ChildProcessTest, TellsItsOutputItsErrorsAndItsStatus) {
    const ChildAnswer answer = shell("cat; echo wrong >&2; exit 3", "input");
    EXPECT_EQ(answer.out, "input");
    EXPECT_EQ(answer.err, "wrong\n");
    EXPECT_EQ(answer.status, 3);
}

TEST(ChildProcessTest, MayWriteMuchToBoth) {
    const ChildAnswer answer =
        shell("head -c 300000 /dev/zero >&2; head -c 300000 /dev/zero; head -c 9 /dev/zero >&2");
    EXPECT_EQ(answer.out.size(), 300'000U);
    EXPECT_EQ(answer.err.size(), 300'009U);
}

TEST(ChildProcessTest, IsEndedWhenItTakesTooLong) {
    EXPECT_EQ(askChild({"/bin/sleep", "60"}, "", 0.1).status, -1);
}

TEST(ChildProcessTest, IsEndedWhenItWritesTooMuch) {
    EXPECT_EQ(shell("head -c 300000000 /dev/zero; sleep 60").status, -1);
}

TEST(ChildProcessTest, IsEndedWhenAStopIsRequested) {
    std::stop_source source;
    const std::jthread stopping([&source] { source.request_stop(); });
    EXPECT_EQ(askChild({"/bin/sleep", "60"}, "", patience, source.get_token()).status, -1);
}

TEST(ChildProcessTest, HasTheVariablesThatItIsGivenBesideThoseOfThisProcess) {
    const intake::EnvironmentVariable first("FIRST", "1");
    const intake::EnvironmentVariable second("SECOND", "2");
    const ChildAnswer answer = askChild({"/bin/sh", "-c", "echo $FIRST $SECOND $THIRD"}, "",
                                        patience, {}, {"SECOND=other", "THIRD=3"});
    EXPECT_EQ(answer.out, "1 other 3\n");
}

TEST(ChildProcessTest, HoldsNothingThatThisProcessHasOpen) {
    const int open = ::open("/dev/null", O_RDONLY);
    const ChildAnswer answer = shell("readlink /proc/$$/fd/" + std::to_string(open));
    EXPECT_EQ(answer.out, "");
    close(open);
}

TEST(ChildProcessTest, ThatCannotBeStartedIsAnError) {
    EXPECT_THROW(askChild({"/no/such/program"}, "", patience), std::system_error);
}
