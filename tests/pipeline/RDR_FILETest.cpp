#include "pipeline/RDR_FILE.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/fakes/platform/FakeFiles.h"

namespace intake {

namespace {

using Step = FakeFiles::Step;

class RdrFileTest : public testing::Test {
protected:
    bool read(const std::string& path) { return reader_.Read(path, buffer_); }

    /// The bytes that were handed out, the terminator included.
    std::string bytes() const { return std::string(buffer_.data(), buffer_.size()); }

    FakeDiagnostics diagnostics_;
    FakeFiles files_{diagnostics_};
    RDR_FILE reader_{files_, diagnostics_};
    ByteBuffer buffer_;
};

}  // namespace

TEST_F(RdrFileTest, HandsOutTheBytesOfTheFileAndOneZeroByteAndCountsBoth) {
    files_.put("a.json", std::string("{\0\r\n}\xff", 6));
    EXPECT_TRUE(read("a.json"));
    EXPECT_EQ(bytes(), std::string("{\0\r\n}\xff\0", 7));
    EXPECT_EQ(files_.openHandles(), 0U);
    EXPECT_EQ(diagnostics_.debugText(), "");
}

TEST_F(RdrFileTest, AnEmptyFileYieldsAOneByteBlockHoldingAZeroByteAndSizeOne) {
    files_.put("empty.json", "");
    EXPECT_TRUE(read("empty.json"));
    EXPECT_EQ(bytes(), std::string("\0", 1));
    EXPECT_EQ(files_.openHandles(), 0U);
}

TEST_F(RdrFileTest, AMissingFileReturnsFalseWithTheOpenPrefixAndLeavesTheBufferUntouched) {
    const char* const before = buffer_.prepare(1);
    EXPECT_FALSE(read("missing.json"));
    EXPECT_EQ(diagnostics_.debugText(),
              "ERROR: RDR_FILE::Read() failed: : No such file or directory\n");
    EXPECT_EQ(buffer_.data(), before);
    EXPECT_EQ(buffer_.size(), 0U);
    EXPECT_EQ(files_.openHandles(), 0U);
}

TEST_F(RdrFileTest, AFailedSizeQueryIsReportedAndLeavesTheFileOpenAndTheBufferUntouched) {
    files_.put("a.json", "{}");
    files_.failAt(Step::SIZE, "a.json", "Stale file handle");
    const char* const before = buffer_.prepare(1);
    EXPECT_FALSE(read("a.json"));
    EXPECT_EQ(diagnostics_.debugText(),
              "ERROR: RDR_FILE::Read(): GetFileSizeEx(): : Stale file handle\n");
    EXPECT_EQ(buffer_.data(), before);
    EXPECT_EQ(buffer_.size(), 0U);
    EXPECT_EQ(files_.openHandles(), 1U);
}

TEST_F(RdrFileTest, AFailedReadIsReportedAndLeavesTheFileOpenAndTheBlockWithTheCaller) {
    files_.put("a.json", "{}");
    files_.failAt(Step::READ, "a.json", "Input/output error");
    EXPECT_FALSE(read("a.json"));
    EXPECT_EQ(diagnostics_.debugText(),
              "ERROR: RDR_FILE::Read(): ReadFile(): : Input/output error\n");
    EXPECT_NE(buffer_.data(), nullptr);
    EXPECT_EQ(buffer_.size(), 0U);
    EXPECT_EQ(files_.openHandles(), 1U);
}

TEST_F(RdrFileTest, AFailureWithoutASystemTextIsReportedByTheResultAlone) {
    files_.failAt(Step::OPEN, "a.json", "");
    EXPECT_FALSE(read("a.json"));
    EXPECT_EQ(diagnostics_.debugText(), "");
}

TEST_F(RdrFileTest, AFileThatShrankAfterTheSizeQueryIsTerminatedBehindTheBytesReallyRead) {
    files_.put("a.json", "[1]");
    files_.reportSize("a.json", 10);
    EXPECT_TRUE(read("a.json"));
    EXPECT_EQ(bytes(), std::string("[1]\0", 4));
}

TEST_F(RdrFileTest, AFileThatGrewAfterTheSizeQueryIsReadUpToItsFormerSize) {
    files_.put("a.json", "[1][2]");
    files_.reportSize("a.json", 3);
    EXPECT_TRUE(read("a.json"));
    EXPECT_EQ(bytes(), std::string("[1]\0", 4));
}

TEST_F(RdrFileTest, AFileOf4GibibytesIsRefusedBeforeThereIsRoomForIt) {
    files_.put("a.json", "[1]");
    files_.reportSize("a.json", RDR_FILE::MOST_BYTES);
    EXPECT_THROW(read("a.json"), std::length_error);
    EXPECT_EQ(buffer_.data(), nullptr);
    EXPECT_EQ(files_.openHandles(), 0U);
}

TEST_F(RdrFileTest, ABlockOfTheLastReadGivesWayToTheNext) {
    files_.put("a.json", "first");
    files_.put("b.json", "2");
    EXPECT_TRUE(read("a.json"));
    EXPECT_TRUE(read("b.json"));
    EXPECT_EQ(bytes(), std::string("2\0", 2));
}

}  // namespace intake
