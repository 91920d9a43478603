#include "tests/platform/xml/FtpServer.h"

#include <sys/socket.h>
#include <unistd.h>

#include "tests/http/support/loopback.h"

namespace intake {

namespace {

void say(int socket, const std::string& line) {
    const std::string bytes = line + "\r\n";
    send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
}

/// The next line without its end; empty when the peer has gone.
std::string hear(int socket) {
    std::string line;
    for (char character = 0; recv(socket, &character, 1, 0) == 1;) {
        if (character == '\n') {
            break;
        }
        if (character != '\r') {
            line += character;
        }
    }
    return line;
}

}  // namespace

FtpServer::FtpServer(std::string user, std::string password, std::string path, std::string content)
    : user_(std::move(user)),
      password_(std::move(password)),
      path_(std::move(path)),
      content_(std::move(content)),
      listener_(listenOnLoopback(0)),
      dataListener_(listenOnLoopback(0)),
      server_([this] { serve(); }) {}

FtpServer::~FtpServer() {
    shutdown(listener_, SHUT_RDWR);
    shutdown(dataListener_, SHUT_RDWR);
    shutdown(control_, SHUT_RDWR);
    server_.join();
    close(listener_);
    close(dataListener_);
    close(control_);
}

std::string FtpServer::url(const std::string& path) const {
    return "ftp://127.0.0.1:" + std::to_string(portOf(listener_)) + path;
}

void FtpServer::serve() {
    const int control = accept(listener_, nullptr, nullptr);
    control_ = control;
    say(control, "220 ready");
    for (bool goesOn = true; goesOn;) {
        const std::string line = hear(control);
        const size_t space = line.find(' ');
        const std::string argument = space == std::string::npos ? "" : line.substr(space + 1);
        goesOn = !line.empty() && answer(control, line.substr(0, space), argument);
    }
}

bool FtpServer::answer(int control, const std::string& verb, const std::string& argument) {
    if (verb == "USER") {
        givenUser_ = argument;
        say(control, "331 password?");
    } else if (verb == "PASS") {
        const bool known = givenUser_ == user_ && argument == password_;
        say(control, known ? "230 welcome" : "530 refused");
    } else if (verb == "PWD") {
        say(control, "257 \"/\"");
    } else if (verb == "EPSV") {
        say(control, "229 passive (|||" + std::to_string(portOf(dataListener_)) + "|)");
    } else if (verb == "TYPE") {
        say(control, "200 binary");
    } else if (verb == "RETR" && argument == path_) {
        sendFile(control);
    } else if (verb == "RETR") {
        say(control, "550 no such file");
    } else if (verb == "QUIT") {
        say(control, "221 bye");
        return false;
    } else {
        say(control, "502 not implemented");
    }
    return true;
}

void FtpServer::sendFile(int control) {
    const int data = accept(dataListener_, nullptr, nullptr);
    say(control, "150 here it comes");
    send(data, content_.data(), content_.size(), MSG_NOSIGNAL);
    close(data);
    say(control, "226 done");
}

}  // namespace intake
