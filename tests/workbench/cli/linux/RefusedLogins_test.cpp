#include "workbench/cli/serve/RefusedLogins.h"

#include <gtest/gtest.h>

using workbench::ChildAnswer;
using workbench::RefusedLogins;

namespace {

constexpr const char* refusal =
    "It refuses. They were not sent again: accounts lock after a few "
    "times.";

ChildAnswer answerOf(int status, const std::string& out, const std::string& err) {
    ChildAnswer answer;
    answer.status = status;
    answer.out = out;
    answer.err = err;
    return answer;
}

}  // namespace

TEST(RefusedLogins, AreRememberedForHalfAMinute) {
    RefusedLogins::Moment now{};
    RefusedLogins logins([&now] { return now; });
    logins.note("a", answerOf(1, "", refusal));
    logins.note("b", answerOf(1, refusal, ""));
    EXPECT_TRUE(logins.isRefused("a"));
    EXPECT_TRUE(logins.isRefused("b"));
    EXPECT_FALSE(logins.isRefused("c"));
    now += std::chrono::seconds(30);
    EXPECT_TRUE(logins.isRefused("a"));
    now += std::chrono::milliseconds(1);
    EXPECT_FALSE(logins.isRefused("a"));
}

TEST(RefusedLogins, AreThoseOfWhichALookSaysSo) {
    RefusedLogins logins;
    logins.note("a", answerOf(1, "", "There is no such file."));
    logins.note("b", answerOf(0, refusal, ""));  // what a source holds
    EXPECT_FALSE(logins.isRefused("a"));
    EXPECT_FALSE(logins.isRefused("b"));
}

TEST(RefusedLogins, DifferByWhatIsSent) {
    probe::Settings settings;
    settings.password = "one";
    const std::string one = workbench::loginOf(settings);
    settings.password = "two";
    EXPECT_NE(workbench::loginOf(settings), one);
    settings.password = "one";
    for (std::string probe::Settings::*const sent :
         {&probe::Settings::filename, &probe::Settings::connStr, &probe::Settings::proxyUrl,
          &probe::Settings::userName, &probe::Settings::proxyUser, &probe::Settings::proxyPwd,
          &probe::Settings::customHeaders}) {
        probe::Settings other = settings;
        other.*sent = "two";
        EXPECT_NE(workbench::loginOf(other), one);
    }
    settings.xpath = "rows";
    EXPECT_EQ(workbench::loginOf(settings), one);
}
