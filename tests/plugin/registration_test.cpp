#include "plugin/about_text.h"
#include "plugin/parameters.h"
#include "tests/plugin/PluginTest.h"

namespace intake {
namespace {

using Registration = PluginTest;

/// One call a line: of texts of many lines, a failed comparison shows only what differs.
std::string lines(const Calls& calls) {
    std::string text;
    for (const std::string& call : calls) {
        text += call + "\n";
    }
    return text;
}

TEST_F(Registration, IsOneFixedSequenceOfCalls) {
    PLUGIN_INIT(nullptr);
    EXPECT_EQ(
        lines(host.takeCalls()),
        lines({
            R"(evSetPersistent(1))",
            R"(DataSetPrintfFunction(_lumoprintf))",
            R"(DataSetWPrintfFunction(_lumowprintf))",
            R"(DataSetVPrintfFunction(_lumovprintf))",
            R"(DataSetVWPrintfFunction(_lumovwprintf))",
            R"(IDataHandler())",
            R"(DataExpression())",
            R"(setVariableQuery(query))",
            R"(evRegisterPlugin("Intake"))",
            R"(evRegisterPluginFolder("Data"))",
            R"(evRegisterPluginType(2))",
            R"(evRegisterPluginVersion(2, 13, 6))",
            R"(evRegisterInfoText("info", )" +
                printed("Cobalt version 2.13.6.1473 \n" + std::string(ABOUT_TEXT)) + ")",

            R"(evRegisterParameterInt("Magic", "Magic", 9473, 9473, 9473))",
            R"(evHideParameter())",
            R"(evRegisterParameterString("FieldName", "Unused Field Name", "", 50, 100, 0))",
            R"(evHideParameter())",
            R"(evRegisterParameterBool("ValChangeNotify", "Notify Only On Change", 0))",
            R"(evHideParameter())",
            R"(evRegisterParameterBool("IsRemote", "Use Remote Container", 0))",
            R"(evHideParameter())",
            R"(evRegisterParameterBool("IsOther", "Use Other Container", 0))",
            R"(evHideParameter())",
            R"(evRegisterParameterRadio("WhichOther", "    Which", 0, {"PARENT", "GrPARENT", )"
            R"(" GrGrPARENT ", "REMOTE"}))",
            R"(evHideParameter())",
            R"(evRegisterParameterContainer("RemoteContainer", "        Remote Container", ""))",
            R"(evHideParameter())",
            R"(evRegisterParameterBool("UseConvTable", "Use Conversion Table", 0))",
            R"(evHideParameter())",
            R"(evRegisterParameterString("ConvTableName", "    Conversion Table Name", "", 50, )"
            R"(200, 0))",
            R"(evHideParameter())",
            R"(evRegisterUserData32(8))",

            R"(evSetPersistent(1))",
            R"(evRegisterParameterRadio("queryMode", "Query type: ", 0, {" EXCEL ", " SQL ", )"
            R"(" XML ", " JSON "}))",
            R"(evRegisterParameterString("filename", "File Name", "", 80, 512, 0))",
            R"(evRegisterParameterString("sheet", "Table/Sheet", "", 80, 512, 0))",
            R"(evRegisterParameterString("connStr", "Connection String", "", 80, 512, 0))",
            R"(evRegisterParameterBool("useAuth", "Use Authentication", 0))",
            R"(evRegisterParameterString("userName", "User Name", "", 80, 512, 0))",
            R"(evRegisterParameterString("password", "Password", "", 80, 512, 0))",
            R"(evRegisterParameterBool("avoidCache", "Avoid Cache", 1))",
            R"(evRegisterParameterString("query", "SQL Query", "", 80, 4096, 0))",
            R"(evRegisterParameterString("xpath", "XPath", "", 80, 512, 0))",
            R"(evRegisterParameterString("namespaces", "Namespaces", "", 80, 512, 0))",
            R"(evRegisterParameterString("key", "Key", "", 80, 80, 0))",
            R"(evRegisterParameterString("fromRow", "From row", "", 80, 80, 0))",
            R"(evRegisterParameterString("numRows", "Number of rows", "", 80, 80, 0))",
            R"(evRegisterParameterString("range", "Fields to read", "", 80, 80, 0))",
            R"(evRegisterParameterString("table", "CB Field Name", "Table", 80, 80, 0))",
            R"(evRegisterParameterRadio("mode", "Field is a: ", 0, {"DataTable", "DataArray", )"
            R"("DataStructure", "Data Field Array", "Shared Memory"}))",
            R"(evRegisterParameterString("postAction", "Post Update Action", "", 80, 2048, 0))",
            R"(evRegisterParameterRadio("shmtype", "Shared Memory Type ", 0, {"Scene", "Global", )"
            R"(" Distributed  "}))",
            R"(evRegisterParameterString("shmvar", "Shared Memory Variable ", "VAR", 80, 80, 0))",
            R"(evRegisterParameterString("delimiter", "Fields Delimiter ", "|", 80, 80, 0))",
            R"(evRegisterParameterString("rowsDelimiter", "Rows Delimiter ", "", 80, 80, 0))",
            R"(evRegisterParameterRadio("inputFormat", "Input Format ", 0, {" XML ", )"
            R"(" Payload "}))",
            R"(evRegisterParameterRadio("outputFormat", "Output Format ", 0, {" Text ", )"
            R"(" XML "}))",
            R"(evRegisterParameterBool("show_data", "Show Data", 0))",
            R"(evRegisterParameterString("varsPrefix", "Return Variables Prefix ", "", 80, 80, 0))",
            R"(evRegisterParameterRadio("logLevel", "Log Level", 2, {" FATAL ", " ERROR ", )"
            R"(" WARNING ", " INFO ", " DEBUG "}))",
            R"(evRegisterParameterBool("autoLoad", "Load Automatically ", 0))",
            R"(evRegisterParameterFloat("autoLoadInterval", )"
            R"("Automatic load period (in seconds) ", 10, 0, 6000))",
            R"(evRegisterPushButton("load", "Load", 0))",
            R"(evRegisterParameterBool("enableProxy", "Proxy on/off", 0))",
            R"(evRegisterParameterRadio("proxyMode", "Proxy Mode", 1, {" Auto-Detect ", )"
            R"(" System Settings ", " Manual Configuration "}))",
            R"(evRegisterParameterString("proxyUrl", "Proxy URL", "", 80, 80, 0))",
            R"(evRegisterParameterString("proxyUser", "Proxy User Name", "", 80, 80, 0))",
            R"(evRegisterParameterString("proxyPwd", "Proxy Password", "", 80, 80, 0))",
            R"(evRegisterParameterBool("useCustomHeaders", "Use Custom Headers", 0))",
            R"(evRegisterParameterText("customHeaders", "", 800, 300))",

            R"(setVariableQuery(null))",
            R"(~IDataHandler())",
        }));
}

TEST_F(Registration, LeavesNoWorkerBehind) {
    PLUGIN_INIT(nullptr);
    platform.threads.step();
    EXPECT_EQ(platform.threads.running(), 0U);
}

TEST_F(Registration, TheAboutTextNamesTheVersionAndBringsTheLicenceOfTheJsonLibrary) {
    const std::string about = ABOUT_TEXT;
    EXPECT_EQ(about.find("Intake plugin version: 1.0.1 \n\n\n"
                         "JSON mode implemented using LibJSON:\n\n"),
              0U);
    EXPECT_NE(about.find("RapidJSON"), std::string::npos);
    EXPECT_NE(about.find("Permission is hereby granted, free of charge"), std::string::npos);
}

/// The binding parameters that a plugin with these flags does not offer.
struct OfferedParameters {
    int32_t flags;
    const char* fieldLabel;
    std::vector<std::string> hidden;
};

class BindingParameters : public PluginTest,
                          public testing::WithParamInterface<OfferedParameters> {};

TEST_P(BindingParameters, AreHiddenAsTheFlagsSay) {
    registerBindingParameters(GetParam().flags);
    std::vector<std::string> hidden;
    std::string fieldName;
    std::string last;
    for (const std::string& call : host.takeCalls()) {
        if (call == "evHideParameter()") {
            hidden.push_back(last);
            continue;
        }
        const size_t begin = call.find('"') + 1;
        last = call.substr(begin, call.find('"', begin) - begin);
        if (last == "FieldName") {
            fieldName = call;
        }
    }
    EXPECT_EQ(hidden, GetParam().hidden);
    EXPECT_EQ(fieldName, std::string("evRegisterParameterString(\"FieldName\", \"") +
                             GetParam().fieldLabel + "\", \"\", 50, 100, 0)");
}

const std::vector<std::string> OTHER_AND_TABLE{"IsOther", "WhichOther", "RemoteContainer",
                                               "UseConvTable", "ConvTableName"};

Calls joined(Calls first, const Calls& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

INSTANTIATE_TEST_SUITE_P(
    Flags, BindingParameters,
    testing::Values(
        OfferedParameters{
            0, "Unused Field Name",
            joined({"Magic", "FieldName", "ValChangeNotify", "IsRemote"}, OTHER_AND_TABLE)},
        OfferedParameters{1, "Field Name", joined({"Magic", "IsRemote"}, OTHER_AND_TABLE)},
        OfferedParameters{2, "Output Field Name",
                          joined({"Magic", "ValChangeNotify", "IsRemote"}, OTHER_AND_TABLE)},
        OfferedParameters{3, "Field Name", joined({"Magic", "IsRemote"}, OTHER_AND_TABLE)},
        OfferedParameters{
            4,
            "Unused Field Name",
            {"Magic", "FieldName", "ValChangeNotify", "IsRemote", "UseConvTable", "ConvTableName"}},
        OfferedParameters{5, "Field Name", {"Magic", "IsRemote"}},
        OfferedParameters{
            6,
            "Output Field Name",
            {"Magic", "ValChangeNotify", "IsRemote", "UseConvTable", "ConvTableName"}},
        OfferedParameters{7, "Field Name", {"Magic", "IsRemote"}}));

TEST_F(Registration, WithoutAThreadIsRefusedOnTheConsole) {
    platform.threads.refuses = true;
    PLUGIN_INIT(nullptr);
    const Calls calls = host.takeCalls();
    EXPECT_TRUE(calls.back().starts_with("_lumoprintf(\"Intake: PLUGIN_INIT failed: "))
        << calls.back();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), R"(evRegisterPlugin("Intake"))"), 0);
}

}  // namespace
}  // namespace intake
