#include "workbench/cli/parameter_values.h"

#include <gtest/gtest.h>

#include "host/lumo.h"
#include "workbench/cli/UsageError.h"
#include "workbench/lumo/Host.h"

using lumo::Host;
using lumo::Record;
using workbench::setParameter;
using workbench::UsageError;

namespace {

struct ParameterValues : testing::Test {
    ParameterValues() {
        static const char* const entries[] = {" EXCEL ", " SQL ", nullptr};
        evRegisterParameterRadio("query", "Query", 0, entries);
        evRegisterParameterBool("auth", "Auth", 0);
        evRegisterParameterInt("rows", "Rows", 5, 1, 9);
        evRegisterParameterFloat("period", "Period", 10.0F, 0.0F, 6000.0F);
        evRegisterParameterString("file", "File", "", 80, 8, 0);
        evRegisterPushButton("load", "Load", 0);
    }

    int32_t set(const char* name, std::string_view value) {
        return setParameter(host.parameters, record(), name, value);
    }

    std::string refusal(const char* name, std::string_view value) {
        try {
            set(name, value);
        } catch (const UsageError& error) {
            return error.what();
        }
        return "accepted";
    }

    Record& record() {
        if (!record_) record_ = std::make_unique<Record>(host.parameters);
        return *record_;
    }

    Host host;
    std::unique_ptr<Record> record_;
};

}  // namespace

TEST_F(ParameterValues, SettingReturnsTheHostIndex) {
    EXPECT_EQ(set("query", "SQL"), 1);
    EXPECT_EQ(set("file", "x"), 5);
}

TEST_F(ParameterValues, AChoiceTakesAnEntrysTextWithoutBlanksAndCase) {
    set("query", "sql");
    EXPECT_EQ(record().integer(1), 1);
    set("query", " Excel ");
    EXPECT_EQ(record().integer(1), 0);
}

TEST_F(ParameterValues, AChoiceTakesTheIndexOfAnEntry) {
    set("query", "1");
    EXPECT_EQ(record().integer(1), 1);
    EXPECT_NE(refusal("query", "2"), "accepted");
}

TEST_F(ParameterValues, AChoiceRefusesAnythingElseAndSaysWhatFits) {
    EXPECT_EQ(refusal("query", "CSV"),
              "\"query\" cannot be \"CSV\": it takes EXCEL, SQL, or an index from 0 to 1.");
    EXPECT_NE(refusal("query", "3"), "accepted");
    EXPECT_NE(refusal("query", "-1"), "accepted");
    EXPECT_NE(refusal("query", "1x"), "accepted");
    EXPECT_EQ(record().integer(1), 0);
}

TEST_F(ParameterValues, ASwitchTakesZeroOneTrueAndFalse) {
    for (const auto& [text, value] :
         {std::pair{"1", 1}, std::pair{"0", 0}, std::pair{"true", 1}, std::pair{"false", 0}}) {
        set("auth", text);
        EXPECT_EQ(record().integer(2), value) << text;
    }
    EXPECT_EQ(refusal("auth", "yes"), "\"auth\" cannot be \"yes\": it takes 0, 1, true or false.");
}

TEST_F(ParameterValues, ANumberMustBeOneAndLieWithinItsLimits) {
    set("rows", "9");
    EXPECT_EQ(record().integer(3), 9);
    EXPECT_EQ(refusal("rows", "10"),
              "\"rows\" cannot be \"10\": it takes a whole number from 1 to 9.");
    EXPECT_NE(refusal("rows", "2.5"), "accepted");
    set("period", "0.02");
    EXPECT_EQ(record().number(4), 0.02F);
    EXPECT_EQ(refusal("period", "6001"),
              "\"period\" cannot be \"6001\": it takes a number from 0 to 6000.");
    EXPECT_NE(refusal("period", "nan"), "accepted");
    EXPECT_NE(refusal("period", ""), "accepted");
    EXPECT_EQ(record().number(4), 0.02F);
}

TEST_F(ParameterValues, ATextMustLeaveRoomForItsTerminator) {
    set("file", "1234567");
    EXPECT_EQ(record().text(5), "1234567");
    EXPECT_EQ(refusal("file", "12345678"), "\"file\" takes at most 7 bytes; this text has 8.");
    EXPECT_EQ(record().text(5), "1234567");
}

TEST_F(ParameterValues, ATextMayBeEmptyButHoldsNoZeroByte) {
    set("file", "");
    EXPECT_EQ(record().text(5), "");
    EXPECT_EQ(refusal("file", std::string_view("a\0b", 3)),
              "\"file\" cannot hold a text with a zero byte in it.");
}

TEST_F(ParameterValues, AnUnknownNameIsAnsweredWithTheNearest) {
    EXPECT_EQ(refusal("flie", "x"), "There is no parameter \"flie\". Did you mean \"file\"?");
}

TEST_F(ParameterValues, AButtonHasNoValueAndIsNeverSuggested) {
    EXPECT_EQ(refusal("load", "1"), "\"load\" is a button; it has no value.");
    EXPECT_EQ(refusal("laod", "1"), "There is no parameter \"laod\". Did you mean \"auth\"?");
}
