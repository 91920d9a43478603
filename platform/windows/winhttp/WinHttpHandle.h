#pragma once

#include <windows.h>
// Builds on the former.
#include <winhttp.h>

#include <memory>

namespace intake {

struct WinHttpCloser {
    using pointer = HINTERNET;
    void operator()(HINTERNET handle) const { WinHttpCloseHandle(handle); }
};

/// A session, connection or request, closed with its owner. Null where it could not be opened.
using WinHttpHandle = std::unique_ptr<void, WinHttpCloser>;

}  // namespace intake
