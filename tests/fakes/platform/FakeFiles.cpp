#include "tests/fakes/platform/FakeFiles.h"

#include <algorithm>

namespace intake {

Files::Handle FakeFiles::open(const char* path) {
    if (!passStep(Step::OPEN, path)) {
        return INVALID;
    }
    const std::lock_guard lock(mutex_);
    Entry& entry = entries_[path];
    if (!entry.content.has_value()) {
        diagnostics_.setLastError("No such file or directory");
        return INVALID;
    }
    ++entry.timesOpened;
    handles_[++lastHandle_] = path;
    return lastHandle_;
}

bool FakeFiles::size(Handle file, uint64_t& bytes) {
    std::string path;
    if (!isOpen(file, path) || !passStep(Step::SIZE, path)) {
        return false;
    }
    const std::lock_guard lock(mutex_);
    const Entry& entry = entries_[path];
    bytes = entry.reportedSize.value_or(entry.content.value_or("").size());
    return true;
}

bool FakeFiles::read(Handle file, char* buffer, size_t capacity, size_t& bytesRead) {
    std::string path;
    if (!isOpen(file, path) || !passStep(Step::READ, path)) {
        return false;
    }
    const std::lock_guard lock(mutex_);
    bytesRead = entries_[path].content.value_or("").copy(buffer, capacity);
    return true;
}

void FakeFiles::close(Handle file) {
    const std::lock_guard lock(mutex_);
    handles_.erase(file);
}

void FakeFiles::put(const std::string& path, const std::string& content) {
    const std::lock_guard lock(mutex_);
    entries_[path].content = content;
}

void FakeFiles::reportSize(const std::string& path, uint64_t bytes) {
    const std::lock_guard lock(mutex_);
    entries_[path].reportedSize = bytes;
}

void FakeFiles::failAt(Step step, const std::string& path, const std::string& reason) {
    const std::lock_guard lock(mutex_);
    entries_[path].steps[step].failure = reason;
}

void FakeFiles::runAt(Step step, const std::string& path, std::function<void()> action) {
    const std::lock_guard lock(mutex_);
    entries_[path].steps[step].action = std::move(action);
}

void FakeFiles::blockAt(Step step, const std::string& path) {
    const std::lock_guard lock(mutex_);
    entries_[path].steps[step].blocks = true;
}

void FakeFiles::waitUntilBlocked(const std::string& path) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return entries_[path].blockedReaders > 0; });
}

void FakeFiles::release(const std::string& path) {
    const std::lock_guard lock(mutex_);
    for (auto& [step, behaviour] : entries_[path].steps) {
        behaviour.blocks = false;
    }
    changed_.notify_all();
}

void FakeFiles::releaseAll() {
    const std::lock_guard lock(mutex_);
    for (auto& [path, entry] : entries_) {
        for (auto& [step, behaviour] : entry.steps) {
            behaviour.blocks = false;
        }
    }
    changed_.notify_all();
}

int FakeFiles::timesOpened(const std::string& path) const {
    const std::lock_guard lock(mutex_);
    const auto found = entries_.find(path);
    return found == entries_.end() ? 0 : found->second.timesOpened;
}

size_t FakeFiles::openHandles() const {
    const std::lock_guard lock(mutex_);
    return handles_.size();
}

/// Does what was arranged for this step; false when the step is to fail.
bool FakeFiles::passStep(Step step, const std::string& path) {
    std::unique_lock lock(mutex_);
    Entry& entry = entries_[path];
    while (entry.steps[step].blocks) {
        ++entry.blockedReaders;
        changed_.notify_all();
        changed_.wait(lock);
        --entry.blockedReaders;
    }
    const Behaviour behaviour = entry.steps[step];
    lock.unlock();
    if (behaviour.action) {
        behaviour.action();
    }
    if (behaviour.failure) {
        diagnostics_.setLastError(*behaviour.failure);
    }
    return !behaviour.failure.has_value();
}

bool FakeFiles::isOpen(Handle file, std::string& path) {
    const std::lock_guard lock(mutex_);
    const auto found = handles_.find(file);
    if (found == handles_.end()) {
        diagnostics_.setLastError("Bad file descriptor");
        return false;
    }
    path = found->second;
    return true;
}

}  // namespace intake
