// The way to a server changes while a connection to it is kept: the addresses of the machine, or
// what stands between. Nobody says so; what is sent is lost.

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>

#include "tests/http/support/HttpTest.h"
#include "tests/http/support/ScriptedServer.h"

namespace intake {

namespace {

void configure(const std::string& command) {
    if (std::system(("ip " + command).c_str()) != 0) {
        std::_Exit(1);
    }
}

/// Gives this process, which has one thread, a network of its own.
void enterNetwork() {
    const std::string user = std::to_string(geteuid());
    if (unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0) {
        std::_Exit(1);
    }
    std::ofstream("/proc/self/uid_map") << "0 " + user + " 1";
    configure("link set lo up");
}

/// From which address the server on loopback is reached.
void reachServerFrom(const std::string& address) {
    configure("route replace table local local 127.0.0.1 dev lo src " + address);
}

class ChangedWay : public HttpTest {
protected:
    void expectTwoLoadsAcrossAChange() {
        enterNetwork();
        configure("address add 10.9.9.1/32 dev lo");
        reachServerFrom("10.9.9.1");
        ScriptedServer server({reply("200 OK", "[1]"), reply("200 OK", "[2]")});
        EXPECT_EQ(fetch(server.url("/")).body, "[1]");
        configure("address delete 10.9.9.1/32 dev lo");
        reachServerFrom("127.0.0.1");
        EXPECT_EQ(fetch(server.url("/")).body, "[2]");
        EXPECT_EQ(server.connections(), 2U);
    }
};

TEST_F(ChangedWay, ToAServerFailsNoLoadOverAConnectionThatWasKept) {
    if (std::system("unshare --map-root-user --net true") != 0) {
        GTEST_SKIP() << "This machine allows no network of one's own.";
    }
    const pid_t child = fork();
    if (child == 0) {
        expectTwoLoadsAcrossAChange();
        std::_Exit(HasFailure() ? 1 : 0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
}

}  // namespace

}  // namespace intake
