#pragma once

#include <cstdint>
#include <string>

namespace intake {

/// Throws the calling thread's last error as std::system_error. `call` is what failed.
[[noreturn]] void throwLastError(const char* call);

/// The system's text for an error number, with the line end that the system puts behind it; false,
/// and nothing in `text`, when it has none.
bool systemMessage(uint32_t error, std::string& text);

/// The same, of a module that is loaded and has texts for errors of its own.
bool moduleMessage(const char* module, uint32_t error, std::string& text);

}  // namespace intake
