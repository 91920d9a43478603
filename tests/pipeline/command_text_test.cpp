#include "pipeline/command_text.h"

#include <gtest/gtest.h>

#include <sstream>

namespace intake {

namespace {

RequestRecord parse(const std::string& text) {
    RequestRecord record;
    std::istringstream in(text);
    ParseCommand(record, in);
    return record;
}

/// What one framed value reads as, and where that leaves the stream.
struct FramedValue {
    explicit FramedValue(const std::string& source) : in(source) { ReadFramedValue(in, text); }

    std::string rest() {
        std::string after;
        std::getline(in, after, '\0');
        return after;
    }

    std::istringstream in;
    std::string text = "what was there before";
};

}  // namespace

TEST(EscapeValue, PutsABackslashBeforeEveryBackslashAndBar) {
    EXPECT_EQ(EscapeValue("C:\\dir|x"), "C:\\\\dir\\|x");
    EXPECT_EQ(EscapeValue("||\\\\"), "\\|\\|\\\\\\\\");
}

TEST(EscapeValue, CopiesEverythingElse) {
    EXPECT_EQ(EscapeValue("a \"b\" / 'c'\r\n\t\xc3\xa4"), "a \"b\" / 'c'\r\n\t\xc3\xa4");
    EXPECT_EQ(EscapeValue(std::string("a\0b", 3)), std::string("a\0b", 3));
}

TEST(EscapeValue, AnEmptyValueYieldsAnEmptyText) {
    EXPECT_EQ(EscapeValue(""), "");
}

TEST(CommandPairs, ANumberPairIsTheKeyABlankTheDecimalValueAndABlank) {
    std::string command = "before ";
    appendNumberPair(command, "AVOID_CACHE", 0);
    appendNumberPair(command, "TGT_MODE", -2147483647 - 1);
    EXPECT_EQ(command, "before AVOID_CACHE 0 TGT_MODE -2147483648 ");
}

TEST(CommandPairs, ATextPairIsFramedByBarsAndNotEscaped) {
    std::string command;
    appendTextPair(command, "SHEET", "a|b\\c");
    appendTextPair(command, "KEY", "");
    EXPECT_EQ(command, "SHEET |a|b\\c| KEY || ");
}

TEST(CommandPairs, AFileNameWithBackslashAndBarIsEscapedAndParsesBack) {
    std::string command;
    appendTextPair(command, "FILENAME", EscapeValue("C:\\dir|x"));
    EXPECT_EQ(command, "FILENAME |C:\\\\dir\\|x| ");
    EXPECT_EQ(parse(command).filename, "C:\\dir|x");
}

TEST(CommandPairs, AnEmptyValueIsTwoAdjacentBarsAndParsesBackToAnEmptyText) {
    std::string command;
    appendTextPair(command, "FILENAME", EscapeValue(""));
    EXPECT_EQ(command, "FILENAME || ");
    EXPECT_EQ(parse("FILENAME |x| " + command).filename, "");
}

TEST(ReadFramedValue, TakesWhatStandsBetweenTheBarsAndStopsBehindThem) {
    FramedValue value(" |a b| KEY");
    EXPECT_EQ(value.text, "a b");
    EXPECT_TRUE(value.in.good());
    EXPECT_EQ(value.rest(), " KEY");
}

TEST(ReadFramedValue, SkipsEverythingBeforeTheOpeningBar) {
    EXPECT_EQ(FramedValue(" \n\\ x\"|a|").text, "a");
}

TEST(ReadFramedValue, ASecondBarAtOnceEndsTheValueAsEmpty) {
    FramedValue value("||a|");
    EXPECT_EQ(value.text, "");
    EXPECT_TRUE(value.in.good());
    EXPECT_EQ(value.rest(), "a|");
}

TEST(ReadFramedValue, ABackslashMakesTheNextCharacterLiteralWhateverItIs) {
    EXPECT_EQ(FramedValue("|\\|a\\\\b\\nc\\||").text, "|a\\bnc|");
}

TEST(ReadFramedValue, KeepsBlanksLineEndsAndZeroCharacters) {
    EXPECT_EQ(FramedValue(std::string("| a\r\n\t\0 |", 9)).text, std::string(" a\r\n\t\0 ", 7));
}

TEST(ReadFramedValue, WithoutAClosingBarFailsTheStreamAndKeepsWhatWasRead) {
    const FramedValue value("|abc");
    EXPECT_EQ(value.text, "abc");
    EXPECT_TRUE(value.in.fail());
}

TEST(ReadFramedValue, ABackslashAtTheEndFailsTheStreamAndIsNoPartOfTheValue) {
    const FramedValue value("|abc\\");
    EXPECT_EQ(value.text, "abc");
    EXPECT_TRUE(value.in.fail());
}

TEST(ReadFramedValue, AnEscapedBarDoesNotCloseTheValue) {
    const FramedValue value("|abc\\|");
    EXPECT_EQ(value.text, "abc|");
    EXPECT_TRUE(value.in.fail());
}

TEST(ReadFramedValue, WithoutAnOpeningBarIsEmptyAndEndsTheStream) {
    const FramedValue value(" abc");
    EXPECT_EQ(value.text, "");
    EXPECT_FALSE(value.in.good());
}

TEST(ParseCommand, EveryKeyFillsItsField) {
    const RequestRecord record = parse(
        "MODE |JSON| FILENAME |f| RANGE |r| CONNSTR |c| AVOID_CACHE 1 USE_AUTH 1 USERNAME |u| "
        "PASSWORD |p| QUERY |q| XPATH |x| NAMESPACES |n| FROM_ROW |2| NUM_ROWS |3| KEY |k| "
        "SHEET |s| TABLE |t| TGT_MODE 4 FIELDS_DELIMITER |fd| ROWS_DELIMITER |rd| LOG_LEVEL 5 "
        "ENCODING 6 VARSPREFIX |vp| TGT_OUTFORMAT 7 SRC_INFORMAT 8 ENABLE_PROXY 1 PROXY_MODE 9 "
        "PROXY_URL |pu| PROXY_USER |pn| PROXY_PWD |pp| USE_CUSTOM_HEADERS 10 "
        "CUSTOM_HEADERS |ch| ");
    EXPECT_EQ(record.mode, "JSON");
    EXPECT_EQ(record.filename, "f");
    EXPECT_EQ(record.range, "r");
    EXPECT_EQ(record.connStr, "c");
    EXPECT_TRUE(record.avoidCache);
    EXPECT_TRUE(record.useAuth);
    EXPECT_EQ(record.userName, "u");
    EXPECT_EQ(record.password, "p");
    EXPECT_EQ(record.query, "q");
    EXPECT_EQ(record.xpath, "x");
    EXPECT_EQ(record.namespaces, "n");
    EXPECT_EQ(record.fromRow, 2);
    EXPECT_EQ(record.numRows, 3);
    EXPECT_EQ(record.key, "k");
    EXPECT_EQ(record.sheet, "s");
    EXPECT_EQ(record.table, "t");
    EXPECT_EQ(record.targetMode, SHARED_MEMORY);
    EXPECT_EQ(record.fieldsDelimiter, "fd");
    EXPECT_EQ(record.rowsDelimiter, "rd");
    EXPECT_EQ(record.logLevel, 5);
    EXPECT_EQ(record.encoding, 6);
    EXPECT_EQ(record.varsPrefix, "vp");
    EXPECT_EQ(record.targetOutFormat, 7);
    EXPECT_EQ(record.sourceInFormat, 8);
    EXPECT_TRUE(record.enableProxy);
    EXPECT_EQ(record.proxyMode, 9);
    EXPECT_EQ(record.proxyUrl, "pu");
    EXPECT_EQ(record.proxyUser, "pn");
    EXPECT_EQ(record.proxyPwd, "pp");
    EXPECT_EQ(record.useCustomHeaders, 10);
    EXPECT_EQ(record.customHeaders, "ch");
}

TEST(ParseCommand, AnEmptyTextLeavesEveryDefault) {
    const RequestRecord record = parse("");
    EXPECT_EQ(record.mode, "EXCEL");
    for (const std::string* text :
         {&record.filename, &record.range, &record.connStr, &record.userName, &record.password,
          &record.query, &record.xpath, &record.namespaces, &record.key, &record.sheet,
          &record.table, &record.fieldsDelimiter, &record.rowsDelimiter, &record.varsPrefix,
          &record.proxyUrl, &record.proxyUser, &record.proxyPwd, &record.customHeaders}) {
        EXPECT_EQ(*text, "");
    }
    for (const int32_t number : {record.fromRow, record.numRows, record.targetMode, record.logLevel,
                                 record.encoding, record.targetOutFormat, record.sourceInFormat,
                                 record.proxyMode, record.useCustomHeaders}) {
        EXPECT_EQ(number, 0);
    }
    for (const bool flag : {record.avoidCache, record.useAuth, record.enableProxy}) {
        EXPECT_FALSE(flag);
    }
}

TEST(ParseCommand, ATextWithoutModeYieldsExcelWhateverTheRecordHeld) {
    RequestRecord record;
    record.mode = "JSON";
    std::istringstream in("FILENAME |a| ");
    ParseCommand(record, in);
    EXPECT_EQ(record.mode, "EXCEL");
    EXPECT_EQ(record.filename, "a");
}

TEST(ParseCommand, AnEmptyModeIsEmpty) {
    EXPECT_EQ(parse("MODE || ").mode, "");
}

TEST(ParseCommand, NumRowsOfZeroOfNoNumberAndOfNothingAllYieldAMillion) {
    EXPECT_EQ(parse("NUM_ROWS |0| ").numRows, 1000000);
    EXPECT_EQ(parse("NUM_ROWS |abc| ").numRows, 1000000);
    EXPECT_EQ(parse("NUM_ROWS || ").numRows, 1000000);
    EXPECT_EQ(parse("NUM_ROWS |-0| ").numRows, 1000000);
}

TEST(ParseCommand, NumRowsKeepsOtherNumbersNegativeOnesIncluded) {
    EXPECT_EQ(parse("NUM_ROWS |25| ").numRows, 25);
    EXPECT_EQ(parse("NUM_ROWS |-3| ").numRows, -3);
}

TEST(ParseCommand, FromRowTakesTheLeadingDigits) {
    EXPECT_EQ(parse("FROM_ROW |12x| ").fromRow, 12);
    EXPECT_EQ(parse("FROM_ROW |12 34| ").fromRow, 12);
    EXPECT_EQ(parse("FROM_ROW |3.9| ").fromRow, 3);
    EXPECT_EQ(parse("FROM_ROW |0x10| ").fromRow, 0);
}

TEST(ParseCommand, FromRowTakesASignAndBlanksBeforeIt) {
    EXPECT_EQ(parse("FROM_ROW |-7| ").fromRow, -7);
    EXPECT_EQ(parse("FROM_ROW |+7| ").fromRow, 7);
    EXPECT_EQ(parse("FROM_ROW | \t7| ").fromRow, 7);
    EXPECT_EQ(parse("FROM_ROW |- 7| ").fromRow, 0);
}

TEST(ParseCommand, FromRowWithoutDigitsIsZero) {
    EXPECT_EQ(parse("FROM_ROW |4| FROM_ROW |x4| ").fromRow, 0);
    EXPECT_EQ(parse("FROM_ROW |4| FROM_ROW || ").fromRow, 0);
}

TEST(ParseCommand, ARowNumberOutOfRangeSaturates) {
    EXPECT_EQ(parse("FROM_ROW |2147483648| ").fromRow, 2147483647);
    EXPECT_EQ(parse("FROM_ROW |-99999999999999999999999| ").fromRow, -2147483647 - 1);
    EXPECT_EQ(parse("NUM_ROWS |99999999999999999999999| ").numRows, 2147483647);
}

TEST(ParseCommand, ARowNumberThatIsNotFramedIsSkipped) {
    const RequestRecord record = parse("FROM_ROW 5 KEY |7| FILENAME |f| ");
    EXPECT_EQ(record.fromRow, 7);
    EXPECT_EQ(record.key, "");
    EXPECT_EQ(record.filename, "f");
}

TEST(ParseCommand, TheSecondOfTwoEqualKeysWins) {
    EXPECT_EQ(parse("CONNSTR |a| KEY |k| CONNSTR |b| ").connStr, "b");
}

TEST(ParseCommand, KeysAreComparedAsWholeWordsAndInTheirCase) {
    const RequestRecord record = parse("filename |a| FILENAMES |b| FILE |c| FILENAME|d| KEY |k| ");
    EXPECT_EQ(record.filename, "");
    EXPECT_EQ(record.key, "k");
}

TEST(ParseCommand, KeysAndValuesMayBeSeparatedByAnyWhiteSpace) {
    const RequestRecord record = parse("\n KEY\t|k|\r\nTGT_MODE\n\n3 TABLE |t|");
    EXPECT_EQ(record.key, "k");
    EXPECT_EQ(record.targetMode, DATA_FIELD_ARRAY);
    EXPECT_EQ(record.table, "t");
}

TEST(ParseCommand, TheNextKeyMayFollowAFrameAtOnce) {
    const RequestRecord record = parse("KEY |k|TABLE |t|");
    EXPECT_EQ(record.key, "k");
    EXPECT_EQ(record.table, "t");
}

TEST(ParseCommand, TheValueOfAnUnknownKeyIsSkippedWordByWordAndEachWordIsTriedAsAKey) {
    const RequestRecord record = parse("TITLE |see KEY |k| below| TABLE |t| ");
    EXPECT_EQ(record.key, "k");
    EXPECT_EQ(record.table, "t");
}

TEST(ParseCommand, ABarInAnUnescapedValueEndsItAndTheRestIsSkipped) {
    const RequestRecord record = parse("SHEET |a|b c| TABLE |t| ");
    EXPECT_EQ(record.sheet, "a");
    EXPECT_EQ(record.table, "t");
}

TEST(ParseCommand, ABackslashAtTheEndOfAnUnescapedValueSwallowsTheNextPair) {
    const RequestRecord record = parse("SHEET |a\\| CONNSTR |c| TABLE |t| ");
    EXPECT_EQ(record.sheet, "a| CONNSTR ");
    EXPECT_EQ(record.connStr, "");
    EXPECT_EQ(record.table, "t");
}

TEST(ParseCommand, ABooleanOtherThanZeroOrOneEndsTheParsing) {
    for (const char* const value : {"2", "-1", "true", "yes", "|1|"}) {
        const RequestRecord record =
            parse(std::string("TABLE |t| AVOID_CACHE ") + value + " KEY |k| ");
        EXPECT_EQ(record.table, "t") << value;
        EXPECT_EQ(record.key, "") << value;
    }
}

TEST(ParseCommand, ANumberThatIsNoneEndsTheParsing) {
    for (const char* const value : {"x", "|3|", "99999999999", "-"}) {
        const RequestRecord record =
            parse(std::string("TABLE |t| TGT_MODE ") + value + " KEY |k| ");
        EXPECT_EQ(record.table, "t") << value;
        EXPECT_EQ(record.targetMode, DATA_TABLE) << value;
        EXPECT_EQ(record.key, "") << value;
    }
}

TEST(ParseCommand, ANumberEndsWhereItsDigitsEnd) {
    const RequestRecord record = parse("TGT_MODE 3x KEY |k| LOG_LEVEL 2TABLE |t| ENCODING +1 ");
    EXPECT_EQ(record.targetMode, DATA_FIELD_ARRAY);
    EXPECT_EQ(record.key, "k");
    EXPECT_EQ(record.logLevel, 2);
    EXPECT_EQ(record.table, "t");
    EXPECT_EQ(record.encoding, 1);
}

TEST(ParseCommand, AnUnterminatedValueIsStoredAndEndsTheParsing) {
    const RequestRecord record = parse("KEY |k| FILENAME |C:\\\\dir TABLE ");
    EXPECT_EQ(record.key, "k");
    EXPECT_EQ(record.filename, "C:\\dir TABLE ");
    EXPECT_EQ(record.table, "");
}

TEST(ParseCommand, AnUnterminatedRowNumberIsStored) {
    EXPECT_EQ(parse("FROM_ROW |12").fromRow, 12);
}

TEST(ParseCommand, AKeyWithoutAValueAtTheEndIsHarmless) {
    EXPECT_EQ(parse("KEY |k| FILENAME").key, "k");
    EXPECT_EQ(parse("KEY |k| TGT_MODE").targetMode, DATA_TABLE);
}

TEST(ParseCommand, WithTheProxySwitchOffTheProxyFieldsStayEmpty) {
    const RequestRecord record = parse("ENABLE_PROXY 0 USE_CUSTOM_HEADERS 0 CUSTOM_HEADERS || ");
    EXPECT_FALSE(record.enableProxy);
    EXPECT_EQ(record.proxyMode, 0);
    EXPECT_EQ(record.proxyUrl, "");
    EXPECT_EQ(record.proxyUser, "");
    EXPECT_EQ(record.proxyPwd, "");
}

}  // namespace intake
