#pragma once

#include <filesystem>
#include <string>

namespace serve {

/// An address that is shown in the user's browser. The browser is led there by a file of the user's
/// own, which goes with this object: what stands on a command line all users of the machine can
/// read, and this address lets in.
class OpenedAddress {
public:
    /// Starts the browser. Throws std::system_error.
    explicit OpenedAddress(const std::string& address);
    ~OpenedAddress();
    OpenedAddress(const OpenedAddress&) = delete;
    OpenedAddress& operator=(const OpenedAddress&) = delete;

private:
    std::filesystem::path folder_;
};

}  // namespace serve
