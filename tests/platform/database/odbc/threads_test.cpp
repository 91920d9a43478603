// Many workers use the driver manager and a driver at once, each a connection of its own.

#include <array>
#include <thread>

#include "tests/platform/database/odbc/OdbcSqliteTest.h"

namespace intake {

namespace {

constexpr int THREADS = 8;
constexpr int ROUNDS = 20;

/// One worker's life: connections that open and one that does not, a query and one that is wrong.
std::string work(int worker) {
    const EndMark endMark;
    std::string all;
    for (int round = 0; round < ROUNDS; ++round) {
        ProviderConnection connection(endMark);
        connection.open("DSN=test");
        all += recordsOf(
            *connection.openRecordset("SELECT v, 'ä', 1.5, " + std::to_string(worker) + " FROM t"));
        errorOf([&] { connection.openRecordset("SELEC"); });
        errorOf([&] { ProviderConnection(endMark).open("Driver=Nobody's"); });
    }
    return all;
}

std::string expected(int worker) {
    const std::string number = std::to_string(worker);
    std::string all;
    for (int round = 0; round < ROUNDS; ++round) {
        all += "I4 1|BSTR ä|R8 1.5|I4 " + number + "|\nBSTR two|BSTR ä|R8 1.5|I4 " + number + "|\n";
    }
    return all;
}

using OdbcThreads = OdbcSqliteTest;

TEST_F(OdbcThreads, EachReadsItsOwnRecords) {
    run("CREATE TABLE t (v INTEGER)");
    run("INSERT INTO t VALUES (1), ('two')");
    std::array<std::string, THREADS> results;
    std::vector<std::thread> workers;
    for (int worker = 0; worker < THREADS; ++worker) {
        workers.emplace_back(
            [&result = results[static_cast<size_t>(worker)], worker] { result = work(worker); });
    }
    for (std::thread& worker : workers) {
        worker.join();
    }
    for (int worker = 0; worker < THREADS; ++worker) {
        EXPECT_EQ(results[static_cast<size_t>(worker)], expected(worker));
    }
}

}  // namespace

}  // namespace intake
