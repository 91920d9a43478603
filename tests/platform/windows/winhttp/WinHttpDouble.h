#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace intake {

/// Stands in for WinHTTP in a whole program: its functions note their calls here, with arguments,
/// and answer as a test says. There is one at a time; used on one thread.
class WinHttpDouble {
public:
    static constexpr uint32_t FAILURE = 1450;  // one that the system has a text for

    WinHttpDouble();
    ~WinHttpDouble();
    WinHttpDouble(const WinHttpDouble&) = delete;
    WinHttpDouble& operator=(const WinHttpDouble&) = delete;

    /// The `nth` call of a function fails and has no effect.
    void fail(const std::string& function, int nth = 1, uint32_t error = FAILURE);

    /// What servers and the system answer. A null text is one that the system does not have.
    std::vector<uint32_t> statuses{200};  // of one send after the other
    uint32_t schemes = 0;
    uint32_t target = 0;
    std::vector<std::string> chunks;  // of the body
    int browserDetects = 0;
    const wchar_t* browserScript = nullptr;
    const wchar_t* browserProxy = nullptr;
    const wchar_t* browserBypass = nullptr;
    uint32_t foundAccess = 3;
    const wchar_t* foundProxy = nullptr;
    const wchar_t* foundBypass = nullptr;

    /// One line per call, oldest first.
    const std::string& calls() const { return calls_; }

    /// Handles that are open.
    size_t openHandles() const { return handles_.size(); }

    /// Texts that the system returned and that nobody has freed.
    size_t livingTexts() const { return texts_.size(); }

    // For the functions.

    /// Notes a call; false when it is to fail.
    bool enter(const std::string& function, const std::string& arguments);
    void* openHandle(const char* name);
    void closeHandle(void* handle);
    wchar_t* giveText(const wchar_t* text);
    void freeText(void* text);

private:
    std::string calls_;
    std::string failing_;
    int failingCall_ = 0;
    uint32_t error_ = 0;
    std::set<void*> handles_;
    std::set<void*> texts_;
};

/// The one that lives.
WinHttpDouble& winHttp();

}  // namespace intake
