#pragma once

#include <sys/types.h>

#include <csignal>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace intake {

/// Runs a tool to its end, with `input` as its standard input. Throws std::runtime_error when it is
/// not installed or fails, with what it said.
void runTool(const std::string& program, const std::vector<std::string>& arguments,
             const std::string& input = "");

/// The TCP ports of this machine on which a server accepts connections.
using Ports = std::vector<uint16_t>;

/// A real server that runs as a child process, in the foreground, for as long as this object lives.
/// It ends with the test even when the test crashes.
class ServerProcess {
public:
    /// Returns when the server accepts connections on all of `ports`: servers open one after the
    /// other. What it prints goes to `output`. Throws std::runtime_error when it is not installed
    /// or ends before. `stopSignal` is what ends it.
    ServerProcess(const std::string& program, const std::vector<std::string>& arguments,
                  const Ports& ports, const std::filesystem::path& output,
                  int stopSignal = SIGKILL);
    ~ServerProcess();
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;

private:
    pid_t process_;
    int stopSignal_;
};

/// Calls `start` with free ports until it succeeds: somebody else may have been faster. Its last
/// failure goes to the caller.
template <class Start>
auto withRetries(Start start) {
    constexpr int ATTEMPTS = 5;
    for (int attempt = 1; attempt < ATTEMPTS; ++attempt) {
        try {
            return start();
        } catch (const std::runtime_error&) {
        }
    }
    return start();
}

}  // namespace intake
