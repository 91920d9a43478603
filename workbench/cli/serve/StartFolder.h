#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace workbench {

/// The folder in which the workbench was started. A page gets at the files at and below it, by
/// their names from there, and at no others: neither by ".." nor by links that lead out of it.
/// Files and folders whose names begin with a dot are left out. Plain values; any thread.
class StartFolder {
public:
    StartFolder();

    struct Listing {
        std::vector<std::string> files;
        std::size_t leftOut = 0;     // further ones
        bool hasEndedEarly = false;  // there may be more still
    };

    struct Wish {
        std::string_view ending;  // of the names
        std::uintmax_t mostRead;  // by the question that follows, in bytes
        std::function<bool(const std::filesystem::path&)> isWanted;
    };

    /// The files that are wished for, by name. Ends early where there is very much to look at, or
    /// the disk does not let it. Reads the disk: for jobs.
    Listing list(const Wish& wish, const std::stop_token& stop) const;

    /// Where the file of that name is, or would be; nothing where a page may not go.
    std::optional<std::filesystem::path> find(const std::string& name) const;

    /// The name of a file that lies here; else its path as it is given.
    std::string nameOf(const std::string& file) const;

private:
    bool holds(const std::filesystem::path& file) const;

    const std::filesystem::path folder_;  // canonical; empty where it is gone
};

}  // namespace workbench
