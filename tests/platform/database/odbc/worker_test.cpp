// Workers that end while a database keeps them waiting.

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <filesystem>
#include <iterator>

#include "pipeline/IntakeThread.h"
#include "readers/Readers.h"
#include "tests/platform/database/DatabaseTest.h"
#include "tests/platform/database/odbc/DatabaseServer.h"
#include "tests/support/eventually.h"

namespace intake {

namespace {

struct DeafClient final : IntakeClient {
    void deliver(bool, const std::string&, const std::string&) override { ++deliveries; }
    int deliveries = 0;
};

/// A server that accepts connections and says nothing.
class SilentServer {
public:
    ~SilentServer() {
        close(connection_);
        close(listener_);
    }
    uint16_t port() const { return portOf(listener_); }
    void waitForClient() { connection_ = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC); }

private:
    int listener_ = listenOnLoopback(0);
    int connection_ = -1;
};

class OdbcWorkerEnd : public DatabaseTest {
protected:
    void load(const std::string& connectionString, const std::string& query) {
        thread_->PostCommand(client_, "MODE |SQL| CONNSTR |" + connectionString + "| QUERY |" +
                                          query + "| NUM_ROWS |0| TABLE |T| TGT_MODE 1 ");
    }

    /// Lets the instance go, and waits until its worker has ended too.
    bool endsAfterwards() {
        thread_.reset();
        return eventually([] { return IntakeThread::liveWorkers() == 0; });
    }

    /// Ends while the server runs `sleep`, which the query `count` sees.
    void endWithin(DatabaseServer& server, const std::string& sleep, const std::string& count) {
        const std::string connectionString = server.connectionString() + ";Pwd=s3cret";
        EXPECT_TRUE(eventually([&] { return connects(connectionString); }));
        load(connectionString, sleep);
        ASSERT_TRUE(eventually([&] { return recordsOfQuery(count) == "I8 1|\n"; }));

        EXPECT_TRUE(endsAfterwards());

        EXPECT_EQ(client_->deliveries, 0);
        EXPECT_TRUE(eventually([&] { return recordsOfQuery(count) == "I8 0|\n"; }));
    }

    bool connects(const std::string& connectionString) {
        try {
            open(connectionString);
            return true;
        } catch (const PlatformError&) {
            return false;
        }
    }

    std::shared_ptr<DeafClient> client_ = std::make_shared<DeafClient>();
    std::unique_ptr<IntakeThread> thread_ =
        std::make_unique<IntakeThread>(systemPlatform(), makerOfReaders(systemPlatform()));
};

TEST_F(OdbcWorkerEnd, AQueryOfPostgresEndsWithItsWorker) {
    const auto server = startPostgres();

    endWithin(*server, "SELECT pg_sleep(1000)",
              "SELECT count(*) FROM pg_stat_activity WHERE query = 'SELECT pg_sleep(1000)' "
              "AND state = 'active'");
}

TEST_F(OdbcWorkerEnd, AQueryOfMariaDbEndsWithItsWorker) {
    const auto server = startMariaDb();

    endWithin(*server, "SELECT sleep(1000)",
              "SELECT count(*) FROM information_schema.processlist WHERE info = "
              "'SELECT sleep(1000)'");
}

size_t threads() {
    const std::filesystem::directory_iterator tasks("/proc/self/task");
    return static_cast<size_t>(std::distance(begin(tasks), end(tasks)));
}

TEST_F(OdbcWorkerEnd, AServerThatSaysNothingIsNotWaitedFor) {
    const size_t before = threads();
    for (const std::string driver : {"PostgreSQL Unicode", "MariaDB Unicode"}) {
        SilentServer server;
        load("Driver=" + driver + ";Server=127.0.0.1;Port=" + std::to_string(server.port()) +
                 ";Uid=designer;Database=league",
             "SELECT 1");
        server.waitForClient();

        EXPECT_TRUE(endsAfterwards());

        EXPECT_EQ(client_->deliveries, 0);
        thread_ =
            std::make_unique<IntakeThread>(systemPlatform(), makerOfReaders(systemPlatform()));
    }
    // Once the servers have gone, the attempts end by themselves, with all that they hold.
    EXPECT_TRUE(eventually([before] { return threads() <= before; }));
}

}  // namespace

}  // namespace intake
