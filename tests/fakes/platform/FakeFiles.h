#pragma once

#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>

#include "platform/Files.h"
#include "tests/fakes/platform/FakeDiagnostics.h"

namespace intake {

/// Files in memory, by path. What happens at each step of reading a path can be arranged, before or
/// after the file itself is put there. Any thread.
class FakeFiles final : public Files {
public:
    enum class Step { OPEN, SIZE, READ };

    /// A step that fails leaves its reason as the last error of `diagnostics`.
    explicit FakeFiles(FakeDiagnostics& diagnostics) : diagnostics_(diagnostics) {}

    Handle open(const char* path) override;
    bool size(Handle file, uint64_t& bytes) override;
    bool read(Handle file, char* buffer, size_t capacity, size_t& bytesRead) override;
    void close(Handle file) override;

    void put(const std::string& path, const std::string& content);

    /// From now on the path's size is reported as this; its content stays.
    void reportSize(const std::string& path, uint64_t bytes);

    void failAt(Step step, const std::string& path, const std::string& reason);

    /// Runs an action on the reader's thread each time it comes to the step. It may throw.
    void runAt(Step step, const std::string& path, std::function<void()> action);

    /// Holds whoever comes to the step until `release`.
    void blockAt(Step step, const std::string& path);
    void waitUntilBlocked(const std::string& path);
    void release(const std::string& path);
    void releaseAll();

    /// How often the path was opened with success.
    int timesOpened(const std::string& path) const;

    /// Handles that were opened and not closed.
    size_t openHandles() const;

private:
    struct Behaviour {
        std::optional<std::string> failure;
        std::function<void()> action;
        bool blocks = false;
    };
    struct Entry {
        std::optional<std::string> content;
        std::optional<uint64_t> reportedSize;
        std::map<Step, Behaviour> steps;
        int blockedReaders = 0;
        int timesOpened = 0;
    };

    bool passStep(Step step, const std::string& path);
    bool isOpen(Handle file, std::string& path);

    FakeDiagnostics& diagnostics_;
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::map<std::string, Entry> entries_;
    std::map<Handle, std::string> handles_;
    Handle lastHandle_ = 0;
};

}  // namespace intake
