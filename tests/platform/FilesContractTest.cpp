#include "tests/platform/PlatformFixture.h"

namespace intake {

class FilesContract : public PlatformContract {
protected:
    /// The content by way of all four steps.
    std::string readAll(const std::string& path, size_t capacity) {
        const Files::Handle file = files_.open(path.c_str());
        EXPECT_NE(file, Files::INVALID);
        std::string content(capacity, '?');
        size_t bytesRead = 0;
        EXPECT_TRUE(files_.read(file, content.data(), capacity, bytesRead));
        files_.close(file);
        content.resize(bytesRead);
        return content;
    }

    uint64_t sizeOf(const std::string& path) {
        const Files::Handle file = files_.open(path.c_str());
        EXPECT_NE(file, Files::INVALID);
        uint64_t bytes = 0;
        EXPECT_TRUE(files_.size(file, bytes));
        files_.close(file);
        return bytes;
    }
};

INSTANTIATE_TEST_SUITE_P(Platforms, FilesContract, testing::ValuesIn(BOTH_PLATFORMS), fixtureName);

TEST_P(FilesContract, EveryByteOfAFileIsReadAsItIs) {
    std::string everyByte;
    for (int byte = 0; byte < 256; ++byte) {
        everyByte += static_cast<char>(byte);
    }
    const std::string path = fixture_->file(everyByte);
    EXPECT_EQ(sizeOf(path), 256U);
    EXPECT_EQ(readAll(path, 256), everyByte);
}

TEST_P(FilesContract, LineEndsAreNotTranslated) {
    EXPECT_EQ(readAll(fixture_->file("a\r\nb\n\x1a"
                                     "c"),
                      7),
              "a\r\nb\n\x1a"
              "c");
}

TEST_P(FilesContract, AnEmptyFileHasSizeZeroAndReadsAsNothing) {
    const std::string path = fixture_->file("");
    EXPECT_EQ(sizeOf(path), 0U);
    EXPECT_EQ(readAll(path, 0), "");
    EXPECT_EQ(readAll(path, 10), "");
}

TEST_P(FilesContract, ABigFileIsReadInOneCall) {
    std::string big(5'000'011, ' ');
    for (size_t i = 0; i < big.size(); ++i) {
        big[i] = static_cast<char>(i % 251);
    }
    const std::string path = fixture_->file(big);
    EXPECT_EQ(sizeOf(path), big.size());
    EXPECT_TRUE(readAll(path, big.size()) == big);
}

TEST_P(FilesContract, AReadStopsAtTheCapacity) {
    EXPECT_EQ(readAll(fixture_->file("abcdef"), 4), "abcd");
}

TEST_P(FilesContract, AReadStopsAtTheEndOfTheFile) {
    EXPECT_EQ(readAll(fixture_->file("abc"), 100), "abc");
}

TEST_P(FilesContract, AFileIsSharedWithOtherReaders) {
    const std::string path = fixture_->file("abc");
    const Files::Handle first = files_.open(path.c_str());
    ASSERT_NE(first, Files::INVALID);
    EXPECT_EQ(readAll(path, 3), "abc");
    files_.close(first);
}

TEST_P(FilesContract, AMissingFileFailsAtOpenAndSaysWhy) {
    EXPECT_EQ(files_.open(fixture_->missing().c_str()), Files::INVALID);
    EXPECT_NE(lastErrorText(), "");
}

TEST_P(FilesContract, AnEmptyPathFailsAtOpenAndSaysWhy) {
    EXPECT_EQ(files_.open(""), Files::INVALID);
    EXPECT_NE(lastErrorText(), "");
}

TEST_P(FilesContract, ADirectoryFailsAtOpenAndSaysWhy) {
    EXPECT_EQ(files_.open(fixture_->directory().c_str()), Files::INVALID);
    EXPECT_NE(lastErrorText(), "");
}

TEST_P(FilesContract, APipeThatNobodyWritesToFailsAtOpenInsteadOfWaiting) {
    EXPECT_EQ(files_.open(fixture_->pipe().c_str()), Files::INVALID);
    EXPECT_NE(lastErrorText(), "");
}

TEST_P(FilesContract, SizeOfABadHandleFailsAndSaysWhy) {
    uint64_t bytes = 77;
    EXPECT_FALSE(files_.size(Files::INVALID, bytes));
    EXPECT_EQ(bytes, 77U);
    EXPECT_NE(lastErrorText(), "");
}

TEST_P(FilesContract, ReadOfABadHandleFailsAndSaysWhy) {
    char buffer[4] = "abc";
    size_t bytesRead = 0;
    EXPECT_FALSE(files_.read(Files::INVALID, buffer, sizeof buffer, bytesRead));
    EXPECT_STREQ(buffer, "abc");
    EXPECT_NE(lastErrorText(), "");
}

}  // namespace intake
