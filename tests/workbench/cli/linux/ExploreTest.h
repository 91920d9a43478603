#pragma once

#include <rapidjson/document.h>

#include "tests/workbench/cli/linux/ExplainTest.h"

/// A test of `explore`.
class ExploreTest : public ExplainTest {
protected:
    /// Explores, and expects just this text, which begins behind a line end, and this exit status.
    void expectExplored(const std::vector<std::string>& arguments, const std::string& text,
                        int status = 0) const {
        const ChildResult result = explore(arguments);
        EXPECT_EQ("\n" + masked(result.out + result.err), text);
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(result.out.empty(), status != 0);
    }

    ChildResult explore(const std::vector<std::string>& arguments) const {
        return run(joined({"explore"}, arguments));
    }

    /// What `explore --out json` says.
    rapidjson::Document explored(const std::vector<std::string>& arguments) const {
        const ChildResult result = explore(joined(arguments, {"--out", "json"}));
        EXPECT_EQ(result.status, 0) << result.err;
        rapidjson::Document json;
        json.Parse(result.out.c_str());
        EXPECT_TRUE(json.IsObject()) << result.out;
        return json;
    }

    /// The names of a page, and how many there are in all: "b, c of 4".
    std::string pageOf(const std::vector<std::string>& arguments) const {
        const rapidjson::Document json = explored(arguments);
        std::string text;
        for (const auto& entry : json["entries"].GetArray())
            text += (text.empty() ? "" : ", ") + std::string(entry["name"].GetString());
        const std::string total =
            json["total"].IsNull() ? "more" : std::to_string(json["total"].GetUint());
        return text + " of " + total;
    }

    /// The entries of a page, each with its type and behind as many dots as it is deep.
    std::string outlineOf(const std::vector<std::string>& arguments) const {
        const rapidjson::Document json = explored(arguments);
        std::string text;
        for (const auto& entry : json["entries"].GetArray())
            text += "\n" + std::string(entry["depth"].GetUint(), '.') + entry["type"].GetString() +
                    " " + entry["name"].GetString();
        return text;
    }

    /// The rows of a preview, below the names of the columns.
    std::string previewOf(const std::vector<std::string>& arguments) const {
        const rapidjson::Document json = explored(arguments);
        if (!json.HasMember("preview")) return "none";
        const rapidjson::Value& preview = json["preview"];
        std::string text = lineOf(preview["columns"]);
        for (const auto& row : preview["rows"].GetArray())
            text += lineOf(row);
        const rapidjson::Value& leftOut = preview["leftOut"];
        text += "\n" + (leftOut.IsNull() ? "more" : std::to_string(leftOut.GetUint()));
        return preview.HasMember("places") ? text + lineOf(preview["places"]) : text;
    }

    /// What selects all records that have a value, and how many these are.
    std::string wheresOf(const std::vector<std::string>& arguments) const {
        const rapidjson::Document json = explored(arguments);
        std::string text;
        for (const auto& entry : json["entries"].GetArray()) {
            if (!entry.HasMember("where")) continue;
            const rapidjson::Value& where = entry["where"];
            text += std::string("\n") + where["set"]["xpath"].GetString() + ": " +
                    std::to_string(where["records"].GetUint());
        }
        return text;
    }

private:
    static std::string lineOf(const rapidjson::Value& cells) {
        std::string line;
        for (const auto& cell : cells.GetArray())
            line += (line.empty() ? "\n" : "|") + std::string(cell.GetString());
        return line;
    }
};
