#include "tests/http/support/WebServer.h"

#include "tests/http/support/loopback.h"

namespace intake {

namespace {

constexpr const char* CONFIGURATION = R"(
daemon off;
master_process off;
pid nginx.pid;
error_log stderr;
events { worker_connections 1024; }
http {
    access_log off;
    client_body_temp_path temporary;
    proxy_temp_path temporary;
    fastcgi_temp_path temporary;
    uwsgi_temp_path temporary;
    scgi_temp_path temporary;
    sendfile on;
    server {
        root files;
        default_type application/json;
)";

std::string onLoopback(uint16_t port) {
    return "127.0.0.1:" + std::to_string(port);
}

}  // namespace

WebServer::WebServer(const std::string& locations, const TlsFiles* tls) {
    std::filesystem::create_directory(directory_.path() / "files");
    withRetries([&] {
        port_ = freePort();
        securePort_ = tls != nullptr ? freePort() : 0;
        directory_.write("nginx.conf", configuration(locations, tls));
        start();
    });
}

std::string WebServer::configuration(const std::string& locations, const TlsFiles* tls) const {
    std::string text = CONFIGURATION;
    text += "listen " + onLoopback(port_) + ";\n";
    if (tls != nullptr) {
        text += "listen " + onLoopback(securePort_) + " ssl;\n";
        text += "ssl_certificate " + tls->certificate + ";\n";
        text += "ssl_certificate_key " + tls->key + ";\n";
    }
    return text + locations + "\n}}\n";
}

void WebServer::start() {
    const std::string folder = directory_.path().string() + "/";
    process_ = std::make_unique<ServerProcess>(
        "/usr/sbin/nginx",
        std::vector<std::string>{"-p", folder, "-c", "nginx.conf", "-e", "stderr"},
        securePort_ != 0 ? Ports{port_, securePort_} : Ports{port_},
        directory_.path() / "nginx.log");
}

void WebServer::write(const std::string& name, const std::string& content) const {
    directory_.write("files/" + name, content);
}

void WebServer::resize(const std::string& name, size_t bytes) const {
    std::filesystem::resize_file(directory_.path() / "files" / name, bytes);
}

std::string WebServer::url(const std::string& path) const {
    return "http://" + onLoopback(port_) + path;
}

std::string WebServer::secureUrl(const std::string& path) const {
    return "https://" + onLoopback(securePort_) + path;
}

}  // namespace intake
