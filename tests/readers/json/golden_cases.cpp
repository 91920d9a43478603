#include "tests/readers/json/golden_cases.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

#include "pipeline/command_text.h"

namespace intake {

namespace {

GoldenCase goldenCase(const std::filesystem::path& requestFile) {
    GoldenCase golden;
    golden.name = requestFile.stem().string();
    std::istringstream command(contentOf(requestFile));
    ParseCommand(golden.request, command);
    golden.source = contentOf(requestFile.parent_path() / golden.request.filename);
    golden.scriptFile = std::filesystem::path(requestFile).replace_extension(".script");
    return golden;
}

}  // namespace

std::vector<GoldenCase> goldenCases(const std::filesystem::path& directory) {
    std::vector<GoldenCase> cases;
    for (const auto& entry : std::filesystem::directory_iterator(directory)) {
        if (entry.path().extension() == ".request") {
            cases.push_back(goldenCase(entry.path()));
        }
    }
    std::ranges::sort(cases, {}, &GoldenCase::name);
    return cases;
}

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace intake
