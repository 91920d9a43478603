// The script of every target mode.

#include "tests/readers/sql/SQLHandlerFixture.h"

namespace intake {
namespace {

/// Two teams with their points.
class SqlModes : public SQLHandlerFixture {
protected:
    SqlModes() {
        databases_.names = {"code", "team", "points"};
        databases_.rows = {{"HOL", "Holm", 31}, {"ESK", "Eskdale", 28}};
    }
};

TEST_F(SqlModes, ADataTableHasARecordForEachRowNamedByItsKeyAndNoCount) {
    request_.varsPrefix = "L_";
    const std::string table = script(DATA_TABLE);
    EXPECT_EQ(table, R"(T[HOL]={{code="HOL";team="Holm";points="31";};};)"
                     R"(T[ESK]={{code="ESK";team="Eskdale";points="28";};};)");
    EXPECT_EQ(stored(table),
              "T = [HOL: [0: {code: \"HOL\", team: \"Holm\", points: \"31\"}], "
              "ESK: [0: {code: \"ESK\", team: \"Eskdale\", points: \"28\"}]]\n");
}

TEST_F(SqlModes, ADataTableTakesAnyValueForItsKey) {
    request_.key = "points";
    EXPECT_EQ(script(DATA_TABLE), R"(T[31]={{code="HOL";team="Holm";points="31";};};)"
                                  R"(T[28]={{code="ESK";team="Eskdale";points="28";};};)");
}

TEST_F(SqlModes, TheKeyIsFoundWithoutRegardToCase) {
    request_.key = "CoDe";
    EXPECT_EQ(script(DATA_FIELD_ARRAY), R"(T[0-1]=""HOL"",""ESK"";READER_NUM_RECORDS=2;)");
    EXPECT_EQ(script(DATA_TABLE), R"(T[HOL]={{code="HOL";team="Holm";points="31";};};)"
                                  R"(T[ESK]={{code="ESK";team="Eskdale";points="28";};};)");
}

TEST_F(SqlModes, ADataArrayNumbersItsRecordsFromZeroAndCountsThem) {
    request_.varsPrefix = "L_";
    const std::string array = script(DATA_ARRAY);
    EXPECT_EQ(array, R"(T[0]={{code="HOL";team="Holm";points="31";};};)"
                     R"(T[1]={{code="ESK";team="Eskdale";points="28";};};L_READER_NUM_RECORDS=2;)");
    EXPECT_EQ(stored(array),
              "T = [0: [0: {code: \"HOL\", team: \"Holm\", points: \"31\"}], "
              "1: [0: {code: \"ESK\", team: \"Eskdale\", points: \"28\"}]]\n"
              "L_READER_NUM_RECORDS = 2\n");
}

TEST_F(SqlModes, ADataArrayNeedsNoKey) {
    request_.key = "no such field";
    EXPECT_EQ(script(DATA_ARRAY),
              R"(T[0]={{code="HOL";team="Holm";points="31";};};)"
              R"(T[1]={{code="ESK";team="Eskdale";points="28";};};READER_NUM_RECORDS=2;)");
}

TEST_F(SqlModes, ADataStructureIsNamedByTheTableAndHasNoCount) {
    request_.varsPrefix = "L_";
    request_.key = "no such field";
    const std::string structures = script(DATA_STRUCTURE);
    EXPECT_EQ(structures, R"(T={code="HOL";team="Holm";points="31";};)"
                          R"(T={code="ESK";team="Eskdale";points="28";};)");
    EXPECT_EQ(stored(structures), "T = {code: \"ESK\", team: \"Eskdale\", points: \"28\"}\n");
}

TEST_F(SqlModes, ADataStructureWithoutATableIsNamedByEachRecordsKey) {
    request_.table.clear();
    const std::string structures = script(DATA_STRUCTURE);
    EXPECT_EQ(structures, R"(HOL={code="HOL";team="Holm";points="31";};)"
                          R"(ESK={code="ESK";team="Eskdale";points="28";};)");
    EXPECT_EQ(stored(structures),
              "HOL = {code: \"HOL\", team: \"Holm\", points: \"31\"}\n"
              "ESK = {code: \"ESK\", team: \"Eskdale\", points: \"28\"}\n");
}

TEST_F(SqlModes, ADataFieldArrayHoldsTheKeyColumnAndCountsIt) {
    request_.key = "team";
    request_.varsPrefix = "L_";
    const std::string array = script(DATA_FIELD_ARRAY);
    EXPECT_EQ(array, R"(T[0-1]=""Holm"",""Eskdale"";L_READER_NUM_RECORDS=2;)");
    EXPECT_EQ(stored(array), "T = [0: \"Holm\", 1: \"Eskdale\"]\nL_READER_NUM_RECORDS = 2\n");
}

TEST_F(SqlModes, SharedMemoryHasDelimitersBetweenFieldsAndBetweenRowsOnly) {
    EXPECT_EQ(script(SHARED_MEMORY), "HOL|Holm|31/ESK|Eskdale|28");
    request_.fieldsDelimiter = " - ";
    request_.rowsDelimiter = "\r\n";
    EXPECT_EQ(script(SHARED_MEMORY), "HOL - Holm - 31\r\nESK - Eskdale - 28");
    request_.fieldsDelimiter = request_.rowsDelimiter = "";
    EXPECT_EQ(script(SHARED_MEMORY), "HOLHolm31ESKEskdale28");
}

TEST_F(SqlModes, AnEmptyResultHasNoRowsAndSucceeds) {
    databases_.rows.clear();
    request_.varsPrefix = "L_";
    EXPECT_EQ(script(DATA_TABLE), "");
    EXPECT_EQ(script(DATA_ARRAY), "L_READER_NUM_RECORDS=0;");
    EXPECT_EQ(script(DATA_STRUCTURE), "");
    EXPECT_EQ(script(DATA_FIELD_ARRAY), "T[0--1]=;L_READER_NUM_RECORDS=0;");
    EXPECT_EQ(script(SHARED_MEMORY), "");
}

TEST_F(SqlModes, AnEmptyResultMissesNoKey) {
    databases_.rows.clear();
    request_.key = "no such field";
    EXPECT_EQ(script(DATA_TABLE), "");
    EXPECT_EQ(script(DATA_FIELD_ARRAY), "T[0--1]=;READER_NUM_RECORDS=0;");
}

TEST_F(SqlModes, ThatDoNotExistWriteNothing) {
    EXPECT_EQ(script(static_cast<TargetMode>(5)), "");
    EXPECT_EQ(script(static_cast<TargetMode>(-1)), "");
}

TEST_F(SqlModes, NamesAndValuesStandAsTheyAre) {
    databases_.names = {"co de", "na=me"};
    databases_.rows = {{"say \"hi\"; {x}", "\xC3\xA9t\xC3\xA9"}};
    request_.key = "na=me";
    request_.table = "My table";
    EXPECT_EQ(scriptAlone(DATA_TABLE),
              "My table[\xC3\xA9t\xC3\xA9]={{co de=\"say \"hi\"; {x}\";na=me=\"\xC3\xA9t\xC3\xA9\";"
              "};};");
}

TEST_F(SqlModes, TheScriptIsAppendedToWhatIsThere) {
    script_ = "A=1;";
    request_.targetMode = DATA_FIELD_ARRAY;
    EXPECT_TRUE(read());
    EXPECT_EQ(script_, R"(A=1;T[0-1]=""HOL"",""ESK"";READER_NUM_RECORDS=2;)");
}

}  // namespace
}  // namespace intake
