#include "tests/plugin/PluginTest.h"

namespace intake {
namespace {

// In the order in which they are sent.
const std::vector<std::string> READER_PARAMETERS{
    "filename",         "sheet",        "range",        "connStr",       "useAuth",
    "userName",         "password",     "avoidCache",   "query",         "xpath",
    "namespaces",       "inputFormat",  "outputFormat", "key",           "table",
    "shmvar",           "shmtype",      "delimiter",    "rowsDelimiter", "autoLoadInterval",
    "enableProxy",      "proxyMode",    "proxyUrl",     "proxyUser",     "proxyPwd",
    "useCustomHeaders", "customHeaders"};

/// The calls of one update: every parameter, with 1 for those that are shown.
Calls update(const std::vector<std::string>& parameters, const std::vector<std::string>& shown) {
    Calls calls;
    for (const std::string& name : parameters) {
        const bool isShown = std::find(shown.begin(), shown.end(), name) != shown.end();
        calls.push_back("evSendGuiParameterShow(\"" + name + "\", " + (isShown ? "1)" : "0)"));
    }
    return calls;
}

struct Case {
    int32_t queryMode, mode;
    bool useAuth, autoLoad, enableProxy;
    int32_t proxyMode;
    bool useCustomHeaders;
    std::vector<std::string> shown;
};

const std::vector<Case> CASES{
    // query type, target mode, authentication, automatic load, proxy, proxy mode, custom headers
    // EXCEL
    {0, 0, false, false, false, 1, false, {"filename", "sheet", "range", "key", "table"}},
    {0, 3, false, false, false, 1, false, {"filename", "sheet", "range", "key", "table"}},
    {0,
     4,
     true,
     true,
     true,
     2,
     true,
     {"filename", "sheet", "range", "key", "shmvar", "shmtype", "delimiter", "rowsDelimiter",
      "autoLoadInterval"}},
    // SQL
    {1, 0, false, false, false, 1, false, {"connStr", "query", "key", "table"}},
    {1,
     4,
     true,
     true,
     true,
     2,
     true,
     {"connStr", "query", "key", "shmvar", "shmtype", "delimiter", "rowsDelimiter",
      "autoLoadInterval"}},
    // XML
    {2,
     0,
     false,
     false,
     false,
     1,
     false,
     {"filename", "useAuth", "avoidCache", "xpath", "namespaces", "inputFormat", "outputFormat",
      "key", "table", "useCustomHeaders"}},
    {2,
     1,
     true,
     false,
     true,
     2,
     true,
     {"filename", "useAuth", "userName", "password", "avoidCache", "xpath", "namespaces",
      "inputFormat", "outputFormat", "key", "table", "useCustomHeaders", "customHeaders"}},
    {2,
     2,
     false,
     false,
     false,
     1,
     false,
     {"filename", "useAuth", "avoidCache", "xpath", "namespaces", "inputFormat", "outputFormat",
      "key", "table", "useCustomHeaders"}},
    {2,
     3,
     false,
     true,
     false,
     1,
     false,
     {"filename", "useAuth", "avoidCache", "xpath", "namespaces", "inputFormat", "outputFormat",
      "table", "autoLoadInterval", "useCustomHeaders"}},
    {2,
     4,
     false,
     false,
     false,
     1,
     false,
     {"filename", "useAuth", "avoidCache", "xpath", "namespaces", "inputFormat", "outputFormat",
      "shmvar", "shmtype", "delimiter", "rowsDelimiter", "useCustomHeaders"}},
    // JSON
    {3,
     0,
     true,
     false,
     false,
     2,
     false,
     {"filename", "xpath", "key", "table", "enableProxy", "useCustomHeaders"}},
    {3,
     0,
     false,
     false,
     true,
     0,
     false,
     {"filename", "xpath", "key", "table", "enableProxy", "proxyMode", "useCustomHeaders"}},
    {3,
     1,
     false,
     false,
     true,
     1,
     true,
     {"filename", "xpath", "key", "table", "enableProxy", "proxyMode", "useCustomHeaders",
      "customHeaders"}},
    {3,
     3,
     false,
     true,
     true,
     2,
     false,
     {"filename", "xpath", "key", "table", "autoLoadInterval", "enableProxy", "proxyMode",
      "proxyUrl", "proxyUser", "proxyPwd", "useCustomHeaders"}},
    {3,
     4,
     false,
     false,
     false,
     1,
     true,
     {"filename", "xpath", "key", "shmvar", "shmtype", "delimiter", "rowsDelimiter", "enableProxy",
      "useCustomHeaders", "customHeaders"}},
    // HTML
    {4, 0, true, false, true, 2, true, {"filename", "sheet", "key", "table"}},
    {4,
     4,
     false,
     true,
     false,
     1,
     false,
     {"filename", "sheet", "key", "shmvar", "shmtype", "delimiter", "rowsDelimiter",
      "autoLoadInterval"}},
    // no query type at all
    {5, 0, true, false, true, 2, true, {"key", "table"}},
    {-1,
     4,
     false,
     false,
     false,
     1,
     false,
     {"key", "shmvar", "shmtype", "delimiter", "rowsDelimiter"}},
};

class Visibility : public PluginTest {
protected:
    void setUp(const Case& each) {
        params().queryMode = each.queryMode;
        params().mode = each.mode;
        params().useAuth = each.useAuth;
        params().autoLoad = each.autoLoad;
        params().enableProxy = each.enableProxy;
        params().proxyMode = each.proxyMode;
        params().useCustomHeaders = each.useCustomHeaders;
    }

