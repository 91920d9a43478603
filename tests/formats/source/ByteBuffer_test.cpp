#include "formats/source/ByteBuffer.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <type_traits>
#include <utility>

namespace intake {
namespace {

void append(ByteBuffer& buffer, const std::string& text) {
    std::memcpy(buffer.prepare(text.size()), text.data(), text.size());
    buffer.commit(text.size());
}

std::string contents(const ByteBuffer& buffer) {
    return {buffer.data(), buffer.size()};
}

TEST(ByteBuffer, IsEmptyAtFirst) {
    const ByteBuffer buffer;
    EXPECT_EQ(buffer.size(), 0U);
    EXPECT_EQ(contents(buffer), "");
}

TEST(ByteBuffer, KeepsWhatIsAddedInItsOrder) {
    ByteBuffer buffer;
    append(buffer, "one ");
    append(buffer, "two ");
    append(buffer, "three");
    EXPECT_EQ(contents(buffer), "one two three");
}

TEST(ByteBuffer, KeepsItsContentsWhileItGrows) {
    ByteBuffer buffer;
    std::string whole;
    for (size_t length = 1; length < 3000; length += 7) {
        const std::string piece(length, static_cast<char>('a' + length % 26));
        append(buffer, piece);
        whole += piece;
    }
    EXPECT_TRUE(contents(buffer) == whole);
}

TEST(ByteBuffer, CountsOnlyTheBytesThatCame) {
    ByteBuffer buffer;
    std::memcpy(buffer.prepare(100), "abc", 3);
    buffer.commit(3);
    EXPECT_EQ(contents(buffer), "abc");
    append(buffer, "def");
    EXPECT_EQ(contents(buffer), "abcdef");
}

TEST(ByteBuffer, GivesTheSameRoomAgainWhenNothingCame) {
    ByteBuffer buffer;
    append(buffer, "abc");
    char* const room = buffer.prepare(10);
    buffer.commit(0);
    EXPECT_EQ(buffer.prepare(10), room);
    EXPECT_EQ(contents(buffer), "abc");
}

TEST(ByteBuffer, RoomForNothingIsNoFailure) {
    ByteBuffer buffer;
    buffer.prepare(0);
    buffer.commit(0);
    EXPECT_EQ(contents(buffer), "");
    append(buffer, "abc");
    EXPECT_EQ(buffer.prepare(0), buffer.data() + 3);
    EXPECT_EQ(contents(buffer), "abc");
}

TEST(ByteBuffer, CanBeChangedInItsPlace) {
    ByteBuffer buffer;
    append(buffer, "cat");
    buffer.data()[0] = 'h';
    EXPECT_EQ(contents(buffer), "hat");
}

TEST(ByteBuffer, MovesItsBytesWithoutCopyingThem) {
    ByteBuffer first;
    append(first, "abc");
    const char* const bytes = first.data();

    ByteBuffer second(std::move(first));
    EXPECT_EQ(second.data(), bytes);
    EXPECT_EQ(contents(second), "abc");
    append(second, "def");
    EXPECT_EQ(contents(second), "abcdef");
}

TEST(ByteBuffer, IsEmptyAndOfUseAfterItWasMovedFrom) {
    ByteBuffer first;
    append(first, "abc");
    const ByteBuffer second(std::move(first));

    EXPECT_EQ(contents(first), "");
    append(first, "new");
    EXPECT_EQ(contents(first), "new");
    EXPECT_EQ(contents(second), "abc");
}

TEST(ByteBuffer, TakesAnothersBytesByAssignment) {
    ByteBuffer first;
    append(first, "abc");
    ByteBuffer second;
    append(second, "a longer text that goes");
    const char* const bytes = first.data();

    second = std::move(first);
    EXPECT_EQ(second.data(), bytes);
    EXPECT_EQ(contents(second), "abc");
    append(second, "def");
    EXPECT_EQ(contents(second), "abcdef");
}

TEST(ByteBuffer, MovesWithoutThrowingAndIsNeverCopied) {
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<ByteBuffer>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<ByteBuffer>);
    EXPECT_FALSE(std::is_copy_constructible_v<ByteBuffer>);
    EXPECT_FALSE(std::is_copy_assignable_v<ByteBuffer>);
}

}  // namespace
}  // namespace intake
