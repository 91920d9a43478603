// Scenes and reports of earlier releases, held against the present program: what could be loaded
// loads, scripts are the same byte for byte, and reports tell all that they told.

#include <iterator>

#include "tests/workbench/cli/ReportLines.h"
#include "tests/workbench/cli/Workbench.h"

namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    EXPECT_TRUE(stream) << file;
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<fs::path> releases() {
    std::vector<fs::path> folders;
    for (const auto& entry : fs::directory_iterator(RELEASED_FOLDER)) {
        if (entry.is_directory()) folders.push_back(entry.path());
    }
    return folders;
}

struct Released : Workbench {
    /// Loads an instance of the scene that lies in the test's folder.
    std::string script(const std::string& instance) const {
        return run({"load", "--scene", "show.scene.json", "--instance", instance, "--out", "script",
                    "--report", "present.jsonl"})
            .out;
    }
};

/// Members that tell of the moment differ from load to load.
bool isOfTheMoment(const std::string& member) {
    return member == "durationMs" || member == "time";
}

void expectAllThatWasTold(const rapidjson::Document& released, const rapidjson::Document& present) {
    for (const auto& [name, value] : released.GetObject()) {
        const std::string member = name.GetString();
        ASSERT_TRUE(present.HasMember(name)) << member;
        EXPECT_EQ(present[name].GetType(), value.GetType()) << member;
        if (isOfTheMoment(member)) continue;
        EXPECT_EQ(present[name], value) << member;
    }
}

}  // namespace

TEST_F(Released, ScenesLoadAndReportAsTheyDid) {
    ASSERT_FALSE(releases().empty());
    for (const fs::path& release : releases()) {
        SCOPED_TRACE(release.filename());
        fs::remove_all(folder);
        fs::copy(release, folder);
        const auto released = readReport(contentOf(release / "report.jsonl"));
        ASSERT_FALSE(released.empty());
        for (const rapidjson::Document& line : released) {
            const std::string name = textOf(line, "instance");
            EXPECT_EQ(script(name), contentOf(release / (name + ".script"))) << name;
        }
        const auto present = readReport(contentOf(folder / "present.jsonl"));
        ASSERT_EQ(present.size(), released.size());
        for (std::size_t i = 0; i < released.size(); ++i)
            expectAllThatWasTold(released[i], present[i]);
    }
}
