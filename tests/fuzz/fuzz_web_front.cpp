// What a connection sends, whole requests or none, ends in answers, and lets nobody in who does not
// know the secret. By a real connection to the real server, for which the gate is told another port
// than the one it has: inputs have to name it.

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <memory>

#include "tests/fuzz/FuzzInput.h"
#include "workbench/serve/Gate.h"
#include "workbench/serve/WebServer.h"

namespace {

constexpr std::string_view inside = "you are in";
const std::string session(64, 'a');

void require(bool holds) {
    if (!holds) std::abort();
}

/// Answers as the workbench does.
class Front final : public serve::WebHandler {
public:
    void handle(const serve::WebRequest& request, serve::Reply reply) override {
        if (auto refused = gate_.refusal(request, false)) return reply(std::move(*refused));
        if (serve::Gate::isLogin(request)) return reply(gate_.logIn(request.body));
        if (!request.path.starts_with("/api/")) return reply(serve::refusal(404, "Nothing here."));
        serve::WebResponse response;
        response.body = inside;
        response.body += serve::decoded(request.path, false) + request.parameter("find");
        reply(std::move(response));
    }

    std::optional<serve::WebResponse> refusesSocket(const serve::WebRequest& request) override {
        return gate_.refusal(request, true);
    }

    std::vector<std::string> greeting(const serve::WebRequest& request) override {
        return {std::string(inside) + request.parameter("since")};
    }

private:
    const serve::Gate gate_{8080, session};
};

/// For all runs.
struct Served {
    Served() { server->start(front); }

    Front front;
    std::unique_ptr<serve::WebServer> server = serve::listenOnLoopback(0);
};

sockaddr_in loopback(uint32_t address, uint16_t port) {
    sockaddr_in made{};
    made.sin_family = AF_INET;
    made.sin_port = htons(port);
    made.sin_addr.s_addr = htonl(address);
    return made;
}

/// From one address of this machine after the other: each has a port for every connection of the
/// last minute, and there are more of these than ports.
int connectTo(uint16_t port) {
    static uint32_t runs = 0;
    const int connection = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int yes = 1;
    setsockopt(connection, IPPROTO_IP, IP_BIND_ADDRESS_NO_PORT, &yes, sizeof(yes));
    const sockaddr_in from = loopback(INADDR_LOOPBACK + ++runs % 1000, 0);
    const sockaddr_in to = loopback(INADDR_LOOPBACK, port);
    require(bind(connection, reinterpret_cast<const sockaddr*>(&from), sizeof(from)) == 0);
    const int status = connect(connection, reinterpret_cast<const sockaddr*>(&to), sizeof(to));
    require(status == 0 || errno == EINTR);  // by libFuzzer's clock; what is sent waits for it
    return connection;
}

/// What is answered until the server ends the connection, which it does behind our end.
std::string exchange(uint16_t port, std::string_view text) {
    const int connection = connectTo(port);
    while (!text.empty()) {
        const ssize_t sent = send(connection, text.data(), text.size(), MSG_NOSIGNAL);
        if (sent <= 0) break;  // the server has heard enough
        text.remove_prefix(static_cast<size_t>(sent));
    }
    shutdown(connection, SHUT_WR);
    std::string answer;
    std::array<char, 65536> bytes;
    for (ssize_t count = 0; (count = recv(connection, bytes.data(), bytes.size(), 0)) > 0;)
        answer.append(bytes.data(), static_cast<size_t>(count));
    close(connection);
    return answer;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static Served served;
    const std::string_view text = intake::FuzzInput(data, size).rest();
    const std::string answer = exchange(served.server->port(), text);
    require(answer.empty() || answer.starts_with("HTTP/1."));
    const bool isIn = answer.find(inside) != std::string::npos;
    require(!isIn || text.find("intake-8080=" + session) != std::string_view::npos);
    return 0;
}
