#include "workbench/serve/WebServer.h"

#include <atomic>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ip/v6_only.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket.hpp>
#include <deque>
#include <set>
#include <thread>

namespace serve {

namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
namespace websocket = beast::websocket;
using boost::system::error_code;
using tcp = asio::ip::tcp;

constexpr std::size_t mostConnections = 64;
constexpr std::size_t mostWaiting = 256;  // texts for one WebSocket
constexpr uint32_t longestHeader = 16'000;
constexpr uint64_t longestBody = 1'000'000;
constexpr std::chrono::seconds patience{30};
constexpr std::chrono::milliseconds pauseAfterError{100};

using RawRequest = http::request<http::string_body>;
using RawResponse = http::response<http::string_body>;

WebRequest requestOf(RawRequest& raw) {
    WebRequest request;
    request.method = raw.method_string();
    const std::string target = raw.target();
    const auto question = target.find('?');
    request.path = target.substr(0, question);
    if (question != std::string::npos) request.query = target.substr(question + 1);
    for (const auto& field : raw)
        request.headers.emplace(std::string(field.name_string()), std::string(field.value()));
    request.body = std::move(raw.body());
    return request;
}

/// Nothing that a page of ours shows comes from elsewhere, or is shown elsewhere.
RawResponse rawOf(WebResponse response, unsigned version, bool isKept) {
    RawResponse raw{static_cast<http::status>(response.status), version};
    raw.set(http::field::content_type, response.contentType);
    raw.set(http::field::cache_control, "no-store");
    raw.set("Content-Security-Policy",
            "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self'; "
            "connect-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'");
    raw.set("X-Content-Type-Options", "nosniff");
    raw.set("Referrer-Policy", "no-referrer");
    raw.set("Cross-Origin-Resource-Policy", "same-origin");
    for (const auto& [name, value] : response.headers)
        raw.set(name, value);
    raw.keep_alive(isKept);
    raw.body() = std::move(response.body);
    raw.prepare_payload();
    return raw;
}

/// What the server knows of those that are connected. Used on its thread alone.
struct Connections {
    WebHandler* handler = nullptr;
    std::atomic<std::size_t> count = 0;  // the last that knows one may be on any thread
    std::set<class EventSocket*> sockets;
};

/// Counts a connection as long as it lives.
class Counted {
public:
    explicit Counted(Connections& all) : all_(all) { ++all_.count; }
    ~Counted() { --all_.count; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

private:
    Connections& all_;
};

/// A WebSocket, on which the server alone has something to say. Lives as long as it is read from or
/// written to.
class EventSocket : public std::enable_shared_from_this<EventSocket> {
public:
    EventSocket(beast::tcp_stream stream, std::shared_ptr<Counted> counted, Connections& all)
        : all_(all), counted_(std::move(counted)), socket_(std::move(stream)) {}
    ~EventSocket() { all_.sockets.erase(this); }
    EventSocket(const EventSocket&) = delete;
    EventSocket& operator=(const EventSocket&) = delete;

    void accept(const RawRequest& raw, WebRequest request) {
        beast::get_lowest_layer(socket_).expires_never();
        socket_.set_option(websocket::stream_base::timeout::suggested(beast::role_type::server));
        socket_.read_message_max(longestHeader);
        socket_.async_accept(
            raw, [self = shared_from_this(), request = std::move(request)](error_code error) {
                if (!error) self->begin(request);
            });
    }

    void send(std::string text) {
        if (waiting_.size() == mostWaiting) return beast::get_lowest_layer(socket_).close();
        waiting_.push_back(std::move(text));
        if (waiting_.size() == 1) write();
    }

private:
    /// What is published from here on is sent; what was before is in the greeting.
    void begin(const WebRequest& request) {
        all_.sockets.insert(this);
        for (std::string& text : all_.handler->greeting(request))
            send(std::move(text));
        read();
    }

    void read() {
        socket_.async_read(buffer_, [self = shared_from_this()](error_code error, std::size_t) {
            if (error) return;
            self->buffer_.consume(self->buffer_.size());
            self->read();
        });
    }

    void write() {
        socket_.text(true);
        socket_.async_write(asio::buffer(waiting_.front()),
                            [self = shared_from_this()](error_code error, std::size_t) {
                                if (error) return;
                                self->waiting_.pop_front();
                                if (!self->waiting_.empty()) self->write();
                            });
    }

    Connections& all_;
    std::shared_ptr<Counted> counted_;
    websocket::stream<beast::tcp_stream> socket_;
    beast::flat_buffer buffer_;
    std::deque<std::string> waiting_;
};

/// A connection that asks and is answered, again and again. Lives as long as one of these goes on.
class Conversation : public std::enable_shared_from_this<Conversation> {
public:
    Conversation(tcp::socket socket, Connections& all)
        : all_(all), counted_(std::make_shared<Counted>(all)), stream_(std::move(socket)) {
        error_code ignored;
        stream_.socket().non_blocking(true, ignored);  // nothing may hold up the server's thread
    }

