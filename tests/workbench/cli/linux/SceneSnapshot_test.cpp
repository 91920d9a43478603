#include "workbench/cli/serve/SceneSnapshot.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "host/lumo.h"
#include "workbench/cli/UsageError.h"
#include "workbench/cli/parameter_values.h"
#include "workbench/lumo/Host.h"

using workbench::SceneContent;
using workbench::SceneSnapshot;

namespace {

class SceneSnapshotTest : public testing::Test {
protected:
    SceneSnapshotTest() {
        evSetPersistent(1);
        evRegisterParameterString("file", "File", "", 80, 80, 0);
        evRegisterParameterString("password", "Password", "", 80, 80, 0);
    }

    static std::string sceneWith(const std::string& file) {
        return R"({"instances": [{"name": "a", "parameters": {"file": ")" + file + R"("}}]})";
    }

    /// The instance "a", with this file, of a scene that was opened with "x".
    SceneSnapshot snapshot(const std::string& file, const SceneContent& onDisk) const {
        auto values = std::make_shared<lumo::Record>(host.parameters);
        workbench::setParameter(host.parameters, *values, "file", file);
        return {host.parameters,
                "/shows/a.json",
                "a.json",
                7,
                false,
                SceneContent(sceneWith("x")),
                onDisk,
                {{"a", "a", "a", values}},
                workbench::Redaction(probe::Settings{})};
    }

    static rapidjson::Document parsed(const std::string& json) {
        rapidjson::Document document;
        document.Parse(json.c_str());
        EXPECT_FALSE(document.HasParseError()) << json;
        return document;
    }

    lumo::Host host;
};

}  // namespace

TEST_F(SceneSnapshotTest, TellsTheRevisionAndTheStampThatItWasTakenWith) {
    const SceneContent content(sceneWith("y"));
    const auto told = parsed(snapshot("z", content).json());
    EXPECT_EQ(told["revision"].GetInt(), 7);
    EXPECT_EQ(told["stamp"].GetString(), content.stamp);
    EXPECT_STREQ(told["onDisk"].GetString(), "changed");
    const auto& value = told["changes"][0]["parameters"][0];
    EXPECT_STREQ(value["before"].GetString(), "y");
    EXPECT_STREQ(value["after"].GetString(), "z");
}

TEST_F(SceneSnapshotTest, IsSavedWhereNothingDiffers) {
    const auto told = parsed(snapshot("x", SceneContent(sceneWith("x"))).json());
    EXPECT_STREQ(told["onDisk"].GetString(), "same");
    EXPECT_TRUE(told["isSaved"].GetBool());
}

TEST_F(SceneSnapshotTest, IsNotSavedWhereTheFileIsGone) {
    const SceneSnapshot scene = snapshot("x", SceneContent(std::nullopt));
    const auto told = parsed(scene.json());
    EXPECT_STREQ(told["onDisk"].GetString(), "missing");
    EXPECT_FALSE(told["isSaved"].GetBool());
    EXPECT_EQ(parsed(scene.textToSave(false)), parsed(sceneWith("x")));
}

TEST_F(SceneSnapshotTest, IsSavedOverWhatWasOpenedWhereTheFileIsNoSceneAnyMore) {
    const SceneSnapshot scene = snapshot("z", SceneContent("no scene"));
    EXPECT_EQ(parsed(scene.textToSave(false)), parsed(sceneWith("z")));
}

TEST_F(SceneSnapshotTest, OfNothingWithoutAFileIsNotSaved) {
    SceneSnapshot scene = snapshot("x", SceneContent(std::nullopt));
    scene.instances.clear();
    EXPECT_FALSE(parsed(scene.json())["isSaved"].GetBool());
}

TEST_F(SceneSnapshotTest, HidesTheSecretsOfTheFileToo) {
    const std::string onDisk =
        R"({"instances": [{"name": "a", "parameters": {"password": "formerSecret"}}]})";
    const std::string told = snapshot("x", SceneContent(onDisk)).json();
    EXPECT_NE(told.find("\"name\": \"password\""), std::string::npos) << told;
    EXPECT_EQ(told.find("formerSecret"), std::string::npos) << told;
}

TEST_F(SceneSnapshotTest, OfASceneThatIsNestedTooDeepIsNone) {
    const auto open = [this](int depth) {
        const std::string text = "{\"instances\": [], \"note\": " + std::string(depth, '[') +
                                 std::string(depth, ']') + "}";
        workbench::SceneText("a.json", text, host.parameters);
    };
    EXPECT_NO_THROW(open(99));
    EXPECT_THROW(open(100), workbench::UsageError);
}
