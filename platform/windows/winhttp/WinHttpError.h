#pragma once

#include <cstdint>
#include <string>

namespace intake {

/// The last failure of a WinHTTP object. Used by its object's thread only.
class WinHttpError {
public:
    /// Keeps the calling thread's last error unless the call succeeded. Returns `succeeded`.
    bool note(bool succeeded);

    uint32_t number() const { return number_; }

    /// The system's text for it, or else that of WinHTTP itself.
    std::string text() const;

private:
    uint32_t number_ = 0;
};

}  // namespace intake
