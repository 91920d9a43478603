// Several workers read the same workbook at once.

#include <thread>

#include "tests/platform/workbook/WorkbookTest.h"

namespace intake {

namespace {

using WorkbookThreads = WorkbookTest;

TEST_F(WorkbookThreads, ReadTheSameFileAtOnce) {
    std::string content = "<row><c t='s'><v>0</v></c></row>";
    std::string expected = "A\n";
    for (int i = 0; i < 500; ++i) {
        content += "<row><c><v>" + std::to_string(i) + "</v></c></row>";
        expected += std::to_string(i) + "\n";
    }
    const std::string path =
        write(TestBook().strings("<si><t>A</t></si>").sheet("S", content).bytes());
    const auto work = [&] {
        for (int i = 0; i < 20; ++i) {
            ProviderConnection connection(endMark_);
            connection.open(connectionString(path));
            EXPECT_EQ(written(*connection.openRecordset("SELECT * FROM [s$] ORDER BY A")),
                      expected);
        }
    };
    std::thread first(work);
    std::thread second(work);
    work();
    first.join();
    second.join();
}

}  // namespace

}  // namespace intake
