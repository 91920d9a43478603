// Recordsets of the system's own ADO, read to whole scripts.

#include "tests/platform/windows/ado/AdoTest.h"
#include "tests/platform/windows/ado/InMemoryTable.h"
#include "tests/support/expect_carried_out.h"

namespace intake {
namespace {

class AdoRecords : public AdoTest {
protected:
    /// The script of a load of three teams in that mode; the store must be able to carry it out.
    std::string teams(TargetMode mode) {
        InMemoryTable table;
        table.addField(L"code", InMemoryTable::TEXT);
        table.addField(L"Pl\u00e4tze", InMemoryTable::INTEGER);
        table.addField(L"average", InMemoryTable::DOUBLE);
        table.addField(L"home", InMemoryTable::BOOLEAN);
        std::vector<std::vector<Variant>> records(3);
        records[0] = team("BRA", 1, 2.25, true);
        records[1] = team("\xC3\x96ST", -17, 1234567, false);
        records[2] = team("HOL", 0, 0.5, true);
        table.fill(records);
        const std::string written = script(table, mode);
        expectCarriedOut(written, mode);
        return written;
    }

private:
    static std::vector<Variant> team(const char* code, long places, double average, bool home) {
        std::vector<Variant> values(4);
        values[0].setText(code);
        values[1].setInteger(places);
        VARIANT& number = *values[2].out();
        number.vt = VT_R8;
        number.dblVal = average;
        values[3].setBool(home);
        return values;
    }
};

TEST_F(AdoRecords, BecomeATable) {
    EXPECT_EQ(teams(DATA_TABLE),
              "T[BRA]={{code=\"BRA\";Pl\xC3\xA4tze=\"1\";average=\"2.25\";home=\"1\";};};"
              "T[\xC3\x96ST]={{code=\"\xC3\x96ST\";Pl\xC3\xA4tze=\"-17\";average=\"1.23457e+06\";"
              "home=\"0\";};};"
              "T[HOL]={{code=\"HOL\";Pl\xC3\xA4tze=\"0\";average=\"0.5\";home=\"1\";};};");
}

TEST_F(AdoRecords, BecomeAnArrayOfThoseThatAreAskedFor) {
    request_.fromRow = 1;
    request_.numRows = 1;
    EXPECT_EQ(teams(DATA_ARRAY),
              "T[0]={{code=\"\xC3\x96ST\";Pl\xC3\xA4tze=\"-17\";average=\"1.23457e+06\";"
              "home=\"0\";};};READER_NUM_RECORDS=2;");
}

TEST_F(AdoRecords, BecomeStructures) {
    request_.table.clear();
    request_.fromRow = 2;
    EXPECT_EQ(teams(DATA_STRUCTURE),
              "HOL={code=\"HOL\";Pl\xC3\xA4tze=\"0\";average=\"0.5\";home=\"1\";};");
}

TEST_F(AdoRecords, BecomeAFieldArray) {
    request_.key = "CODE";
    EXPECT_EQ(teams(DATA_FIELD_ARRAY),
              "T[0-2]=\"\"BRA\"\",\"\"\xC3\x96ST\"\",\"\"HOL\"\";READER_NUM_RECORDS=3;");
}

TEST_F(AdoRecords, BecomeATextInSharedMemory) {
    EXPECT_EQ(teams(SHARED_MEMORY), "BRA|1|2.25|1/\xC3\x96ST|-17|1.23457e+06|0/HOL|0|0.5|1");
}

TEST_F(AdoRecords, HaveNoKeyThatIsNotAmongTheirFields) {
    InMemoryTable table;
    table.addField(L"name", InMemoryTable::TEXT);
    std::vector<std::vector<Variant>> records(1);
    records[0] = std::vector<Variant>(1);
    records[0][0].setText("Brazil");
    table.fill(records);
    EXPECT_FALSE(read(table));
    EXPECT_EQ(error_, "ERROR: Key: \"code\" not found.");
}

TEST_F(AdoRecords, WithNullsHaveEmptyValues) {
    InMemoryTable table;
    table.addField(L"code", InMemoryTable::TEXT);
    table.addField(L"total", InMemoryTable::BIG_INTEGER);
    std::vector<std::vector<Variant>> records(2);
    for (std::vector<Variant>& record : records) {
        record = std::vector<Variant>(2);
        record[0].out()->vt = record[1].out()->vt = VT_NULL;
    }
    records[0][0].setText("A");
    VARIANT& total = *records[1][1].out();
    total.vt = VT_I8;
    total.llVal = 9999999999;
    table.fill(records);
    EXPECT_EQ(script(table, DATA_ARRAY),
              "T[0]={{code=\"A\";total=\"\";};};T[1]={{code=\"\";total=\"9999999999\";};};"
              "READER_NUM_RECORDS=2;");
}

}  // namespace
}  // namespace intake
