#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace intake {

/// Throws the PlatformError of a COM call that returned a failure, with what the object that failed
/// told the calling thread about it. Returns what it was given otherwise.
HRESULT checkCom(HRESULT result);

/// Throws the PlatformError of a failure that no object told anything about.
[[noreturn]] void throwCom(HRESULT failure);

/// Whether a COM call succeeded, where a failure is an answer too; forgets what was told about it.
bool succeeded(HRESULT result);

/// The system's text for a failure, without its line end; where it has none, a text with its
/// number.
std::string comMeaning(uint32_t code);

}  // namespace intake
