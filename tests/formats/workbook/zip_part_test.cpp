// How the parts of a workbook are unpacked, piece by piece.

#include "formats/workbook/ZipPart.h"

#include <gtest/gtest.h>

#include "tests/formats/workbook/ZipWriter.h"

namespace intake {

namespace {

std::string unpacked(const std::string& content, size_t piece) {
    ZipWriter zip;
    zip.add("part", content);
    const std::string bytes = zip.bytes();
    const TextSource file(bytes);
    const ZipArchive archive(file);
    ZipPart part(archive, *archive.find("part"));
    std::string result;
    std::string buffer(piece, 0);
    while (const size_t length = part.read(buffer.data(), buffer.size())) {
        result.append(buffer, 0, length);
    }
    return result;
}

TEST(ZipPart, GivesWhatIsPackedInPiecesOfAnySize) {
    const std::string content = "a few words, a few words, a few words more";
    for (const size_t piece : {1, 2, 7, 41, 42, 43, 1000}) {
        EXPECT_EQ(unpacked(content, piece), content) << piece;
    }
}

// Whether the last byte holds the end as well as the last repetition depends on the text.
TEST(ZipPart, GivesTheRestOfARepetitionWhosePackedBytesHaveAllBeenTaken) {
    for (size_t length = 10; length < 600; ++length) {
        const std::string content = std::string(length % 7, 'b') + std::string(length, 'a');
        EXPECT_EQ(unpacked(content, 1), content) << length;
    }
}

}  // namespace

}  // namespace intake
