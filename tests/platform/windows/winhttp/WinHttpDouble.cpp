#include "tests/platform/windows/winhttp/WinHttpDouble.h"

#include <windows.h>

#include <cwchar>
#include <stdexcept>

namespace intake {

namespace {

WinHttpDouble* living = nullptr;

}  // namespace

WinHttpDouble& winHttp() {
    if (living == nullptr) {
        throw std::logic_error("WinHTTP is called outside of a test");
    }
    return *living;
}

WinHttpDouble::WinHttpDouble() {
    living = this;
}

WinHttpDouble::~WinHttpDouble() {
    living = nullptr;
    for (void* const text : texts_) {
        delete[] static_cast<wchar_t*>(text);
    }
}

void WinHttpDouble::fail(const std::string& function, int nth, uint32_t error) {
    failing_ = function;
    failingCall_ = nth;
    error_ = error;
}

bool WinHttpDouble::enter(const std::string& function, const std::string& arguments) {
    calls_ += function + "(" + arguments + ")\n";
    if (function == failing_ && --failingCall_ == 0) {
        SetLastError(error_);
        return false;
    }
    return true;
}

void* WinHttpDouble::openHandle(const char* name) {
    void* const handle = const_cast<char*>(name);
    if (!handles_.insert(handle).second) {
        throw std::logic_error("It is open already");
    }
    return handle;
}

void WinHttpDouble::closeHandle(void* handle) {
    if (handles_.erase(handle) == 0) {
        throw std::logic_error("It is not open");
    }
}

wchar_t* WinHttpDouble::giveText(const wchar_t* text) {
    if (text == nullptr) {
        return nullptr;
    }
    const size_t size = std::wcslen(text) + 1;
    auto* const copy = new wchar_t[size];
    std::wmemcpy(copy, text, size);
    texts_.insert(copy);
    return copy;
}

void WinHttpDouble::freeText(void* text) {
    if (text == nullptr) {
        return;
    }
    if (texts_.erase(text) == 0) {
        throw std::logic_error("It was not given");
    }
    delete[] static_cast<wchar_t*>(text);
}

}  // namespace intake
