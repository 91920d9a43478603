#include "plugin/build_command.h"

#include "tests/plugin/PluginTest.h"

namespace intake {
namespace {

class BuildCommand : public PluginTest {
protected:
    std::string command() { return buildCommandText(params()); }

    /// The pair of `key` in the command: its value as it stands there.
    std::string pair(const std::string& key) {
        const std::string text = std::string(1, ' ').append(command());
        const size_t begin = text.find(std::string(1, ' ').append(key).append(1, ' '));
        if (begin == std::string::npos) return "(no such pair)";
        const size_t value = begin + key.size() + 2;
        const char end = text[value] == '|' ? '|' : ' ';
        return text.substr(value, text.find(end, value + 1) + (end == '|' ? 1 : 0) - value);
    }

    void fillEveryText() {
        ReaderParams& p = params();
        const std::pair<char*, const char*> texts[] = {
            {p.filename, "file"},  {p.sheet, "sheet"},         {p.connStr, "conn"},
            {p.userName, "user"},  {p.password, "pass"},       {p.query, "query"},
            {p.xpath, "xpath"},    {p.namespaces, "ns"},       {p.key, "key"},
            {p.fromRow, "3"},      {p.numRows, "7"},           {p.range, "range"},
            {p.table, "table"},    {p.delimiter, ","},         {p.rowsDelimiter, ";"},
            {p.varsPrefix, "P_"},  {p.proxyUrl, "proxy:8080"}, {p.proxyUser, "puser"},
            {p.proxyPwd, "ppass"}, {p.customHeaders, "A: b"},
        };
        for (const auto& [buffer, text] : texts) {
            TestRecord::set(buffer, text);
        }
    }
};

TEST_F(BuildCommand, OfAFreshJsonInstanceHoldsEveryPairInOrder) {
    params().queryMode = 3;
    EXPECT_EQ(command(),
              "MODE |JSON| FILENAME || SHEET || CONNSTR || AVOID_CACHE 1 USE_AUTH 0 USERNAME || "
              "PASSWORD || CONNSTR || QUERY || XPATH || NAMESPACES || KEY || RANGE || FROM_ROW || "
              "NUM_ROWS || TABLE |Table| LOG_LEVEL 2 FIELDS_DELIMITER |\\|| ROWS_DELIMITER || "
              "VARSPREFIX || TGT_MODE 0 SRC_INFORMAT 0 TGT_OUTFORMAT 0 ENABLE_PROXY 0 "
              "USE_CUSTOM_HEADERS 0 CUSTOM_HEADERS || ENCODING 0 ");
}

TEST_F(BuildCommand, WithEveryParameterSetAndTheProxyOnHoldsTheProxyPairsToo) {
    fillEveryText();
    ReaderParams& p = params();
    p.queryMode = 2;
    p.avoidCache = 0;
    p.useAuth = 1;
    p.logLevel = 4;
    p.mode = 3;
    p.inputFormat = 1;
    p.outputFormat = 1;
    p.enableProxy = 1;
    p.proxyMode = 2;
    p.useCustomHeaders = 1;
    EXPECT_EQ(command(),
              "MODE |XML| FILENAME |file| SHEET |sheet| CONNSTR |conn| AVOID_CACHE 0 USE_AUTH 1 "
              "USERNAME |user| PASSWORD |pass| CONNSTR |conn| QUERY |query| XPATH |xpath| "
              "NAMESPACES |ns| KEY |key| RANGE |range| FROM_ROW |3| NUM_ROWS |7| TABLE |table| "
              "LOG_LEVEL 4 FIELDS_DELIMITER |,| ROWS_DELIMITER |;| VARSPREFIX |P_| TGT_MODE 3 "
              "SRC_INFORMAT 1 TGT_OUTFORMAT 1 ENABLE_PROXY 1 PROXY_MODE 2 PROXY_URL |proxy:8080| "
              "PROXY_USER |puser| PROXY_PWD |ppass| USE_CUSTOM_HEADERS 1 CUSTOM_HEADERS |A: b| "
              "ENCODING 0 ");
}

TEST_F(BuildCommand, WithTheProxyOffHoldsNoProxyPair) {
    fillEveryText();
    params().queryMode = 3;
    EXPECT_EQ(command().find("PROXY_"), std::string::npos);
    EXPECT_EQ(pair("ENABLE_PROXY"), "0");
}

TEST_F(BuildCommand, TheModeFollowsTheQueryTypeAndEXCELReadsAsSQL) {
    const std::pair<int32_t, const char*> modes[] = {{0, "|SQL|"},  {1, "|SQL|"},  {2, "|XML|"},
                                                     {3, "|JSON|"}, {4, "|HTML|"}, {5, "||"},
                                                     {-1, "||"}};
    for (const auto& [queryMode, name] : modes) {
        params().queryMode = queryMode;
        EXPECT_EQ(pair("MODE"), name) << queryMode;
    }
}

TEST_F(BuildCommand, AFileNameWithABackslashAndABarIsEscaped) {
    params().queryMode = 3;
    TestRecord::set(params().filename, R"(C:\dir|x)");
    EXPECT_NE(command().find(R"(MODE |JSON| FILENAME |C:\\dir\|x| SHEET || )"), std::string::npos);
}

TEST_F(BuildCommand, AnEmptyTextIsTwoAdjacentBars) {
    params().queryMode = 3;
    TestRecord::set(params().table, "");
    for (const char* key : {"FILENAME", "SHEET", "TABLE", "CUSTOM_HEADERS"}) {
        EXPECT_EQ(pair(key), "||") << key;
    }
}

TEST_F(BuildCommand, EscapesSomeTextsAndLeavesOthersAsTheyStand) {
    ReaderParams& p = params();
    p.queryMode = 1;
    p.enableProxy = 1;
    for (char* text : {p.filename,   p.sheet,    p.connStr,    p.userName,  p.password,
                       p.query,      p.xpath,    p.namespaces, p.key,       p.fromRow,
                       p.numRows,    p.range,    p.table,      p.delimiter, p.rowsDelimiter,
                       p.varsPrefix, p.proxyUrl, p.proxyUser,  p.proxyPwd,  p.customHeaders}) {
        TestRecord::set(text, R"(a\b|c)");
    }
    EXPECT_EQ(command(),
              R"(MODE |SQL| FILENAME |a\\b\|c| SHEET |a\b|c| CONNSTR |a\\b\|c| AVOID_CACHE 1 )"
              R"(USE_AUTH 0 USERNAME |a\\b\|c| PASSWORD |a\\b\|c| CONNSTR |a\\b\|c| )"
              R"(QUERY |a\\b\|c| XPATH |a\\b\|c| NAMESPACES |a\\b\|c| KEY |a\\b\|c| )"
              R"(RANGE |a\b|c| FROM_ROW |a\b|c| NUM_ROWS |a\b|c| TABLE |a\\b\|c| LOG_LEVEL 2 )"
              R"(FIELDS_DELIMITER |a\\b\|c| ROWS_DELIMITER |a\\b\|c| VARSPREFIX |a\b|c| )"
              R"(TGT_MODE 0 SRC_INFORMAT 0 TGT_OUTFORMAT 0 ENABLE_PROXY 1 PROXY_MODE 1 )"
              R"(PROXY_URL |a\b|c| PROXY_USER |a\\b\|c| PROXY_PWD |a\\b\|c| )"
              R"(USE_CUSTOM_HEADERS 0 CUSTOM_HEADERS |a\b|c| ENCODING 0 )");
}

TEST_F(BuildCommand, TheEncodingFollowsTheFontEncodingOfTheHost) {
    params().queryMode = 3;
    const std::pair<int32_t, const char*> codes[] = {{0, "2"}, {1, "0"}, {2, "0"}, {3, "0"},
                                                     {4, "1"}, {5, "0"}, {-1, "0"}};
    for (const auto& [fontEncoding, code] : codes) {
        host.fontEncoding = fontEncoding;
        EXPECT_EQ(pair("ENCODING"), code) << fontEncoding;
    }
}

TEST_F(BuildCommand, ChangesNoParameterUnlessTheQueryTypeIsEXCEL) {
    fillEveryText();
    for (const int32_t queryMode : {1, 2, 3, 4}) {
        params().queryMode = queryMode;
        command();
        EXPECT_STREQ(params().connStr, "conn");
        EXPECT_STREQ(params().query, "query");
    }
}

TEST_F(BuildCommand, OfARecordWhoseTextsWereNeverSetIsEmptyTexts) {
    ReaderParams bare{};
    bare.queryMode = 0;
    bare.enableProxy = 1;
    EXPECT_EQ(buildCommandText(bare),
              "MODE |SQL| FILENAME || SHEET || CONNSTR || AVOID_CACHE 0 USE_AUTH 0 USERNAME || "
              "PASSWORD || CONNSTR || QUERY || XPATH || NAMESPACES || KEY || RANGE || FROM_ROW || "
              "NUM_ROWS || TABLE || LOG_LEVEL 0 FIELDS_DELIMITER || ROWS_DELIMITER || "
              "VARSPREFIX || TGT_MODE 0 SRC_INFORMAT 0 TGT_OUTFORMAT 0 ENABLE_PROXY 1 "
              "PROXY_MODE 0 PROXY_URL || PROXY_USER || PROXY_PWD || USE_CUSTOM_HEADERS 0 "
              "CUSTOM_HEADERS || ENCODING 0 ");
}

using ExcelQuery = BuildCommand;

TEST_F(ExcelQuery, NamesWorkbookSheetAndFields) {
    TestRecord::set(params().filename, R"(C:\tables\race.xlsx)");
    TestRecord::set(params().sheet, "Results");
    TestRecord::set(params().range, "Name, Time");
    EXPECT_EQ(command(),
              R"(MODE |SQL| FILENAME |C:\\tables\\race.xlsx| SHEET |Results| )"
              R"(CONNSTR |Provider=Microsoft.ACE.OLEDB.12.0;Data Source=C:\\tables\\race.xlsx;)"
              R"(Extended Properties="Excel 12.0 Xml;HDR=YES";| AVOID_CACHE 1 USE_AUTH 0 )"
              R"(USERNAME || PASSWORD || )"
              R"(CONNSTR |Provider=Microsoft.ACE.OLEDB.12.0;Data Source=C:\\tables\\race.xlsx;)"
              R"(Extended Properties="Excel 12.0 Xml;HDR=YES";| )"
              R"(QUERY |SELECT Name, Time FROM [Results$];| XPATH || NAMESPACES || KEY || )"
              R"(RANGE |Name, Time| FROM_ROW || NUM_ROWS || TABLE |Table| LOG_LEVEL 2 )"
              R"(FIELDS_DELIMITER |\|| ROWS_DELIMITER || VARSPREFIX || TGT_MODE 0 SRC_INFORMAT 0 )"
              R"(TGT_OUTFORMAT 0 ENABLE_PROXY 0 USE_CUSTOM_HEADERS 0 CUSTOM_HEADERS || )"
              R"(ENCODING 0 )");
    EXPECT_STREQ(params().connStr,
                 R"(Provider=Microsoft.ACE.OLEDB.12.0;Data Source=C:\tables\race.xlsx;)"
                 R"(Extended Properties="Excel 12.0 Xml;HDR=YES";)");
    EXPECT_STREQ(params().query, "SELECT Name, Time FROM [Results$];");
}

TEST_F(ExcelQuery, WithoutFieldsSelectsEveryColumn) {
    TestRecord::set(params().sheet, "Sheet1");
    command();
    EXPECT_STREQ(params().query, "SELECT * FROM [Sheet1$];");
}

TEST_F(ExcelQuery, ASheetNameThatEndsInADollarSignGetsASecondOne) {
    TestRecord::set(params().sheet, "Sheet1$");
    command();
    EXPECT_STREQ(params().query, "SELECT * FROM [Sheet1$$];");
}

TEST_F(ExcelQuery, ReplacesWhatTheParametersHeld) {
    TestRecord::set(params().connStr, "mine");
    TestRecord::set(params().query, std::string(4000, 'q'));
    TestRecord::set(params().filename, "a.xlsx");
    TestRecord::set(params().sheet, "S");
    command();
    EXPECT_STREQ(params().query, "SELECT * FROM [S$];");
    EXPECT_EQ(pair("QUERY"), "|SELECT * FROM [S$];|");
}

// 92 characters stand around the file name, 18 around the sheet's.
constexpr size_t LONGEST_FILE_NAME = 511 - 92;
constexpr size_t LONGEST_SHEET = 511 - 18;

TEST_F(ExcelQuery, TextsOf511CharactersFit) {
    const std::string file(LONGEST_FILE_NAME, 'f');
    const std::string sheet(LONGEST_SHEET, 's');
    TestRecord::set(params().filename, file);
    TestRecord::set(params().sheet, sheet);
    command();
    EXPECT_EQ(params().connStr, "Provider=Microsoft.ACE.OLEDB.12.0;Data Source=" + file +
                                    ";Extended Properties=\"Excel 12.0 Xml;HDR=YES\";");
    EXPECT_EQ(params().query, "SELECT * FROM [" + sheet + "$];");
    EXPECT_EQ(std::string(params().connStr).size(), 511U);
    EXPECT_EQ(std::string(params().query).size(), 511U);
    EXPECT_EQ(host.takeCalls(), Calls({"_api__global_get_font_encoding()"}));
}

TEST_F(ExcelQuery, AConnectionStringThatDoesNotFitLeavesBothEmptyAndTellsTheConsole) {
    const std::string file(LONGEST_FILE_NAME + 1, 'f');
    TestRecord::set(params().filename, file);
    TestRecord::set(params().connStr, "old");
    TestRecord::set(params().query, "old");
    EXPECT_EQ(pair("CONNSTR"), "||");
    EXPECT_STREQ(params().connStr, "");
    EXPECT_STREQ(params().query, "");
    EXPECT_EQ(host.takeCalls()[0],
              "_lumoprintf(\"Intake: the connection string for the workbook \"" + file +
                  "\" is longer than 511 bytes\\n\")");
}

TEST_F(ExcelQuery, AQueryThatDoesNotFitLeavesBothEmptyAndTellsTheConsole) {
    TestRecord::set(params().filename, "a.xlsx");
    TestRecord::set(params().sheet, std::string(LONGEST_SHEET + 1, 's'));
    TestRecord::set(params().connStr, "old");
    EXPECT_EQ(pair("QUERY"), "||");
    EXPECT_STREQ(params().connStr, "");
    EXPECT_STREQ(params().query, "");
    EXPECT_EQ(host.takeCalls()[0],
              "_lumoprintf(\"Intake: the SQL query for the workbook \"a.xlsx\" is longer than 511 "
              "bytes\\n\")");
}

}  // namespace
}  // namespace intake
