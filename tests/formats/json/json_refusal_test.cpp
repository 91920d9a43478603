// What is refused as no JSON, and where the error is said to be.

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "tests/formats/json/parse.h"

namespace intake {
namespace {

TEST(JsonRefusal, AnEmptyDocument) {
    EXPECT_EQ(parseError(""), "line 1, column 1: The document is empty.");
    EXPECT_EQ(parseError(" \n "), "line 2, column 2: The document is empty.");
    EXPECT_EQ(parseError("\xEF\xBB\xBF"), "line 1, column 4: The document is empty.");
}

TEST(JsonRefusal, ADocumentThatIsCutOffAnywhere) {
    const std::string whole = R"({"a\n":[1,-2.5e+3,{"b":"x\u00e9y"}],"c":[true,false,null,""]})";
    ASSERT_EQ(parseError(whole), "accepted");
    for (size_t length = 0; length < whole.size(); ++length) {
        EXPECT_NE(parseError(whole.substr(0, length)), "accepted") << whole.substr(0, length);
    }
}

TEST(JsonRefusal, MoreThanOneValue) {
    constexpr auto CAUSE = "The document root must not be followed by other values.";
    EXPECT_EQ(parseError("{} {}"), std::string("line 1, column 4: ") + CAUSE);
    EXPECT_EQ(parseError("[1]]"), std::string("line 1, column 4: ") + CAUSE);
    EXPECT_EQ(parseError("1 2"), std::string("line 1, column 3: ") + CAUSE);
}

TEST(JsonRefusal, MistakesInObjects) {
    EXPECT_EQ(parseError(R"({"a" 1})"),
              "line 1, column 6: Missing a colon after a name of object member.");
    EXPECT_EQ(parseError(R"({"a":1 "b":2})"),
              "line 1, column 8: Missing a comma or '}' after an object member.");
    EXPECT_EQ(parseError(R"({"a":1,})"), "line 1, column 8: Missing a name for object member.");
    EXPECT_EQ(parseError("{a:1}"), "line 1, column 2: Missing a name for object member.");
    EXPECT_EQ(parseError(R"({'a':1})"), "line 1, column 2: Missing a name for object member.");
    EXPECT_EQ(parseError(R"({"a":})"), "line 1, column 6: Invalid value.");
    EXPECT_EQ(parseError(R"({"a":1)"),
              "line 1, column 7: Missing a comma or '}' after an object member.");
}

TEST(JsonRefusal, MistakesInArrays) {
    EXPECT_EQ(parseError("[1 2]"),
              "line 1, column 4: Missing a comma or ']' after an array element.");
    EXPECT_EQ(parseError("[1,]"), "line 1, column 4: Invalid value.");
    EXPECT_EQ(parseError("[,1]"), "line 1, column 2: Invalid value.");
    EXPECT_EQ(parseError("[1}"),
              "line 1, column 3: Missing a comma or ']' after an array element.");
}

TEST(JsonRefusal, CommentsAndWordsOfOtherLanguages) {
    for (const char* text : {"/* x */ 1", "1 // x", "NaN", "Infinity", "-Infinity", "undefined",
                             "TRUE", "tru", "nul", "fals", "'x'"}) {
        EXPECT_NE(parseError(text), "accepted") << text;
    }
}

TEST(JsonRefusal, NumbersThatAreNoJsonNumbers) {
    for (const char* text : {"01", "-01", "+1", ".5", "-.5", "1.", "1.e5", "-", "1e", "1e+", "1E-",
                             "0x10", "1_000", "--1", "1.2.3", "1e5.5", "2.e3", "0e"}) {
        EXPECT_NE(parseError(text), "accepted") << text;
        EXPECT_NE(parseError(inArray(text)), "accepted") << text;
    }
    EXPECT_EQ(parseError("[-x]"), "line 1, column 3: Invalid value.");
    EXPECT_EQ(parseError("[1.]"), "line 1, column 4: Miss fraction part in number.");
    EXPECT_EQ(parseError("[1e]"), "line 1, column 4: Miss exponent in number.");
}

TEST(JsonRefusal, StringsThatAreNotClosed) {
    EXPECT_EQ(parseError(R"({"a":"text)"),
              "line 1, column 11: Missing a closing quotation mark in string.");
    EXPECT_NE(parseError(R"("\")"), "accepted");
}

TEST(JsonRefusal, EscapesThatDoNotExist) {
    EXPECT_EQ(parseError(R"(["a\x"])"), "line 1, column 4: Invalid escape character in string.");
    EXPECT_EQ(parseError(R"(["ab\u12G4"])"),
              "line 1, column 5: Incorrect hex digit after \\u escape in string.");
}

TEST(JsonRefusal, SurrogatesThatAreNoPair) {
    constexpr auto CAUSE = "The surrogate pair in string is invalid.";
    for (const char* text :
         {R"(["\uD83D"])", R"(["\uD83Dx"])", R"(["\uD83D\n"])", R"(["\uD83D\uD83D"])",
          R"(["\uDE00"])", R"(["\uDE00\uD83D"])", R"(["\uD83D\u0041"])"}) {
        EXPECT_EQ(parseError(text), std::string("line 1, column 3: ") + CAUSE) << text;
    }
}

TEST(JsonRefusal, ControlCharactersInStringsAndNames) {
    constexpr auto REFUSAL =
        "line 1, column 4: A line break, tab or other control character in a string must be "
        "escaped.";
    for (char control = 1; control < 0x20; ++control) {
        const std::string text = std::string("\"a") + control + "\"";
        EXPECT_EQ(parseError(inArray(text)), REFUSAL) << int{control};
        EXPECT_EQ(parseError("{" + text + ":1}"), REFUSAL) << int{control};
    }
}

TEST(JsonRefusal, ACharacterThatTheEndOfTheDocumentCutsOff) {
    for (const char* text : {"\"\xC3", "\"\xE2", "\"\xE2\x82", "\"\xF0", "\"\xF0\x9F\x98"}) {
        EXPECT_PRED_FORMAT2(testing::IsSubstring, "Invalid encoding in string.", parseError(text))
            << text;
    }
}

TEST(JsonRefusal, InvalidUtf8InStringsAndNames) {
    for (const char* bytes :
         {"\x80", "\xBF", "\xC3", "\xC3(", "\xC0\x80", "\xC1\xBF", "\xE0\x80\x80", "\xE2\x82",
          "\xED\xA0\x80", "\xED\xBF\xBF", "\xF0\x80\x80\x80", "\xF4\x90\x80\x80",
          "\xF5\x80\x80\x80", "\xF8\x88\x80\x80\x80", "\xFE", "\xFF"}) {
        const std::string text = std::string("\"ab") + bytes + "c\"";
        EXPECT_EQ(parseError(inArray(text)), "line 1, column 5: Invalid encoding in string.");
        EXPECT_EQ(parseError("{" + text + ":1}"), "line 1, column 5: Invalid encoding in string.");
    }
}

TEST(JsonRefusal, Utf16AndUtf32WithAndWithoutAByteOrderMark) {
    using namespace std::string_view_literals;
    for (const std::string_view text :
         {"\xFF\xFE{\0}\0"sv, "\xFE\xFF\0{\0}"sv, "{\0}\0"sv, "\0{\0}"sv, "\xFF\xFE\0\0{\0\0\0"sv,
          "\0\0\xFE\xFF\0\0\0{"sv}) {
        EXPECT_EQ(parseError(text), "The document is not in UTF-8.");
    }
}

TEST(JsonRefusal, ZeroBytesBehindTheDocument) {
    using namespace std::string_view_literals;
    constexpr auto CAUSE = "A zero byte stands behind the document."sv;
    EXPECT_EQ(parseError("{}\0"sv), std::string("line 1, column 3: ").append(CAUSE));
    EXPECT_EQ(parseError("{}\n \0\0{}"sv), std::string("line 2, column 2: ").append(CAUSE));
    EXPECT_EQ(parseError("{\"a\":1}\0"sv), std::string("line 1, column 8: ").append(CAUSE));
}

TEST(JsonRefusal, ZeroBytesInsideTheDocument) {
    using namespace std::string_view_literals;
    EXPECT_EQ(parseError("[1\0]"sv),
              "line 1, column 3: Missing a comma or ']' after an array element.");
    EXPECT_EQ(parseError("[\"a\0b\"]"sv),
              "line 1, column 4: Missing a closing quotation mark in string.");
}

}  // namespace
}  // namespace intake