    void read() {
        parser_.emplace();
        parser_->header_limit(longestHeader);
        parser_->body_limit(longestBody);
        stream_.expires_after(patience);
        http::async_read(
            stream_, buffer_, *parser_,
            [self = shared_from_this()](error_code error, std::size_t) { self->take(error); });
    }

private:
    void take(error_code error) {
        if (error == http::error::body_limit)
            return answer(refusal(413, "This is too long."), false);
        if (error == http::error::header_limit)
            return answer(refusal(431, "The header is too long."), false);
        if (error) return;
        stream_.expires_never();
        RawRequest raw = parser_->release();
        version_ = raw.version();
        isHead_ = raw.method() == http::verb::head;
        const bool isKept = raw.keep_alive();
        if (websocket::is_upgrade(raw)) return upgrade(raw);
        WebRequest request = requestOf(raw);
        left_ = std::stop_source();
        request.left = left_.get_token();
        isAnswered_ = false;
        watch();
        all_.handler->handle(request, [self = shared_from_this(), isKept](WebResponse response) {
            asio::post(self->stream_.get_executor(),
                       [self, isKept, response = std::move(response)]() mutable {
                           self->answer(std::move(response), isKept);
                       });
        });
    }

    /// Notices when nobody waits for the answer any more: the connection ends. A browser sends
    /// nothing meanwhile; of who does, that is not noticed.
    void watch() {
        stream_.socket().async_wait(
            tcp::socket::wait_read, [self = shared_from_this()](error_code error) {
                if (error || self->isAnswered_) return;
                char next = 0;
                self->stream_.socket().receive(asio::buffer(&next, 1), tcp::socket::message_peek,
                                               error);
                if (error == asio::error::would_block) return self->watch();  // it was woken early
                if (error) self->left_.request_stop();
            });
    }

    void upgrade(RawRequest& raw) {
        WebRequest request = requestOf(raw);
        if (auto refused = all_.handler->refusesSocket(request))
            return answer(std::move(*refused), false);
        std::make_shared<EventSocket>(std::move(stream_), counted_, all_)
            ->accept(raw, std::move(request));
    }

    void answer(WebResponse response, bool isKept) {
        response_.emplace(rawOf(std::move(response), version_, isKept));
        if (isHead_) response_->body().clear();
        isAnswered_ = true;
        error_code ignored;
        stream_.socket().cancel(ignored);  // the watch
        stream_.expires_after(patience);
        http::async_write(stream_, *response_,
                          [self = shared_from_this(), isKept](error_code error, std::size_t) {
                              if (error) return;
                              if (isKept) return self->read();
                              error_code unconnected;
                              self->stream_.socket().shutdown(tcp::socket::shutdown_send,
                                                              unconnected);
                          });
    }

    Connections& all_;
    std::shared_ptr<Counted> counted_;
    beast::tcp_stream stream_;
    beast::flat_buffer buffer_;
    unsigned version_ = 11;
    bool isHead_ = false;
    bool isAnswered_ = false;
    std::stop_source left_;
    std::optional<http::request_parser<http::string_body>> parser_;
    std::optional<RawResponse> response_;
};

/// Takes the connections to one address. Lives as long as the server.
class Listener {
public:
    Listener(asio::io_context& io, Connections& all) : all_(all), acceptor_(io), pause_(io) {}

    /// Throws std::system_error.
    void listen(const tcp::endpoint& endpoint) {
        acceptor_.open(endpoint.protocol());
        acceptor_.set_option(asio::socket_base::reuse_address(true));
        if (endpoint.address().is_v6()) acceptor_.set_option(asio::ip::v6_only(true));
        acceptor_.bind(endpoint);
        acceptor_.listen();
    }

    uint16_t port() const { return acceptor_.local_endpoint().port(); }

    void accept() {
        acceptor_.async_accept([this](error_code error, tcp::socket socket) {
            if (error) return acceptLater();
            const bool isRoom = all_.count < mostConnections;
            if (isRoom) std::make_shared<Conversation>(std::move(socket), all_)->read();
            accept();
        });
    }

private:
    /// Where the process has no file descriptor left, the next try would fail at once, again and
    /// again.
    void acceptLater() {
        pause_.expires_after(pauseAfterError);
        pause_.async_wait([this](error_code error) {
            if (!error) accept();
        });
    }

    Connections& all_;
    tcp::acceptor acceptor_;
    asio::steady_timer pause_;
};

class LoopbackServer final : public WebServer {
public:
    explicit LoopbackServer(uint16_t port) : first_(io_, all_) {
        first_.listen({asio::ip::address_v4::loopback(), port});
        port_ = first_.port();
        try {
            second_.emplace(io_, all_).listen({asio::ip::address_v6::loopback(), port_});
        } catch (const boost::system::system_error&) {
            second_.reset();  // a machine without IPv6
        }
    }

    ~LoopbackServer() override { end(); }
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;

    uint16_t port() const override { return port_; }

    void start(WebHandler& handler) override {
        all_.handler = &handler;
        first_.accept();
        if (second_) second_->accept();
        thread_ = std::thread([this] { io_.run(); });
    }

    void stop() override { end(); }

    void publish(std::string text) override {
        asio::post(io_, [this, text = std::move(text)] {
            const std::set<EventSocket*> sockets = all_.sockets;
            for (EventSocket* const each : sockets)
                each->send(text);
        });
    }

private:
    void end() {
        io_.stop();
        if (thread_.joinable()) thread_.join();
    }

    Connections all_;  // outlives what the context holds
    asio::io_context io_{1};
    Listener first_;
    std::optional<Listener> second_;
    uint16_t port_ = 0;
    std::thread thread_;
};

}  // namespace

std::unique_ptr<WebServer> listenOnLoopback(uint16_t port) {
    return std::make_unique<LoopbackServer>(port);
}

}  // namespace serve
