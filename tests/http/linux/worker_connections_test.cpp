// The connections of a worker, from load to load.

#include <gtest/gtest.h>

#include "pipeline/WorkerState.h"
#include "readers/Readers.h"
#include "tests/http/support/ScriptedServer.h"
#include "tests/support/TempDirectory.h"
#include "tests/support/eventually.h"

namespace intake {

namespace {

constexpr const char* JSON = R"({"a": [{"v": 1}]})";

Reply documentFor(const std::string& request) {
    if (request.starts_with("GET /a.xml")) {
        return reply("200 OK", "<a><v>1</v></a>");
    }
    if (request.starts_with("GET /a.html")) {
        return reply("200 OK", "<table><tr><td>v</td></tr><tr><td>1</td></tr></table>");
    }
    return reply("200 OK", JSON);
}

class WorkerConnections : public testing::Test {
protected:
    /// The script of a load.
    std::string load(const std::string& command) {
        bool success = false;
        std::string script, error;
        testing::internal::CaptureStdout();
        worker_.ProcessCommand(command, success, script, error);
        testing::internal::GetCapturedStdout();
        EXPECT_TRUE(success) << error;
        return script;
    }

    std::string json(const std::string& more = "") {
        return "MODE |JSON| FILENAME |" + server_.url("/a.json") +
               "| XPATH |a| NUM_ROWS |0| TABLE |T| TGT_MODE 1 " + more;
    }

    /// How many connections two loads take.
    size_t connectionsOf(const std::string& one, const std::string& other) {
        load(one);
        load(other);
        return server_.connections();
    }

    TempWorkingDirectory directory_;
    ScriptedServer server_{documentFor};
    WorkerState worker_{systemPlatform(), makerOfReaders(systemPlatform())};
};

TEST_F(WorkerConnections, ServeAllKindsOfLoads) {
    load(json());
    load("MODE |XML| FILENAME |" + server_.url("/a.xml") + "| XPATH |/a| TABLE |T| TGT_MODE 1 ");
    load("MODE |HTML| FILENAME |" + server_.url("/a.html") + "| KEY |v| TABLE |T| TGT_MODE 1 ");
    EXPECT_EQ(server_.requests().size(), 3U);
    EXPECT_EQ(server_.connections(), 1U);
}

TEST_F(WorkerConnections, ServeNoOtherUser) {
    EXPECT_EQ(connectionsOf(json("USE_AUTH 1 USERNAME |one| PASSWORD |x| "),
                            json("USE_AUTH 1 USERNAME |two| PASSWORD |x| ")),
              2U);
}

TEST_F(WorkerConnections, ServeNobodyWithOtherHeaders) {
    EXPECT_EQ(connectionsOf(json("USE_CUSTOM_HEADERS 1 CUSTOM_HEADERS |X-Api-Key: 1| "), json()),
              2U);
    EXPECT_EQ(server_.requests()[1].find("X-Api-Key"), std::string::npos);
}

TEST_F(WorkerConnections, AreLeftForALoadFromElsewhere) {
    const std::string first = load(json());
    const std::string file = directory_.write("a.json", JSON);
    EXPECT_EQ(
        load("MODE |JSON| FILENAME |" + file + "| XPATH |a| NUM_ROWS |0| TABLE |T| TGT_MODE 1 "),
        first);
    EXPECT_TRUE(eventually([&] { return server_.openConnections() == 0; }));
    load("MODE |SQL| CONNSTR |Driver=SQLite3;Database=:memory:| QUERY |select 1 v| TABLE |T| ");
    EXPECT_EQ(load(json()), first);
}

}  // namespace

}  // namespace intake
