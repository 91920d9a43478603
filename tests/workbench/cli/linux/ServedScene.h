#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/workbench/cli/linux/ServedTest.h"

using Lines = std::vector<std::string>;

/// A scene of two instances, one with secrets, that is served as a file.
class ServedScene : public ServedTest {
protected:
    ServedScene()
        : ServedTest(R"({
  "made by": {"studio": [1, 2.50, null, true]},
  "instances": [
    {
      "name": "table",
      "note": "keep me",
      "parameters": {
        "queryMode": 3,
        "filename": "league.json",
        "colour": ["red"],
        "xpath": "rows",
        "table": "T",
        "mode": 1
      }
    },
    {
      "name": "secret",
      "parameters": {
        "queryMode": "XML",
        "useAuth": true,
        "userName": "u",
        "password": "s3cret-word",
        "connStr": "Driver=X;Pwd=s3cret-pwd;Database=d"
      }
    }
  ]
}
)") {
        write("league.json", R"({"rows": [{"id": 1}, {"id": 2}]})");
        logIn();
    }

    std::string fileText(const std::string& file = "show.scene.json") const {
        std::ifstream stream(folder / file);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    rapidjson::Document scene() const { return json(get("/api/v1/scene")); }

    int set(const std::string& name, const std::string& values) const {
        const auto details = json(get("/api/v1/instances/" + name));
        return patch("/api/v1/instances/" + name,
                     "{\"revision\": " + std::to_string(details["revision"].GetInt()) +
                         ", \"set\": " + values + "}")
            .status;
    }

    /// "changed table: xpath rows → items"
    static Lines linesOf(const rapidjson::Document& scene) {
        Lines lines;
        for (const auto& change : scene["changes"].GetArray()) {
            std::string line = std::string(change["kind"].GetString()) + " " +
                               change["was"].GetString() + " " + change["instance"].GetString() +
                               ":";
            for (const auto& value : change["parameters"].GetArray())
                line += std::string(" ") + value["name"].GetString() + " " +
                        value["before"].GetString() + " → " + value["after"].GetString();
            lines.push_back(line);
        }
        return lines;
    }

    Answer save(const std::string& more = "") const {
        return post("/api/v1/scene/save", std::string("{\"stamp\": \"") +
                                              scene()["stamp"].GetString() + "\"" + more + "}");
    }
};
