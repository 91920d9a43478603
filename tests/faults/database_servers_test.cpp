// Database servers whose connection breaks off at any byte, or that say nothing more.

#include <gtest/gtest.h>

#include <memory>
#include <thread>

#include "formats/connection/connection_string.h"
#include "tests/faults/ChildFindings.h"
#include "tests/faults/CuttingProxy.h"
#include "tests/faults/TestWorker.h"
#include "tests/faults/extent.h"
#include "tests/platform/database/odbc/DatabaseServer.h"
#include "tests/support/eventually.h"

namespace intake {

namespace {

class FaultyDatabases : public testing::Test {
protected:
    using Start = std::unique_ptr<DatabaseServer> (*)();

    void start(Start startServer) {
        server_ = startServer();
        const std::string direct = server_->connectionString();
        const std::string port = ConnectionString::parse(direct).value("Port");
        proxy_ = std::make_unique<CuttingProxy>(static_cast<uint16_t>(std::stoi(port)));
        const std::string ownPort = ";Port=" + port;
        std::string through = direct;
        through.replace(through.find(ownPort), ownPort.size(),
                        ";Port=" + std::to_string(proxy_->port()));
        command_ = "MODE |SQL| CONNSTR |" + through + ";PWD=s3cret| QUERY |" + QUERY +
                   "| TABLE |T| TGT_MODE 1 NUM_ROWS 100 LOG_LEVEL -1 ";
    }

    void expectNoneToBeWhole() {
        std::string whole;
        ASSERT_TRUE(eventually([&] {  // a server that is starting refuses
            whole = TestWorker().load(command_).script;
            return !whole.empty();
        }));
        const uint64_t bytes = proxy_->bytesPassed();
        for (uint64_t cut = 0; cut < bytes; cut += faultStep(bytes, 60)) {
            proxy_->cutBehind(cut);
            const ChildFindings findings = ChildFindings::of([&](ChildFindings& child) {
                child.startTry(cut);
                const LoadResult result = TestWorker().load(command_);
                if (result.success && result.script != whole) {
                    child.add("shown as success: " + result.script);
                }
                if (!result.success && result.error.empty()) {
                    child.add("fails without a reason");
                }
            });
            EXPECT_EQ(findings.text(), "");
        }
        proxy_->cutBehind(CuttingProxy::NEVER);
        EXPECT_EQ(TestWorker().load(command_).script, whole);
    }

    void expectSilenceToEnd() {
        for (const uint64_t cut : {0, 1, 10}) {
            proxy_->cutBehind(cut, CuttingProxy::Then::STALL);
            TestWorker worker;
            std::thread host([&] {
                std::this_thread::sleep_for(std::chrono::milliseconds(200));
                worker.end();
            });
            EXPECT_FALSE(worker.load(command_).success) << cut;
            host.join();
        }
    }

    static constexpr auto QUERY = "SELECT 1 AS id, 'text' AS t UNION ALL SELECT 2, 'other'";

    std::unique_ptr<DatabaseServer> server_;
    std::unique_ptr<CuttingProxy> proxy_;
    std::string command_;
};

TEST_F(FaultyDatabases, OfPostgresFailOrAreRight) {
    start(startPostgres);
    expectNoneToBeWhole();
    expectSilenceToEnd();
}

TEST_F(FaultyDatabases, OfMariaDbFailOrAreRight) {
    start(startMariaDb);
    expectNoneToBeWhole();
    expectSilenceToEnd();
}

}  // namespace

}  // namespace intake
