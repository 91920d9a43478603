// How much room a large script is given at once.

#include "tests/readers/xml/XMLHandlerFixture.h"

namespace intake {
namespace {

constexpr size_t MEGABYTE = 1'000'000;

/// A script of 2.5 MB, of rows that are empty.
class XmlScriptRoom : public XMLHandlerFixture {
protected:
    XmlScriptRoom() {
        request_.targetMode = DATA_ARRAY;
        request_.table = std::string(100, 't');
        request_.numRows = 20'000;
        xml_.selectedCount = 20'000;
    }

    size_t roomFor(size_t sourceSize) {
        xml_.sourceSize = sourceSize;
        EXPECT_TRUE(read());
        EXPECT_GT(script_.size(), 2 * MEGABYTE);
        return script_.capacity();
    }
};

TEST_F(XmlScriptRoom, IsThatOfTheDocument) {
    EXPECT_EQ(roomFor(7 * MEGABYTE), 7 * MEGABYTE);
}

TEST_F(XmlScriptRoom, GrowsBeyondThatOfASmallDocument) {
    EXPECT_LT(roomFor(MEGABYTE), 7 * MEGABYTE);
}

TEST_F(XmlScriptRoom, IsNoMoreThanRowsMayTake) {
    EXPECT_LE(roomFor(3'000 * MEGABYTE), RowsLimit::MOST_MEGABYTES * MEGABYTE);
}

TEST_F(XmlScriptRoom, OfAFewRowsIsLittle) {
    request_.numRows = 10;
    xml_.sourceSize = 7 * MEGABYTE;
    EXPECT_TRUE(read());
    EXPECT_LT(script_.capacity(), MEGABYTE);
}

}  // namespace
}  // namespace intake
