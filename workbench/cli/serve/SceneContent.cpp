#include "workbench/cli/serve/SceneContent.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <utility>

namespace workbench {

SceneContent::SceneContent(std::optional<std::string> content) : stamp("missing") {
    if (!content) return;
    stamp =
        std::to_string(content->size()) + "-" + std::to_string(std::hash<std::string>()(*content));
    text = std::make_shared<const std::string>(std::move(*content));
}

SceneContent contentOf(const std::string& file) {
    std::error_code error;
    const bool isFile = std::filesystem::is_regular_file(file, error);
    if (!isFile || std::filesystem::file_size(file, error) > longestScene)
        return SceneContent(std::nullopt);
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return SceneContent(std::nullopt);
    return SceneContent(std::string(std::istreambuf_iterator<char>(stream), {}));
}

}  // namespace workbench
