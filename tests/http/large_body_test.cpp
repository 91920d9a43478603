#include <sstream>

#include "tests/http/support/HttpTest.h"
#include "tests/http/support/WebServer.h"
#include "tests/workbench/cli/ChildProcess.h"

namespace intake {

namespace {

constexpr size_t MEGABYTE = 1024 * 1024;
constexpr size_t SIZE = 500 * MEGABYTE;

using LargeHttpBodyTest = HttpTest;

TEST_F(LargeHttpBodyTest, FiveHundredMegabytesTakeLittleMoreMemoryThanTheirSize) {
    WebServer server("");
    server.write("large.json", "");
    server.resize("large.json", SIZE);

    const ChildResult child = runChild(FETCH_URL, {server.url("/large.json")}, directory_.path());

    ASSERT_EQ(child.status, 0) << child.out << child.err;
    ASSERT_TRUE(child.out.starts_with(RETRIEVED));
    std::istringstream numbers(child.out.substr(RETRIEVED.size()));
    size_t bytes = 0;
    size_t peak = 0;
    numbers >> bytes >> peak;
    EXPECT_EQ(bytes, SIZE);
    EXPECT_GT(peak, SIZE);
    EXPECT_LT(peak, SIZE / 10 * 13 + 60 * MEGABYTE);
}

}  // namespace

}  // namespace intake
