#include "platform/windows/winhttp/WinHttpError.h"

#include <windows.h>

#include "platform/windows/base/system_message.h"

namespace intake {

bool WinHttpError::note(bool succeeded) {
    if (!succeeded) {
        number_ = GetLastError();
    }
    return succeeded;
}

std::string WinHttpError::text() const {
    std::string text;
    if (!systemMessage(number_, text) && !moduleMessage("winhttp.dll", number_, text)) {
        text = "Error " + std::to_string(number_);
    }
    return text.substr(0, text.find_last_not_of("\r\n") + 1);
}

}  // namespace intake
