// The store as people read it and as programs read it.

#include <gtest/gtest.h>

#include "workbench/cli/store_json.h"
#include "workbench/cli/store_table.h"
#include "workbench/lumo/Host.h"

using workbench::PageSize;

namespace {

struct StoreOutput : testing::Test {
    lumo::Host host;

    void execute(const char* script) {
        const auto error = host.store.core().execute(script);
        ASSERT_FALSE(error) << error->message;
    }
    std::string json() { return workbench::storeJson(host.store.core()); }
    std::string tables(PageSize page = {}) {
        return workbench::storeTables(host.store.core(), host.memories, page);
    }
};

}  // namespace

TEST_F(StoreOutput, ARecordTableStartsWithTheKeyAndEndsWithThePlainFields) {
    execute(
        "T[ARS]={{name=\"\"Arsenal\"\";pts=89;},};T[MCI]={{name=\"\"City\"\";pts=91;},};"
        "READER_NUM_RECORDS=2;");
    EXPECT_EQ(tables(),
              "T (2 records)\n"
              "key  name     pts\n"
              "---  -------  ---\n"
              "ARS  Arsenal   89\n"
              "MCI  City      91\n"
              "\n"
              "field               value\n"
              "------------------  -----\n"
              "READER_NUM_RECORDS      2\n");
}

TEST_F(StoreOutput, RecordsNumberedFromZeroHaveAnIndex) {
    execute("T[0]={a=1;};T[1]={b=\"x\";};");
    EXPECT_EQ(tables(),
              "T (2 records)\n"
              "index  a  b\n"
              "-----  -  -\n"
              "    0  1\n"
              "    1     x\n");
}

TEST_F(StoreOutput, ASingleRecordIsCountedAsOne) {
    execute("T[k]={a=1;};");
    EXPECT_EQ(tables(), "T (1 record)\nkey  a\n---  -\nk    1\n");
}

TEST_F(StoreOutput, AnArrayIsATableOfItsElements) {
    execute("T[0-1]=\"\"x\"\",\"\"y\"\";");
    EXPECT_EQ(tables(), "T (2 elements)\nindex  value\n-----  -----\n    0  x\n    1  y\n");
}

TEST_F(StoreOutput, AStructureIsATableOfNamesAndValues) {
    execute("S={name=\"\"Arsenal\"\";ground={city=\"\"London\"\";seats=60704;};};");
    EXPECT_EQ(tables(),
              "S (2 members)\n"
              "name    value\n"
              "------  ----------------------------\n"
              "name    Arsenal\n"
              "ground  {city: London, seats: 60704}\n");
}

TEST_F(StoreOutput, ALongTableIsShownInPart) {
    execute("T[0-4]=1,2,3,4,5;");
    EXPECT_EQ(tables({80, 2, 40}),
              "T (5 elements)\n"
              "index  value\n"
              "-----  -----\n"
              "    0      1\n"
              "    1      2\n"
              "(3 more rows; load --out json shows everything)\n");
}

TEST_F(StoreOutput, AnEmptyStoreSaysSo) {
    EXPECT_EQ(tables(), "The store is empty.\n");
}

TEST_F(StoreOutput, SharedMemoriesThatHoldSomethingAreShown) {
    host.memories.global.create("VAR");
    host.memories.set(host.memories.global.object(), "VAR", "a|b");
    EXPECT_EQ(tables(),
              "Shared memory (global)\nvariable  value\n--------  -----\nVAR       a|b\n");
}

TEST_F(StoreOutput, JsonKeepsTheOrderAndTheWritingOfNumbers) {
    execute("T[k]={{price=7.50;big=1.23457e+06;name=\"\"a \"b\"\\\"\";},};N=2;");
    EXPECT_EQ(json(),
              "{\n"
              "  \"T\": {\n"
              "    \"k\": {\n"
              "      \"price\": 7.50,\n"
              "      \"big\": 1.23457e+06,\n"
              "      \"name\": \"a \\\"b\\\"\\\\\"\n"
              "    }\n"
              "  },\n"
              "  \"N\": 2\n"
              "}\n");
}

TEST_F(StoreOutput, JsonWritesAListAsAnArray) {
    execute("T[0-1]=\"\"x\"\",2;");
    EXPECT_EQ(json(), "{\n  \"T\": [\n    \"x\",\n    2\n  ]\n}\n");
}

TEST_F(StoreOutput, JsonWritesKeysThatAreNotACountAsNames) {
    execute("T[1]=5;T[0]=6;");
    EXPECT_EQ(json(), "{\n  \"T\": {\n    \"1\": 5,\n    \"0\": 6\n  }\n}\n");
}

TEST_F(StoreOutput, JsonKeepsAnArrayOfOneObjectInsideARecord) {
    execute("T[0]={goals[0-0]={{minute=9;},};};");
    EXPECT_EQ(json(),
              "{\n"
              "  \"T\": [\n"
              "    {\n"
              "      \"goals\": [\n"
              "        {\n"
              "          \"minute\": 9\n"
              "        }\n"
              "      ]\n"
              "    }\n"
              "  ]\n"
              "}\n");
}

TEST_F(StoreOutput, JsonIsValidWhateverTheTextsHold) {
    host.store.core().define("latin").setText("M\xFCller\x01");
    EXPECT_EQ(json(), "{\n  \"latin\": \"Müller\\u0001\"\n}\n");
}

TEST_F(StoreOutput, JsonOfAnEmptyStoreIsAnEmptyObject) {
    EXPECT_EQ(json(), "{}\n");
}
