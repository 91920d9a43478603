#include "platform/windows/com/com_error.h"

#include <array>
#include <cstdio>

#include "platform/PlatformError.h"
#include "platform/windows/base/system_message.h"
#include "platform/windows/base/wide_text.h"
#include "platform/windows/com/BasicString.h"
#include "platform/windows/com/ComPointer.h"
#include "platform/windows/com/com.h"

namespace intake {

namespace {

/// The failures that dispatch interfaces number by themselves.
constexpr uint32_t FIRST_DISPATCH_ERROR = 0x80040200;
constexpr uint32_t LAST_DISPATCH_ERROR = 0x8004FFFF;

std::string numbered(const char* format, uint32_t number) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), format, number);
    return text.data();
}

}  // namespace

std::string comMeaning(uint32_t code) {
    std::string text;
    if (systemMessage(code, text)) {
        return text.substr(0, text.find_last_not_of("\r\n") + 1);
    }
    if (code > FIRST_DISPATCH_ERROR && code <= LAST_DISPATCH_ERROR) {
        return numbered("IDispatch error #%u", code - FIRST_DISPATCH_ERROR);
    }
    return numbered("Unknown error 0x%X", code);
}

void throwCom(HRESULT failure) {
    const auto code = static_cast<uint32_t>(failure);
    throw PlatformError(code, comMeaning(code), "", "");
}

HRESULT checkCom(HRESULT result) {
    if (SUCCEEDED(result)) {
        return result;
    }
    ComPointer<IErrorInfo> info;
    BasicString source;
    BasicString description;
    if (GetErrorInfo(0, info.out()) == S_OK) {
        info->GetSource(source.out());
        info->GetDescription(description.out());
    }
    const auto code = static_cast<uint32_t>(result);
    throw PlatformError(code, comMeaning(code), toUtf8(source.view()), toUtf8(description.view()));
}

bool succeeded(HRESULT result) {
    if (FAILED(result)) {
        SetErrorInfo(0, nullptr);
    }
    return SUCCEEDED(result);
}

}  // namespace intake
