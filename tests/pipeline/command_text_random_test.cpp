#include <gtest/gtest.h>

#include <array>
#include <random>
#include <sstream>

#include "pipeline/command_text.h"

namespace intake {

namespace {

std::string randomBytes(std::mt19937& random, size_t longest) {
    std::string bytes(random() % (longest + 1), ' ');
    for (char& byte : bytes) {
        byte = static_cast<char>(random() % 256);
    }
    return bytes;
}

/// A text of the pieces that command texts are made of, in any order.
std::string randomPieces(std::mt19937& random) {
    constexpr std::array PIECES{"FILENAME", "NUM_ROWS", "FROM_ROW", "AVOID_CACHE", "TGT_MODE",
                                "MODE",     " ",        " ",        "|",           "\\",
                                "1",        "-99",      "x",        "\n",          "JSON"};
    std::string text;
    for (size_t left = random() % 40; left > 0; --left) {
        text += PIECES[random() % PIECES.size()];
    }
    return text;
}

void expectToEnd(const std::string& text) {
    RequestRecord record;
    std::istringstream in(text);
    ParseCommand(record, in);
    EXPECT_FALSE(in.good());
    EXPECT_LE(record.filename.size(), text.size());
}

}  // namespace

TEST(RandomCommandText, TheParserEndsOnAnyBytes) {
    std::mt19937 random(1);
    for (int i = 0; i < 3000; ++i) {
        expectToEnd(randomBytes(random, 300));
    }
}

TEST(RandomCommandText, TheParserEndsOnAnyOrderOfKeysFramesAndNumbers) {
    std::mt19937 random(2);
    for (int i = 0; i < 10000; ++i) {
        expectToEnd(randomPieces(random));
    }
}

TEST(RandomCommandText, AnEscapedValueOfAnyBytesParsesBackAndHurtsNoNeighbour) {
    std::mt19937 random(3);
    for (int i = 0; i < 3000; ++i) {
        const std::string value = randomBytes(random, 60);
        std::string command;
        appendTextPair(command, "KEY", "before");
        appendTextPair(command, "FILENAME", EscapeValue(value));
        appendTextPair(command, "TABLE", "after");
        RequestRecord record;
        std::istringstream in(command);
        ParseCommand(record, in);
        ASSERT_EQ(record.key, "before");
        ASSERT_EQ(record.filename, value);
        ASSERT_EQ(record.table, "after");
    }
}

}  // namespace intake
