#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace intake {

/// Stands before a server on loopback and breaks each connection off, or says nothing more, once so
/// many bytes have come from the server. Stops with its object.
class CuttingProxy {
public:
    enum class Then { CLOSE, STALL };

    static constexpr uint64_t NEVER = UINT64_MAX;

    explicit CuttingProxy(uint16_t server);
    ~CuttingProxy();
    CuttingProxy(const CuttingProxy&) = delete;
    CuttingProxy& operator=(const CuttingProxy&) = delete;

    uint16_t port() const;

    /// For the connections to come.
    void cutBehind(uint64_t bytes, Then then = Then::CLOSE);

    /// Of the latest connection, from the server.
    uint64_t bytesPassed() const { return passed_; }

private:
    void acceptAll();
    void serve(int client);
    void passOn(int from, int to);
    void passAnswers(int server, int client);

    const uint16_t server_;
    const int listener_;
    std::atomic<uint64_t> limit_ = NEVER;
    std::atomic<Then> then_ = Then::CLOSE;
    std::atomic<uint64_t> passed_ = 0;
    std::atomic<bool> isEnding_ = false;

    std::mutex mutex_;  // of what follows
    std::vector<int> sockets_;
    std::vector<std::thread> threads_;
    std::thread acceptor_;
};

}  // namespace intake
