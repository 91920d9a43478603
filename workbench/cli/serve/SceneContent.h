#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace workbench {

/// No scene is longer, in bytes.
constexpr std::uintmax_t longestScene = 16U << 20;

/// What a scene's file has in it. Copies share the text, which does not change. Any thread.
struct SceneContent {
    /// A file that is not there has none.
    explicit SceneContent(std::optional<std::string> content);

    std::shared_ptr<const std::string> text;  // null where there is none
    std::string stamp;                        // a name for it; "missing" where there is none
};

/// The content of a file that may be a scene; none when it cannot be read, or is far too long. Asks
/// the disk: for jobs.
SceneContent contentOf(const std::string& file);

}  // namespace workbench
