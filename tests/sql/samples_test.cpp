// The sample database gives what its scene promises.

#include <iterator>

#include "tests/sql/SqlWorkbench.h"

namespace intake {
namespace {

/// The scene's folder with its database, as ./run leaves them.
struct SqlSamples : SqlWorkbench {
    SqlSamples() {
        std::filesystem::create_directories(folder / "build/samples");
        std::ifstream file(SOURCE_ROOT "/samples/regatta.sql", std::ios::binary);
        makeDatabase(folder / "build/samples/regatta.db",
                     std::string(std::istreambuf_iterator<char>(file), {}));
    }

    std::string instance(const std::string& name) {
        const ChildResult result = load({}, {"--scene", SOURCE_ROOT "/samples/regatta.scene.json",
                                             "--instance", name, "--out", "script"});
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.status, 0);
        return result.out;
    }
};

TEST_F(SqlSamples, HaveTheStandingBySailNumber) {
    EXPECT_EQ(instance("standing"),
              R"(Standing[KB 7]={{rank="1";sail="KB 7";name="Ebb & Flow";skipper="Tomas Brandt";)"
              R"(club="Kelderby";points="6";finished="3";};};)"
              R"(Standing[GW 12]={{rank="1";sail="GW 12";name="Kittiwake";skipper="Ines Halloran";)"
              R"(club="Greywharf";points="6";finished="3";};};)"
              R"(Standing[SF 31]={{rank="3";sail="SF 31";name="Salt Road";skipper="Maud Ekström";)"
              R"(club="Sallowfield";points="7";finished="3";};};)"
              R"(Standing[IL 88]={{rank="4";sail="IL 88";name="Second Wind";skipper="Yara Quint";)"
              R"(club="";points="13";finished="2";};};)"
              R"(Standing[MG 4]={{rank="5";sail="MG 4";name="Lantern";skipper="Piet Overdijk";)"
              R"(club="Morrowgate";points="15";finished="2";};};)");
}

TEST_F(SqlSamples, HaveTheFirstThreeOfTheLastRaceWithTheirTimes) {
    EXPECT_EQ(instance("lastRace"),
              R"(LastRace[0]={{place="1";name="Ebb & Flow";time="55:02.6";};};)"
              R"(LastRace[1]={{place="2";name="Kittiwake";time="55:05.0";};};)"
              R"(LastRace[2]={{place="3";name="Second Wind";time="55:49.9";};};)"
              "RACE_READER_NUM_RECORDS=3;");
}

TEST_F(SqlSamples, HaveTheNamesOfTheBoats) {
    EXPECT_EQ(instance("boats"),
              R"(Boats[0-4]=""Ebb & Flow"",""Kittiwake"",""Lantern"",""Salt Road"",)"
              R"(""Second Wind"";BOATS_READER_NUM_RECORDS=5;)");
}

TEST_F(SqlSamples, HaveTheStandingAsOneText) {
    EXPECT_EQ(instance("crawl"),
              "1 Ebb & Flow 6 points  *  1 Kittiwake 6 points  *  3 Salt Road 7 points  *  "
              "4 Second Wind 13 points  *  5 Lantern 15 points");
}

}  // namespace
}  // namespace intake
