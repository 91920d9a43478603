#include <gtest/gtest.h>

#include <algorithm>

#include "tests/readers/json/golden_cases.h"
#include "tests/readers/json/read.h"
#include "tests/support/expect_carried_out.h"

namespace intake {

static void PrintTo(const GoldenCase& golden, std::ostream* out) {
    *out << golden.name;
}

namespace {

class JsonGolden : public testing::TestWithParam<GoldenCase> {};

TEST_P(JsonGolden, TheScriptIsTheOneOnFileAndTheDataStoreCarriesItOut) {
    const GoldenCase& golden = GetParam();
    const Outcome outcome = read(golden.source, golden.request);
    ASSERT_TRUE(outcome.success) << outcome.error;
    EXPECT_EQ(outcome.script, contentOf(golden.scriptFile));
    expectCarriedOut(outcome.script, golden.request.targetMode);
}

std::string testName(const testing::TestParamInfo<GoldenCase>& info) {
    std::string name = info.param.name;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Requests, JsonGolden, testing::ValuesIn(goldenCases(GOLDEN_DIRECTORY)),
                         testName);

}  // namespace
}  // namespace intake
