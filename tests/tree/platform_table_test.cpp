#include "tests/tree/platform_table.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "tests/support/TempDirectory.h"

namespace intake {

namespace {

/// A tree with one interface that both systems implement.
class PlatformTable : public testing::Test {
protected:
    PlatformTable() {
        directory_.write("platform/Clock.h",
                         "class Clock {\n    virtual ~Clock() = default;\n};\n");
        directory_.write("platform/linux/A.h", "class LinuxClock final : public Clock {\n");
        directory_.write("platform/windows/B.h", "class WindowsClock final : public Clock {\n");
        directory_.write("tests/platform/clock_test.cpp", "");
    }

    Violations faults(const std::string& table) {
        return platformTableFaults(table, readSourceTree(directory_.path()));
    }

    TempDirectory directory_;
};

}  // namespace

TEST_F(PlatformTable, ThatNamesAllThereIsHasNoFault) {
    EXPECT_EQ(faults("| `Clock` | `LinuxClock` | `WindowsClock` | `clock_test.cpp` | |\n"),
              Violations{});
    EXPECT_EQ(faults("| `Clock` | `LinuxClock` | `WindowsClock` | none: no clock | |\n"),
              Violations{});
}

TEST_F(PlatformTable, MustHaveARowForEachInterface) {
    EXPECT_EQ(faults(""), Violations{"platform/README.md:1: has no row for Clock"});
}

TEST_F(PlatformTable, MustNameWhatImplementsTheInterfaceOnEachSystem) {
    EXPECT_EQ(
        faults("| `Clock` | `Linux` | | `clock_test.cpp` | |\n"),
        (Violations{"platform/README.md:1: names no class in platform/linux/ that is a Clock",
                    "platform/README.md:1: names no class in platform/windows/ that is a Clock"}));
}

TEST_F(PlatformTable, MustNameAContractTestOrTheReasonWhyThereIsNone) {
    EXPECT_EQ(faults("| `Clock` | `LinuxClock` | `WindowsClock` | `other_test.cpp` | |\n"),
              Violations{"platform/README.md:1: there is no test other_test.cpp"});
    EXPECT_EQ(faults("| `Clock` | `LinuxClock` | `WindowsClock` | none | |\n"),
              Violations{"platform/README.md:1: names no contract test"});
}

TEST(ThisPlatformTable, HasNoFault) {
    std::ostringstream text;
    text << std::ifstream(SOURCE_ROOT "/platform/README.md").rdbuf();
    EXPECT_EQ(platformTableFaults(text.str(), readSourceTree(SOURCE_ROOT)), Violations{});
}

}  // namespace intake
