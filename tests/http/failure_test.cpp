// Fetches that never reach a server.

#include "tests/http/support/HttpTest.h"
#include "tests/http/support/loopback.h"

namespace intake {

namespace {

using HttpFailureTest = HttpTest;

TEST_F(HttpFailureTest, ARefusedConnectionIsError12029) {
    const std::string port = std::to_string(freePort());

    const Fetched fetched = fetch("http://127.0.0.1:" + port + "/");

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, error(12029));
}

TEST_F(HttpFailureTest, ANameThatIsNotResolvedIsError12007) {
    const Fetched fetched = fetch("http://no-such-host.invalid/");

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, error(12007));
}

TEST_F(HttpFailureTest, AUrlWithoutAHostFails) {
    const Fetched fetched = fetch("http:///data.json");

    EXPECT_FALSE(fetched.success);
    EXPECT_EQ(fetched.out, error(12005));
}

}  // namespace

}  // namespace intake
