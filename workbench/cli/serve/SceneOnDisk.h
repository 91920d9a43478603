#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace workbench {

/// No scene is longer, in bytes.
constexpr std::uintmax_t longestScene = 16U << 20;

/// A name for the content of a file; "missing" for one that is not there.
std::string stampOf(const std::optional<std::string>& text);

/// The content of a file that may be a scene; nothing when it cannot be read, or is far too long.
std::optional<std::string> contentOf(const std::string& file);

/// A scene file as it is on disk now, looked at twice a second. Host's thread.
class SceneOnDisk {
public:
    /// Looks at another file, whose content is known. An empty name stands for none.
    void follow(std::string file);

    /// Whether the content has changed since the last look.
    bool runFrame(double now);

    const std::optional<std::string>& text() const { return text_; }
    const std::string& stamp() const { return stamp_; }

private:
    /// What changes when a file does.
    struct Mark {
        std::int64_t time = 0;
        std::uintmax_t size = 0;
        std::uint64_t file = 0;

        bool operator==(const Mark&) const = default;
    };
    std::optional<Mark> mark() const;
    void read();

    std::string file_;
    std::optional<Mark> mark_;
    std::optional<std::string> text_;
    std::string stamp_;
    double lookedAt_ = 0;
};

}  // namespace workbench
