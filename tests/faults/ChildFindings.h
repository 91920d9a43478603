#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <string>

namespace intake {

/// What a child process reports to the test that started it, also when it crashes.
class ChildFindings {
public:
    /// Runs `body` in a child process until it returns or crashes.
    static ChildFindings of(const std::function<void(ChildFindings&)>& body);

    /// To be said before each try: what is said of a crash names it.
    void startTry(uint64_t number);

    /// Something is wrong in this try. Keeps what there is room for.
    void add(const char* what);
    void add(const std::string& what) { add(what.c_str()); }

    uint64_t lastTry() const { return try_; }
    bool crashed() const { return crashed_; }

    /// Empty when nothing is wrong. Of a crash, the functions that were running.
    std::string text() const { return text_.data(); }

private:
    static void onCrash(int signal);
    static void onExit();
    static void addEnd(const char* what);

    uint64_t try_ = 0;
    bool crashed_ = false;
    std::array<char, 16384> text_{};
};

}  // namespace intake
