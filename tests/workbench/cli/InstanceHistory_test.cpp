#include "workbench/cli/run/InstanceHistory.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

struct History : testing::Test {
    History() { history.setPeriod(10); }

    LoadReport answer(std::size_t records, double now, LoadOutcome outcome = LoadOutcome::Loaded) {
        LoadReport report;
        report.outcome = outcome;
        report.records = records;
        if (!isGood(outcome)) report.error = "lost";
        history.answered(report, now);
        return report;
    }
    State stateAt(double now) const { return history.stateAt(now).state; }

    InstanceHistory history;
};

TEST_F(History, AnInstanceThatLoadsByItselfIsLoadingAndTheOtherWaits) {
    EXPECT_EQ(stateAt(0), State::Loading);
    history.setPeriod(std::nullopt);
    EXPECT_EQ(stateAt(0), State::Waiting);
}

TEST_F(History, AnotherPeriodForgetsTheLoadsThatAreUnderWay) {
    history.began(0);
    history.setPeriod(1);
    EXPECT_EQ(history.becameLate(20), 0U);
    EXPECT_EQ(answer(1, 20).seconds, 0);
}

TEST_F(History, ALoadTakesFromItsBeginToItsAnswer) {
    history.began(1);
    EXPECT_EQ(answer(20, 3.5).seconds, 2.5);
    const InstanceState state = history.stateAt(5);
    EXPECT_EQ(state.state, State::Loaded);
    EXPECT_EQ(state.age, 1.5);
    EXPECT_EQ(state.next, 6);
}

TEST_F(History, AnswersComeInTheOrderOfTheLoads) {
    history.began(1);
    history.began(2);
    EXPECT_EQ(answer(1, 3).seconds, 2);
    EXPECT_EQ(answer(1, 5).seconds, 3);
    EXPECT_EQ(answer(1, 6).seconds, 0);  // nobody knows of its begin
}

TEST_F(History, WhatTheRecordsWereIsShownForAWhile) {
    answer(20, 0);
    EXPECT_FALSE(history.stateAt(1).before);
    EXPECT_EQ(answer(1, 2).recordsBefore, 20U);
    EXPECT_EQ(answer(1, 3).recordsBefore, 1U);
    EXPECT_EQ(history.stateAt(4).before, 20U);
    EXPECT_FALSE(history.stateAt(13).before);
}

TEST_F(History, ALoadIsLateOnceAfterThreePeriods) {
    history.began(0);
    EXPECT_EQ(history.becameLate(30), 0U);
    EXPECT_EQ(history.becameLate(30.1), 1U);
    EXPECT_EQ(history.becameLate(40), 0U);
    EXPECT_EQ(stateAt(40), State::Late);
    EXPECT_EQ(history.stateAt(40).words, "no answer for 40 s");
    answer(1, 41);
    EXPECT_EQ(stateAt(41), State::Loaded);
}

TEST_F(History, ALoadIsShownAsUnderWayWhenItTakesItsTime) {
    answer(1, 0);
    history.began(10);
    EXPECT_EQ(stateAt(10.5), State::Loaded);
    EXPECT_EQ(stateAt(12), State::Loading);
    EXPECT_EQ(history.stateAt(12).words, "for 2 s");
}

TEST_F(History, WhatIsOlderThanThreePeriodsIsStale) {
    answer(1, 0);
    EXPECT_EQ(stateAt(30), State::Loaded);
    EXPECT_EQ(stateAt(31), State::Stale);
}

TEST_F(History, ALoadThatFailsIsShownWithItsErrorUntilOneIsGood) {
    answer(0, 0, LoadOutcome::Failed);
    EXPECT_EQ(stateAt(1), State::Failed);
    EXPECT_EQ(history.stateAt(1).words, "lost");
    history.explain("address: there is no such file");
    EXPECT_EQ(history.stateAt(1).words, "address: there is no such file");
    answer(0, 2, LoadOutcome::Empty);
    EXPECT_EQ(stateAt(2), State::Empty);
    answer(5, 3);
    EXPECT_EQ(stateAt(3), State::Loaded);
    EXPECT_EQ(history.stateAt(3).words, "");
}

}  // namespace
}  // namespace workbench
