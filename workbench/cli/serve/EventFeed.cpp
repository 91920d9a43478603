#include "workbench/cli/serve/EventFeed.h"

namespace workbench {

namespace {

constexpr std::size_t mostKept = 200;  // below what waits for one page at most

std::string numbered(std::uint64_t number, const std::string& members) {
    return "{\"seq\": " + std::to_string(number) + ", " + members + "}";
}

}  // namespace

std::string EventFeed::add(const std::string& members) {
    const std::lock_guard lock(mutex_);
    kept_.push_back(numbered(++last_, members));
    if (kept_.size() > mostKept) kept_.pop_front();
    return kept_.back();
}

std::uint64_t EventFeed::last() const {
    const std::lock_guard lock(mutex_);
    return last_;
}

std::vector<std::string> EventFeed::since(std::uint64_t number) const {
    const std::lock_guard lock(mutex_);
    const std::uint64_t firstKept = last_ - kept_.size() + 1;
    if (number > last_ || number + 1 < firstKept) return {numbered(last_, "\"type\": \"resync\"")};
    return {kept_.begin() + static_cast<std::ptrdiff_t>(number + 1 - firstKept), kept_.end()};
}

}  // namespace workbench
