#include "workbench/cli/serve/StartFolder.h"

#include <algorithm>
#include <system_error>

namespace workbench {

namespace {

namespace fs = std::filesystem;

constexpr int mostEntries = 20'000;
constexpr std::uintmax_t mostBytes = 256U << 20;
constexpr int deepest = 8;
constexpr std::size_t mostListed = 500;

bool isHidden(const fs::path& name) {
    return name.native().starts_with('.');
}

/// Empty where there is none any more.
fs::path startFolder() {
    std::error_code error;
    const fs::path folder = fs::current_path(error);
    return error ? fs::path() : fs::weakly_canonical(folder, error);
}

}  // namespace

StartFolder::StartFolder() : folder_(startFolder()) {}

bool StartFolder::holds(const fs::path& file) const {
    if (folder_.empty()) return false;
    const fs::path name = file.lexically_relative(folder_);
    return !name.empty() && std::none_of(name.begin(), name.end(), isHidden);
}

std::optional<fs::path> StartFolder::find(const std::string& name) const {
    if (name.empty() || name.find('\0') != std::string::npos) return std::nullopt;
    std::error_code error;
    const fs::path file = fs::weakly_canonical(folder_ / fs::path(name), error);
    if (error || fs::path(name).is_absolute() || !holds(file)) return std::nullopt;
    return file;
}

std::string StartFolder::nameOf(const std::string& file) const {
    std::error_code error;
    const fs::path whole = fs::weakly_canonical(fs::absolute(file, error), error);
    return !error && holds(whole) ? whole.lexically_relative(folder_).string() : file;
}

StartFolder::Listing StartFolder::list(const Wish& wish, const std::stop_token& stop) const {
    Listing listing;
    std::error_code error;
    int entries = 0;
    std::uintmax_t bytes = 0;
    const auto options = fs::directory_options::skip_permission_denied;
    for (fs::recursive_directory_iterator each(folder_, options, error), end;
         !error && each != end && !stop.stop_requested(); each.increment(error)) {
        listing.hasEndedEarly = ++entries > mostEntries || bytes > mostBytes;
        if (listing.hasEndedEarly) break;
        std::error_code ignored;
        if (each->is_directory(ignored)) {
            if (isHidden(each->path().filename()) || each.depth() == deepest)
                each.disable_recursion_pending();
            continue;
        }
        const std::string name = each->path().lexically_relative(folder_).string();
        const bool isOurs =
            name.ends_with(wish.ending) && each->is_regular_file(ignored) && find(name);
        if (!isOurs) continue;
        bytes += std::min(wish.mostRead, each->file_size(ignored));
        if (wish.isWanted(each->path())) listing.files.push_back(name);
    }
    if (error) listing.hasEndedEarly = true;
    std::sort(listing.files.begin(), listing.files.end());
    if (listing.files.size() > mostListed) {
        listing.leftOut = listing.files.size() - mostListed;
        listing.files.resize(mostListed);
    }
    return listing;
}

}  // namespace workbench
