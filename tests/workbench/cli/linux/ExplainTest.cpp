#include "tests/workbench/cli/linux/ExplainTest.h"

#include <rapidjson/document.h>

#include <algorithm>
#include <array>
#include <regex>
#include <set>

namespace {

constexpr std::array stageNames{"settings", "address", "fetched", "format", "selection",
                                "key",      "rows",    "script",  "store",  "action"};

const std::set<std::string> states{"ok", "warning", "failed", "skipped"};

std::vector<std::string> memberNames(const rapidjson::Value& object) {
    std::vector<std::string> names;
    for (const auto& member : object.GetObject())
        names.emplace_back(member.name.GetString());
    return names;
}

ExplainedStage stageOf(const rapidjson::Value& value) {
    const auto text = [&](const char* name) { return std::string(value[name].GetString()); };
    ExplainedStage stage{
        text("stage"), text("state"), text("seen"), text("place"), text("cause"), text("next"), {}};
    for (const auto& member : value["set"].GetObject())
        stage.set.push_back(std::string(member.name.GetString()) + "=" + member.value.GetString());
    std::vector<std::string> names{"stage", "state", "seen", "place", "cause", "next", "set"};
    if (!stage.set.empty()) {
        names.emplace_back("records");
        stage.records = value["records"].GetUint();
    }
    EXPECT_EQ(memberNames(value), names);
    EXPECT_TRUE(states.contains(stage.state)) << stage.state;
    return stage;
}

std::string replaced(std::string text, const std::string& what, const std::string& by) {
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
    return text;
}

/// The text without the quotes that a shell needs, nor any others like them.
std::string unquoted(const std::string& text) {
    return replaced(replaced(text, "\\", ""), "'", "");
}

/// The settings as the text proposes them, without the quotes for a shell.
std::string proposal(const ExplainedStage& stage) {
    std::string line = "Try:";
    for (const std::string& setting : stage.set)
        line += " --set " + setting;
    return line + "   (" + std::to_string(stage.records) +
           (stage.records == 1 ? " record, checked)" : " records, checked)");
}

}  // namespace

Settings joined(Settings settings, const Settings& more) {
    settings.insert(settings.end(), more.begin(), more.end());
    return settings;
}

Explained::Explained(const std::string& json) {
    rapidjson::Document document;
    document.Parse(json.c_str());
    EXPECT_FALSE(document.HasParseError()) << json;
    if (document.HasParseError() || !document.IsObject()) return;
    EXPECT_EQ(memberNames(document),
              (std::vector<std::string>{"ok", "records", "bytes", "durationMs", "request", "answer",
                                        "stages"}));
    isOk = document["ok"].GetBool();
    records = document["records"].GetUint();
    EXPECT_TRUE(document["bytes"].IsUint());
    EXPECT_TRUE(document["durationMs"].IsUint());
    for (const rapidjson::Value& each : document["stages"].GetArray())
        stages.push_back(stageOf(each));
    EXPECT_TRUE(std::equal(stages.begin(), stages.end(), stageNames.begin(), stageNames.end(),
                           [](const auto& stage, const char* name) { return stage.name == name; }));
    EXPECT_EQ(isOk, failed() == nullptr);
}

const ExplainedStage* Explained::failed() const {
    const auto stage = std::find_if(stages.begin(), stages.end(),
                                    [](const auto& each) { return each.state == "failed"; });
    return stage == stages.end() ? nullptr : &*stage;
}

const ExplainedStage* Explained::mended() const {
    const auto stage = std::find_if(stages.begin(), stages.end(),
                                    [](const auto& each) { return !each.set.empty(); });
    return stage == stages.end() ? nullptr : &*stage;
}

ExplainTest::ExplainTest() {
    for (const char* const name :
         {"http_proxy", "HTTP_PROXY", "https_proxy", "HTTPS_PROXY", "all_proxy", "ALL_PROXY",
          "no_proxy", "NO_PROXY", "COLUMNS", "LANG"})
        environment_.emplace_back(name, std::nullopt);
    environment_.emplace_back("LC_ALL", "C.UTF-8");
    const auto here = std::filesystem::path(__FILE__).parent_path();
    environment_.emplace_back(
        "LSAN_OPTIONS", "print_suppressions=0:suppressions=" + (here / "known_leaks.txt").string());
}

ChildResult ExplainTest::explain(const Settings& settings,
                                 const std::vector<std::string>& more) const {
    std::vector<std::string> arguments{"explain"};
    for (const std::string& setting : settings)
        arguments.insert(arguments.end(), {"--set", setting});
    return run(joined(arguments, more));
}

std::string ExplainTest::masked(const std::string& text) const {
    std::string plain = replaced(text, std::filesystem::canonical(folder).string(), "FOLDER");
    plain = std::regex_replace(plain, std::regex(R"(, \d+\.\d\d s\n)"), ", # s\n");
    plain = std::regex_replace(plain, std::regex(R"(\d+ ms)"), "# ms");
    return std::regex_replace(plain, std::regex(R"(127\.0\.0\.1:\d+)"), "SERVER");
}

void ExplainTest::expectExplained(const Settings& settings, const std::string& text,
                                  const std::vector<std::string>& more) const {
    const ChildResult shown = explain(settings, more);
    EXPECT_EQ("\n" + masked(shown.out), text);
    EXPECT_EQ(shown.err, "");
    EXPECT_EQ(shown.status, shown.out.find("\n  ✗ ") == std::string::npos ? 0 : 1);
    expectSame(settings, more, shown);
}

void ExplainTest::expectSame(const Settings& settings, const std::vector<std::string>& more,
                             const ChildResult& shown) const {
    const ChildResult result = explain(settings, joined({"--out", "json"}, more));
    const Explained explained(result.out);
    EXPECT_EQ(result.status, shown.status);
    EXPECT_EQ(explained.isOk, shown.status == 0);
    const ExplainedStage* const mended = explained.mended();
    EXPECT_EQ(mended != nullptr, shown.out.find("\n  Try: ") != std::string::npos);
    if (mended == nullptr) return;
    EXPECT_NE(unquoted(shown.out).find(unquoted(proposal(*mended))), std::string::npos)
        << proposal(*mended);
    EXPECT_TRUE(explained.isOk || mended == explained.failed());
    expectLoads(settings, more, *mended);
}

void ExplainTest::expectLoads(const Settings& settings, const std::vector<std::string>& more,
                              const ExplainedStage& stage) const {
    const ChildResult loaded =
        load(joined(settings, stage.set),
             joined({"--expect-records", std::to_string(stage.records), "--out", "script"}, more));
    EXPECT_EQ(loaded.status, 0) << loaded.err;
}
