// That no file is left open.

#include "tests/platform/xml/XmlTest.h"
#include "tests/support/linux/next_handle.h"

namespace intake {

namespace {

using XmlFiles = XmlTest;

TEST_F(XmlFiles, AreClosedAgainWhetherTheyLoadOrNot) {
    const int before = nextHandle();
    EXPECT_TRUE(loadFile("<a/>"));
    EXPECT_EQ(nextHandle(), before);
    EXPECT_FALSE(loadFile("<a>"));
    EXPECT_FALSE(document_->loadFile(directory_.path().string()));
    EXPECT_EQ(nextHandle(), before);
}

}  // namespace

}  // namespace intake
