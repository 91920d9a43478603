#include "tests/platform/database/odbc/DatabaseServer.h"

#include <pwd.h>
#include <unistd.h>

#include <stdexcept>

#include "tests/http/support/loopback.h"

namespace intake {

namespace {

struct Command {
    std::string program;
    std::vector<std::string> arguments;
};

/// These servers refuse to be run by root.
Command asUser(const std::string& user, const Command& command) {
    if (geteuid() != 0) {
        return command;
    }
    std::vector<std::string> arguments{"--reuid",       user,          "--regid", user,
                                       "--init-groups", "--pdeathsig", "QUIT",    "--",
                                       command.program};
    arguments.insert(arguments.end(), command.arguments.begin(), command.arguments.end());
    return {"/usr/bin/setpriv", arguments};
}

void giveTo(const std::string& user, const std::filesystem::path& file) {
    if (geteuid() != 0) {
        return;
    }
    const passwd* const entry = getpwnam(user.c_str());
    if (entry == nullptr || chown(file.c_str(), entry->pw_uid, entry->pw_gid) != 0) {
        throw std::runtime_error("there is no user " + user + "; scripts/setup test makes it");
    }
}

class PostgresServer final : public DatabaseServer {
public:
    PostgresServer() : DatabaseServer("postgres") {
        const std::string programs = "/usr/lib/postgresql/15/bin/";
        runAsItsUser(programs + "initdb",
                     {"--pgdata", path("data"), "--username", "designer", "--pwfile",
                      write("password", "s3cret"), "--auth", "scram-sha-256", "--encoding", "UTF8",
                      "--locale", "C.UTF-8", "--no-sync"});
        start(programs + "postgres", SIGQUIT, [&](const std::string& port) {
            return std::vector<std::string>{"-D", path("data"),
                                            "-p", port,
                                            "-c", "listen_addresses=127.0.0.1",
                                            "-c", "unix_socket_directories=",
                                            "-c", "fsync=off"};
        });
    }

private:
    const char* driver() const override { return "PostgreSQL Unicode;Database=postgres"; }
};

/// Each has temporary files of its own: one that starts deletes what it takes for leftovers.
class MariaDbServer final : public DatabaseServer {
public:
    MariaDbServer() : DatabaseServer("mysql") {
        runAsItsUser("/usr/bin/mariadb-install-db",
                     {"--no-defaults", "--datadir=" + path("data"), "--tmpdir=" + path(""),
                      "--skip-test-db", "--auth-root-authentication-method=normal"});
        const std::string statements = write("statements",
                                             "CREATE DATABASE league CHARACTER SET utf8mb4;\n"
                                             "CREATE USER designer IDENTIFIED BY 's3cret';\n"
                                             "GRANT ALL ON league.* TO designer;\n");
        start("/usr/sbin/mariadbd", SIGKILL, [&](const std::string& port) {
            return std::vector<std::string>{"--no-defaults",
                                            "--datadir=" + path("data"),
                                            "--tmpdir=" + path(""),
                                            "--port=" + port,
                                            "--socket=" + path("socket"),
                                            "--bind-address=127.0.0.1",
                                            "--pid-file=" + path("process"),
                                            "--init-file=" + statements,
                                            "--innodb-flush-log-at-trx-commit=0"};
        });
    }

private:
    const char* driver() const override { return "MariaDB Unicode;Database=league"; }
};

}  // namespace

DatabaseServer::DatabaseServer(const char* user) : user_(user) {
    giveTo(user_, directory_.path());
}

std::string DatabaseServer::connectionString() const {
    return std::string("Driver=") + driver() + ";Server=127.0.0.1;Port=" + std::to_string(port_) +
           ";Uid=designer";
}

std::string DatabaseServer::write(const std::string& name, const std::string& content) const {
    const std::string file = directory_.write(name, content);
    giveTo(user_, file);
    return file;
}

void DatabaseServer::runAsItsUser(const std::string& program,
                                  const std::vector<std::string>& arguments) const {
    const Command command = asUser(user_, {program, arguments});
    runTool(command.program, command.arguments);
}

void DatabaseServer::launch(const std::string& program, const std::vector<std::string>& arguments,
                            int stopSignal) {
    const Command command = asUser(user_, {program, arguments});
    process_ = std::make_unique<ServerProcess>(command.program, command.arguments, Ports{port_},
                                               directory_.path() / "output", stopSignal);
}

std::unique_ptr<DatabaseServer> startPostgres() {
    return std::make_unique<PostgresServer>();
}

std::unique_ptr<DatabaseServer> startMariaDb() {
    return std::make_unique<MariaDbServer>();
}

}  // namespace intake
