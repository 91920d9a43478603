#include "workbench/cli/serve/dry_run_json.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>

using workbench::dryRunJson;
using workbench::DryRunResult;
using workbench::Redaction;

namespace {

constexpr std::size_t mostShown = 65536;

std::string shownScript(const std::string& script, const std::string& password) {
    probe::Settings settings;
    settings.password = password;
    DryRunResult result;
    result.script = script;
    rapidjson::Document json;
    json.Parse(dryRunJson(result, Redaction(settings)).c_str());
    EXPECT_FALSE(json.HasParseError());
    EXPECT_EQ(json["isScriptCut"].GetBool(), script.size() > mostShown);
    return json["script"].GetString();
}

}  // namespace

TEST(DryRunJson, HasAShortScriptWhole) {
    EXPECT_EQ(shownScript("a=b3tween;", "b3tween"), "a=••••;");
}

TEST(DryRunJson, HidesASecretThatStandsWhereTheScriptIsCut) {
    const std::string shown =
        shownScript(std::string(mostShown - 4, 'x') + "b3tween" + std::string(100, 'y'), "b3tween");
    EXPECT_EQ(shown, std::string(mostShown - 4, 'x') + "•");
}

TEST(DryRunJson, HidesASecretThatIsCutWhereTheSearchForSecretsEnds) {
    const std::string secret(400, 's');
    std::string script;
    for (int i = 0; i < 400; ++i)
        script += secret + "\n";
    const std::string shown = shownScript(script, secret);
    EXPECT_EQ(shown.find('s'), std::string::npos) << shown.size();
}
