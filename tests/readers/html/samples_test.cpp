// The sample page gives what the guide to HTML sources and the sample scene promise.

#include <gtest/gtest.h>

#include "tests/readers/html/read.h"

namespace intake {
namespace {

constexpr auto SWIMMING = SOURCE_ROOT "/samples/swimming.html";

TEST(HtmlSample, HasTheMedalsByClub) {
    EXPECT_EQ(
        sourceScript(SWIMMING, {.selector = "ID medals",
                                .mode = DATA_TABLE,
                                .key = "Club",
                                .table = "Medals",
                                .fromRow = 1,
                                .numRows = 3}),
        R"(Medals[Greywharf]={{Club=""Greywharf"";Gold=""5"";Silver=""2"";Bronze=""1"";};};)"
        R"(Medals[Kelderby & District]={{Club=""Kelderby & District"";Gold=""3"";Silver=""4"";)"
        R"(Bronze=""4"";};};)"
        R"(Medals[Morrowgate]={{Club=""Morrowgate"";Gold=""1"";Silver=""3"";Bronze=""4"";};};)");
}

TEST(HtmlSample, HasTheFinalOfTheWomenBelowItsHeading) {
    EXPECT_EQ(
        sourceScript(SWIMMING, {.selector = "TEXT Women", .table = "Women", .fromRow = 1}),
        R"(Women[0]={{Lane=""4"";Swimmer=""Maren Quill"";Club=""Kelderby & District"";)"
        R"(Time=""56.73"";};};)"
        R"(Women[1]={{Lane=""3"";Swimmer=""Ada Lindqvist"";Club=""Greywharf"";Time=""57.02"";};};)"
        R"(Women[2]={{Lane=""5"";Swimmer=""Noor Sallow"";Club=""Morrowgate"";Time=""58.11"";};};)"
        "READER_NUM_RECORDS=3;");
}

TEST(HtmlSample, HasTheNamesOfTheFirstFinal) {
    EXPECT_EQ(sourceScript(SWIMMING, {.selector = "CLASS results final",
                                      .mode = DATA_FIELD_ARRAY,
                                      .key = "Swimmer",
                                      .table = "Men",
                                      .fromRow = 1}),
              "Men[0-3]=\"\"Jonas Hale\"\",\"\"Ruben Ostrander\"\",\"\"\xC3\x89mile Tarrow\"\","
              "\"\"Tobias Fenn\"\"; READER_NUM_RECORDS=4;");
}

}  // namespace
}  // namespace intake