    /// What a status call sends about the reader's parameters.
    Calls readerUpdate() {
        PLUGIN_GUI_STATUS(record.get());
        const Calls calls = host.takeCalls();
        return Calls(calls.begin() + 3, calls.end());
    }
};

TEST_F(Visibility, OfEveryReaderParameterIsSentInOrder) {
    bindInstance();
    for (size_t number = 0; number < CASES.size(); ++number) {
        setUp(CASES[number]);
        EXPECT_EQ(readerUpdate(), update(READER_PARAMETERS, CASES[number].shown))
            << "case " << number;
    }
}

TEST_F(Visibility, OfAStoredHtmlQueryTypeShowsFileAndSheetAndNothingOfTheOtherTypes) {
    bindInstance();
    setUp({4, 0, true, false, true, 2, true, {}});
    EXPECT_EQ(readerUpdate(), update(READER_PARAMETERS, {"filename", "sheet", "key", "table"}));
}

TEST_F(Visibility, WithTheProxyOffHidesItsModeAndItsManualFieldsEvenForJson) {
    bindInstance();
    for (const int32_t proxyMode : {0, 1, 2}) {
        setUp({3, 0, false, false, false, proxyMode, false, {}});
        EXPECT_EQ(readerUpdate(), update(READER_PARAMETERS, {"filename", "xpath", "key", "table",
                                                             "enableProxy", "useCustomHeaders"}));
    }
}

TEST_F(Visibility, HidesTheManualProxyFieldsUnlessTheProxyModeIsManual) {
    bindInstance();
    for (const int32_t proxyMode : {0, 1, 3}) {
        setUp({3, 0, false, false, true, proxyMode, false, {}});
        EXPECT_EQ(readerUpdate(),
                  update(READER_PARAMETERS, {"filename", "xpath", "key", "table", "enableProxy",
                                             "proxyMode", "useCustomHeaders"}));
    }
}

/// The parameters that differ between two values of one switch.
class SwitchEffect : public Visibility {
protected:
    Calls changedBy(int32_t ReaderParams::*parameter, int32_t value) {
        const Calls before = readerUpdate();
        params().*parameter = value;
        const Calls after = readerUpdate();
        Calls changed;
        for (size_t i = 0; i < after.size(); ++i) {
            if (after[i] != before[i]) changed.push_back(after[i]);
        }
        return changed;
    }
};

TEST_F(SwitchEffect, SharedMemoryHidesTheTableAndShowsMemoryAndDelimiters) {
    bindInstance();
    for (const int32_t queryMode : {0, 1, 3, 4}) {
        params().queryMode = queryMode;
        params().mode = 0;
        EXPECT_EQ(changedBy(&ReaderParams::mode, 4),
                  Calls({R"(evSendGuiParameterShow("table", 0))",
                         R"(evSendGuiParameterShow("shmvar", 1))",
                         R"(evSendGuiParameterShow("shmtype", 1))",
                         R"(evSendGuiParameterShow("delimiter", 1))",
                         R"(evSendGuiParameterShow("rowsDelimiter", 1))"}));
    }
}

TEST_F(SwitchEffect, SharedMemoryHidesTheKeyOnlyForXml) {
    bindInstance();
    params().queryMode = 2;
    EXPECT_EQ(
        changedBy(&ReaderParams::mode, 4),
        Calls({R"(evSendGuiParameterShow("key", 0))", R"(evSendGuiParameterShow("table", 0))",
               R"(evSendGuiParameterShow("shmvar", 1))", R"(evSendGuiParameterShow("shmtype", 1))",
               R"(evSendGuiParameterShow("delimiter", 1))",
               R"(evSendGuiParameterShow("rowsDelimiter", 1))"}));
}

TEST_F(SwitchEffect, TheProxySwitchShowsTheProxyModeForJson) {
    bindInstance();
    params().queryMode = 3;
    EXPECT_EQ(changedBy(&ReaderParams::enableProxy, 1),
              Calls({R"(evSendGuiParameterShow("proxyMode", 1))"}));
    EXPECT_EQ(changedBy(&ReaderParams::proxyMode, 0), Calls());
    EXPECT_EQ(changedBy(&ReaderParams::proxyMode, 2),
              Calls({R"(evSendGuiParameterShow("proxyUrl", 1))",
                     R"(evSendGuiParameterShow("proxyUser", 1))",
                     R"(evSendGuiParameterShow("proxyPwd", 1))"}));
    EXPECT_EQ(changedBy(&ReaderParams::enableProxy, 0),
              Calls({R"(evSendGuiParameterShow("proxyMode", 0))",
                     R"(evSendGuiParameterShow("proxyUrl", 0))",
                     R"(evSendGuiParameterShow("proxyUser", 0))",
                     R"(evSendGuiParameterShow("proxyPwd", 0))"}));
}

const std::vector<std::string> BINDING_PARAMETERS{"RemoteContainer", "WhichOther", "ConvTableName"};

TEST_F(Visibility, OfTheBindingParametersFollowsTheirSwitches) {
    struct {
        int32_t isOther, whichOther, useConvTable;
        std::vector<std::string> shown;
    } const cases[] = {
        {0, 0, 0, {}},
        {0, 3, 0, {}},
        {1, 0, 0, {"WhichOther"}},
        {1, 1, 0, {"WhichOther"}},
        {1, 2, 0, {"WhichOther"}},
        {1, 3, 0, {"RemoteContainer", "WhichOther"}},
        {0, 3, 1, {"ConvTableName"}},
        {1, 3, 1, {"RemoteContainer", "WhichOther", "ConvTableName"}},
    };
    for (const auto& each : cases) {
        record->IsOther = each.isOther;
        record->WhichOther = each.whichOther;
        record->UseConvTable = each.useConvTable;
        PLUGIN_GUI_STATUS(record.get());
        EXPECT_EQ(host.takeCalls(), update(BINDING_PARAMETERS, each.shown));
    }
}

}  // namespace
}  // namespace intake
