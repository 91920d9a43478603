// What names a row in DataTable mode, and in DataStructure mode without a table.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "platform/Platform.h"
#include "readers/xml/XMLHandler.h"
#include "tests/fakes/platform/FakeClock.h"
#include "tests/readers/xml/read.h"
#include "tests/support/AsWorker.h"
#include "tests/support/TempDirectory.h"

namespace intake {
namespace {

constexpr auto TEAMS = R"(<league name="North">
  <team id="7"><name><short>GRW</short><long>Greywharf</long></name></team>
  <team id="9"><name><short>KEL</short></name></team>
  <team><name/></team>
</league>)";

std::string table(const std::string& key) {
    return fileScript(TEAMS, {.xpath = "//team", .mode = DATA_TABLE, .key = key});
}

TEST(XmlKey, MayBeAnAttributeOfTheRow) {
    EXPECT_EQ(table("@id"), R"(T[7]={{name="GRWGreywharf";};};T[9]={{name="KEL";};};)");
}

TEST(XmlKey, MayBeAPathBelowTheRow) {
    EXPECT_EQ(table("name/short"), R"(T[GRW]={{name="GRWGreywharf";};};T[KEL]={{name="KEL";};};)");
}

TEST(XmlKey, MayBeChosenByAnAttribute) {
    EXPECT_EQ(fileScript("<d><r><n k='1'>a</n><n k='2'>b</n></r></d>",
                         {.xpath = "/d/r", .mode = DATA_TABLE, .key = "n[@k='2']"}),
              R"(T[b]={{n="a";n="b";};};)");
}

TEST(XmlKey, MayBeASection) {
    EXPECT_EQ(fileScript("<d><r><n><![CDATA[a]]></n></r></d>",
                         {.xpath = "/d/r", .mode = DATA_TABLE, .key = "n/text()"}),
              R"(T[a]={{n="a";};};)");
}

TEST(XmlKey, MayLeadUpwards) {
    EXPECT_EQ(fileScript(TEAMS, {.xpath = "//team[1]", .mode = DATA_TABLE, .key = "../@name"}),
              R"(T[North]={{name="GRWGreywharf";};};)");
}

TEST(XmlKey, MayBeTheRowItself) {
    EXPECT_EQ(fileScript(TEAMS, {.xpath = "//short", .mode = DATA_TABLE, .key = "."}),
              R"(T[GRW]={{#text="GRW";};};T[KEL]={{#text="KEL";};};)");
}

TEST(XmlKey, IsTheFirstOfSeveralNodes) {
    EXPECT_EQ(table("name/*"), R"(T[GRW]={{name="GRWGreywharf";};};T[KEL]={{name="KEL";};};)");
    EXPECT_EQ(fileScript(TEAMS, {.xpath = "//long", .mode = DATA_TABLE, .key = "ancestor::*/@*"}),
              R"(T[North]={{#text="Greywharf";};};)");
}

TEST(XmlKey, ThatIsEmptyTextStillNamesTheRow) {
    EXPECT_EQ(table("name[not(short)]"), R"(T[]={{name="";};};)");
}

TEST(XmlKey, ThatOccursTwiceNamesBothRows) {
    const std::string script = fileScript("<a><b k='1'><c>x</c></b><b k='1'><c>y</c></b></a>",
                                          {.xpath = "/a/b", .mode = DATA_TABLE, .key = "@k"});
    EXPECT_EQ(script, R"(T[1]={{c="x";};};T[1]={{c="y";};};)");
}

TEST(XmlKey, IsATextEvenWhenMarkupIsAskedFor) {
    EXPECT_EQ(fileScript("<a><k>1</k></a>",
                         {.xpath = "/a", .mode = DATA_TABLE, .key = "k", .markup = true}),
              R"(T[1]={{k="<k>1</k>";};};)");
}

TEST(XmlKey, ThatSelectsNothingLeavesTheRowOutAndKeepsTheOthers) {
    EXPECT_EQ(table("name/long"), R"(T[Greywharf]={{name="GRWGreywharf";};};)");
    EXPECT_EQ(table("@none"), "");
    EXPECT_EQ(
        fileScript(TEAMS, {.xpath = "//team", .mode = DATA_STRUCTURE, .key = "@id", .table = ""}),
        R"(7={name="GRWGreywharf";};9={name="KEL";};)");
}

TEST(XmlKey, OutsideTheDeliveredRowsIsNotMissed) {
    EXPECT_EQ(
        fileScript(TEAMS, {.xpath = "//team", .mode = DATA_TABLE, .key = "@id", .numRows = 2}),
        R"(T[7]={{name="GRWGreywharf";};};T[9]={{name="KEL";};};)");
}

/// The log of loading the teams at level WARNING.
std::string warnings(const XmlQuery& query, const std::string& source = TEAMS) {
    const TempWorkingDirectory directory;
    std::ofstream("teams.xml") << source;
    RequestRecord request;
    request.filename = "teams.xml";
    request.xpath = "//team";
    request.targetMode = query.mode;
    request.key = query.key;
    request.table = query.table;
    request.numRows = query.numRows;
    const AsWorker worker;
    FakeClock clock;
    ReaderLogger logger(clock, systemPlatform().textFiles);
    logger.setLevel(LOG_WARNING);
    EndMark endMark;
    const auto connections = systemPlatform().http.keepConnections();
    std::string script, error;
    EXPECT_TRUE(XMLHandler(logger, systemPlatform().xml, *connections, endMark)
                    .Read(request, script, error));
    std::ifstream log("2026-03-05-0907-Intake.log");
    return {std::istreambuf_iterator<char>(log), {}};
}

TEST(XmlKey, ThatSelectsNothingIsOneWarningForAllRows) {
    EXPECT_EQ(warnings({.mode = DATA_TABLE, .key = "name/long"}),
              "5/3 9:7 WARNING: \t\t\tXML: 2 of 3 rows left out: "
              "\"name/long\" selects nothing in them\n");
    EXPECT_EQ(warnings({.mode = DATA_TABLE, .key = "@id"}),
              "5/3 9:7 WARNING: \t\t\tXML: 1 of 3 rows left out: "
              "\"@id\" selects nothing in them\n");
    EXPECT_EQ(warnings({.mode = DATA_STRUCTURE, .key = "@none", .table = ""}),
              "5/3 9:7 WARNING: \t\t\tXML: 3 of 3 rows left out: "
              "\"@none\" selects nothing in them\n");
}

/// The name is for the parser, which begins anew behind rows that were counted already.
TEST(XmlKey, ThatSelectsNothingIsCountedOnceWhereTheDocumentIsReadAnew) {
    EXPECT_EQ(warnings({.mode = DATA_TABLE, .key = "@id"},
                       "<league><team/><team id='1'/><\xC3\xB6/></league>"),
              "5/3 9:7 WARNING: \t\t\tXML: 1 of 2 rows left out: "
              "\"@id\" selects nothing in them\n");
}

TEST(XmlKey, ThatIsFoundOrNotNeededIsNoWarning) {
    EXPECT_EQ(warnings({.mode = DATA_TABLE, .key = "name"}), "");
    EXPECT_EQ(warnings({.mode = DATA_TABLE, .key = "@id", .numRows = 2}), "");
    EXPECT_EQ(warnings({.mode = DATA_ARRAY, .key = "@none"}), "");
    EXPECT_EQ(warnings({.mode = DATA_STRUCTURE, .key = "@none", .table = "T"}), "");
}

}  // namespace
}  // namespace intake
