#include "workbench/cli/scene_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "host/lumo.h"
#include "workbench/cli/UsageError.h"
#include "workbench/lumo/Host.h"

using workbench::readSceneFile;
using workbench::SceneFile;
using workbench::UsageError;

namespace {

struct Scenes : testing::Test {
    ~Scenes() override { std::filesystem::remove(file); }

    SceneFile scene(const std::string& text) {
        std::ofstream(file, std::ios::binary) << text;
        return readSceneFile(file);
    }

    // What the action is refused with, without the file's name.
    template <typename Action>
    std::string refusalOf(Action action) {
        try {
            action();
        } catch (const UsageError& error) {
            const std::string message = error.what();
            return message.starts_with(file) ? message.substr(file.size()) : message;
        }
        return "accepted";
    }
    std::string refusal(const std::string& text) {
        return refusalOf([&] { scene(text); });
    }

    lumo::Host host;
    std::string file = std::string(TEST_FOLDER) + "/" +
                       testing::UnitTest::GetInstance()->current_test_info()->name() +
                       ".scene.json";
};

}  // namespace

TEST_F(Scenes, AnInstanceKeepsItsParametersInOrder) {
    const SceneFile read = scene(R"({"instances": [
        {"name": "league", "parameters": {"z": "JSON", "a": 3, "b": true, "c": 0.5}}]})");
    ASSERT_EQ(read.instances.size(), 1U);
    EXPECT_EQ(read.instances[0].name, "league");
    const std::vector<std::pair<std::string, std::string>> expected{
        {"z", "JSON"}, {"a", "3"}, {"b", "true"}, {"c", "0.5"}};
    EXPECT_EQ(read.instances[0].parameters, expected);
}

TEST_F(Scenes, AFileThatCannotBeReadIsAnError) {
    const std::string refusal = refusalOf([] { readSceneFile("/nowhere/scene.json"); });
    EXPECT_TRUE(refusal.starts_with("/nowhere/scene.json: the scene file cannot be read."))
        << refusal;  // on Windows, where a path begins with a drive, also where it was looked for
}

TEST_F(Scenes, AFileThatIsNotJsonIsAnErrorWithItsPlace) {
    EXPECT_EQ(refusal("{\n  \"instances\": [\n    {\"name\": \"a\"} {}\n]}"),
              ": the scene file is not JSON: line 3, column 19: expected a comma or a \"]\", found "
              "\"{\".");
}

TEST_F(Scenes, AFileOfAnotherShapeIsAnError) {
    EXPECT_EQ(refusal("[]"), ": \"instances\" is missing or of the wrong type.");
    EXPECT_EQ(refusal(R"({"instances": [{}]})"),
              ", an instance: \"name\" is missing or of the wrong type.");
    EXPECT_EQ(refusal(R"({"instances": [{"name": "a"}]})"),
              ", instance \"a\": \"parameters\" is missing or of the wrong type.");
    EXPECT_EQ(refusal(R"({"instances": [{"name": "a", "parameters": {"x": null}}]})"),
              ", instance \"a\": the value of \"x\" must be a text, a number, true or false.");
}

TEST_F(Scenes, TwoInstancesOfOneNameAreAnError) {
    EXPECT_EQ(refusal(R"({"instances": [{"name": "home", "parameters": {}},
                                        {"name": "away", "parameters": {}},
                                        {"name": "home", "parameters": {}}]})"),
              ", instance \"home\": another instance already has this name.");
}

TEST_F(Scenes, TheOnlyInstanceNeedsNoName) {
    const SceneFile read = scene(R"({"instances": [{"name": "a", "parameters": {}}]})");
    EXPECT_EQ(read.find("").name, "a");
}

TEST_F(Scenes, OneOfSeveralInstancesMustBeNamed) {
    const SceneFile read = scene(R"({"instances": [{"name": "home", "parameters": {}},
                                                   {"name": "away", "parameters": {}}]})");
    EXPECT_EQ(read.find("away").name, "away");
    EXPECT_EQ(refusalOf([&] { read.find(""); }),
              ": the scene has several instances: home, away. Choose one with --instance.");
    EXPECT_EQ(refusalOf([&] { read.find("hone"); }),
              ": there is no instance \"hone\". Did you mean \"home\"?");
}

TEST_F(Scenes, ASceneWithoutInstancesHasNoneToFind) {
    const SceneFile read = scene(R"({"instances": []})");
    EXPECT_EQ(refusalOf([&] { read.find("a"); }), ": the scene has no instances.");
}

TEST_F(Scenes, StoredValuesAreWrittenOverTheDefaults) {
    evRegisterParameterInt("Magic", "Magic", 9473, 9473, 9473);
    evRegisterParameterString("file", "File", "default", 80, 80, 0);
    evRegisterParameterString("key", "Key", "id", 80, 80, 0);
    const SceneFile read =
        scene(R"({"instances": [{"name": "a", "parameters": {"Magic": 9473, "file": "x.json"}}]})");
    lumo::Record record(host.parameters);
    read.restore(read.instances[0], host.parameters, record);
    EXPECT_EQ(record.integer(1), 9473);
    EXPECT_EQ(record.text(2), "x.json");
    EXPECT_EQ(record.text(3), "id");
}

TEST_F(Scenes, AStoredValueThatDoesNotFitNamesFileAndInstance) {
    evRegisterParameterString("file", "File", "", 80, 80, 0);
    const SceneFile read =
        scene(R"({"instances": [{"name": "a", "parameters": {"fil": "x.json"}}]})");
    lumo::Record record(host.parameters);
    EXPECT_EQ(refusalOf([&] { read.restore(read.instances[0], host.parameters, record); }),
              ", instance \"a\": There is no parameter \"fil\". Did you mean \"file\"?");
}
