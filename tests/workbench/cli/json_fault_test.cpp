#include "workbench/cli/json_fault.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "formats/json/JsonDocument.h"

namespace {

// What is said of a text that is no JSON.
std::string faultOf(const std::string& text) {
    intake::ByteBuffer bytes;
    text.copy(bytes.prepare(text.size() + 1), text.size());
    bytes.prepare(text.size() + 1)[text.size()] = '\0';
    bytes.commit(text.size() + 1);
    try {
        const intake::JsonDocument document(std::move(bytes));
        return "accepted";
    } catch (const std::invalid_argument& error) {
        return workbench::jsonFault(error.what(), text);
    }
}

}  // namespace

TEST(JsonFault, SaysWhatWasExpectedAndWhatStandsThere) {
    EXPECT_EQ(faultOf("{\"a\": 1 \"b\"}"),
              "line 1, column 9: expected a comma or a \"}\", found a double quote.");
    EXPECT_EQ(faultOf("[1\n2]"), "line 2, column 1: expected a comma or a \"]\", found \"2\".");
    EXPECT_EQ(faultOf("{a: 1}"),
              "line 1, column 2: expected a name in double quotes, found \"a\".");
    EXPECT_EQ(faultOf("{\"a\" 1}"),
              "line 1, column 6: expected a \":\" behind the name, found \"1\".");
    EXPECT_EQ(faultOf("{\"a\": yes}"),
              "line 1, column 7: expected a value: a text in double quotes, a number, true, false, "
              "null, {…} or […], found \"y\".");
    EXPECT_EQ(faultOf("{} x"), "line 1, column 4: expected the end of the file, found \"x\".");
}

TEST(JsonFault, ACommaTooManyIsGuessed) {
    EXPECT_EQ(faultOf("{\"a\": 1,\n}"),
              "line 2, column 1: expected a name in double quotes, found \"}\". Is there a comma "
              "too many?");
    EXPECT_TRUE(faultOf("[1,]").ends_with(", found \"]\". Is there a comma too many?"));
}

TEST(JsonFault, TheEndIsNamed) {
    EXPECT_EQ(faultOf("{"),
              "line 1, column 2: expected a name in double quotes, found the end of the file.");
    EXPECT_EQ(faultOf("[1"),
              "line 1, column 3: expected a comma or a \"]\", found the end of the file.");
    EXPECT_EQ(faultOf(""), "line 1, column 1: expected something in it.");
}

TEST(JsonFault, TextsHaveTheirOwnFaults) {
    EXPECT_TRUE(faultOf("[\"a").ends_with(": expected a double quote at the end of the text."));
    EXPECT_TRUE(
        faultOf("[\"\\x\"]").ends_with(": expected one of \" \\ / b f n r t u behind the \"\\\"."));
    EXPECT_TRUE(faultOf("[\"a\nb\"]")
                    .ends_with(": expected no line break or tab in a text; write \\n or \\t."));
    EXPECT_TRUE(
        faultOf("[\"\\u00g0\"]").ends_with(": expected four digits from 0 to f behind \"\\u\"."));
    EXPECT_TRUE(faultOf("[\"\\ud800\"]")
                    .ends_with(": expected the other half of the character behind \"\\u\"."));
    EXPECT_TRUE(faultOf("[\"\xFF\"]").ends_with(": expected a text in UTF-8."));
    EXPECT_EQ(faultOf("\xFF\xFE[]"), "expected a text in UTF-8.");
}

TEST(JsonFault, NumbersHaveTheirOwnFaults) {
    EXPECT_TRUE(faultOf("[1.]").ends_with(": expected a digit behind the decimal point."));
    EXPECT_TRUE(faultOf("[1e]").ends_with(": expected a digit in the exponent."));
}

TEST(JsonFault, ColumnsCountCharacters) {
    EXPECT_EQ(faultOf("[\"München\" 1]"),
              "line 1, column 12: expected a comma or a \"]\", found \"1\".");
    EXPECT_EQ(faultOf("\xEF\xBB\xBF{\"é\": 1 2}"),
              "line 1, column 9: expected a comma or a \"}\", found \"2\".");
}

TEST(JsonFault, OtherCausesAreToldAsTheyAre) {
    EXPECT_EQ(workbench::jsonFault("line 1, column 1: Odd.", "x"), "line 1, column 1: Odd.");
    EXPECT_EQ(workbench::jsonFault("Too large.", "x"), "Too large.");
}
