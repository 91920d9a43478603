#pragma once

#include <cstddef>
#include <memory>

#include "tests/http/support/EnvironmentVariable.h"
#include "tests/http/support/ScriptedServer.h"

namespace intake {

/// A script for the system's proxy on a server that never sends it. What searches for the proxy
/// reads the environment, and goes on when it was given up; so this object waits, at its end, until
/// the search has begun and has ended before the variable changes.
class StalledProxyScript {
public:
    StalledProxyScript();
    ~StalledProxyScript();
    StalledProxyScript(const StalledProxyScript&) = delete;
    StalledProxyScript& operator=(const StalledProxyScript&) = delete;

    /// Where the script is asked for.
    ScriptedServer& server() { return *server_; }

private:
    const size_t threads_;  // that there were before
    std::unique_ptr<ScriptedServer> server_;
    const EnvironmentVariable variable_;
};

}  // namespace intake
