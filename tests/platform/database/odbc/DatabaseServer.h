#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "tests/http/support/ServerProcess.h"
#include "tests/http/support/loopback.h"
#include "tests/support/TempDirectory.h"

namespace intake {

/// A real, empty database server on loopback, which knows the user "designer" with the password
/// "s3cret" and the database "league". Stops with its object.
class DatabaseServer {
public:
    virtual ~DatabaseServer() = default;

    /// How to connect, but for the password.
    std::string connectionString() const;

    /// Ends it within whatever it does.
    void kill() { process_.reset(); }

protected:
    explicit DatabaseServer(const char* user);

    /// A path in the server's own folder.
    std::string path(const std::string& name) const { return (directory_.path() / name).string(); }

    /// Writes a file there, which the server can read.
    std::string write(const std::string& name, const std::string& content) const;

    /// Runs a tool of the server to its end.
    void runAsItsUser(const std::string& program, const std::vector<std::string>& arguments) const;

    /// Starts it; `arguments` of a port.
    template <class Arguments>
    void start(const std::string& program, int stopSignal, Arguments arguments) {
        withRetries([&] {
            port_ = freePort();
            launch(program, arguments(std::to_string(port_)), stopSignal);
        });
    }

private:
    virtual const char* driver() const = 0;

    void launch(const std::string& program, const std::vector<std::string>& arguments,
                int stopSignal);

    const char* user_;  // who runs it when the tests run as root
    TempDirectory directory_;
    uint16_t port_ = 0;
    std::unique_ptr<ServerProcess> process_;
};

std::unique_ptr<DatabaseServer> startPostgres();
std::unique_ptr<DatabaseServer> startMariaDb();

}  // namespace intake
