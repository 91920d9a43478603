#include "workbench/cli/serve/SceneOnDisk.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <utility>

#include "workbench/cli/run/SceneWatch.h"

namespace workbench {

namespace {

constexpr double interval = 0.5;

}  // namespace

std::string stampOf(const std::optional<std::string>& text) {
    if (!text) return "missing";
    return std::to_string(text->size()) + "-" + std::to_string(std::hash<std::string>()(*text));
}

std::optional<std::string> contentOf(const std::string& file) {
    std::error_code error;
    const bool isFile = std::filesystem::is_regular_file(file, error);
    if (!isFile || std::filesystem::file_size(file, error) > longestScene) return std::nullopt;
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

void SceneOnDisk::follow(std::string file) {
    file_ = std::move(file);
    mark_ = mark();
    read();
}

bool SceneOnDisk::runFrame(double now) {
    if (file_.empty() || now - lookedAt_ < interval) return false;
    lookedAt_ = now;
    const auto found = mark();
    if (found == mark_) return false;
    mark_ = found;
    const std::string known = stamp_;
    read();
    return stamp_ != known;
}

std::optional<SceneOnDisk::Mark> SceneOnDisk::mark() const {
    std::error_code error;
    const auto time = std::filesystem::last_write_time(file_, error);
    if (error) return std::nullopt;
    const auto size = std::filesystem::file_size(file_, error);
    if (error) return std::nullopt;
    return Mark{static_cast<std::int64_t>(time.time_since_epoch().count()), size,
                fileIdentity(file_)};
}

void SceneOnDisk::read() {
    text_ = contentOf(file_);
    stamp_ = stampOf(text_);
}

}  // namespace workbench
