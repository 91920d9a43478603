#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace intake {

/// What a server can do instead of answering.
enum class Fault {
    NONE,
    CLOSE,    // ends the connection without a word
    STATUS,   // answers with status 500 and a text that is no document
    SILENCE,  // says nothing for two seconds, then answers or ends the connection
    HALF,     // announces the whole document and sends half of it
};

/// A web server on loopback that fails in one of ten requests, and in all of them during an outage.
/// A fixed number of threads serves one connection and request each at a time, so that what the
/// process holds does not depend on how many come.
class FailingServer {
public:
    /// Returns the document of a source. Called on any thread.
    using Documents = std::function<std::string(int source)>;

    explicit FailingServer(Documents documents);
    ~FailingServer();
    FailingServer(const FailingServer&) = delete;
    FailingServer& operator=(const FailingServer&) = delete;

    std::string url() const;

    /// Lets every request fail so, from now on; NONE ends the outage.
    void setOutage(Fault fault) { outage_ = fault; }

    /// Lets no request fail any more.
    void mend() { isMended_ = true; }

private:
    void serveAll();
    void serve(int socket);
    Fault nextFault();
    void keepSilent() const;

    Documents documents_;
    const int listener_;
    std::atomic<unsigned> requests_ = 0;
    std::atomic<Fault> outage_ = Fault::NONE;
    std::atomic<bool> isMended_ = false;
    std::atomic<bool> isStopping_ = false;
    std::vector<std::thread> threads_;  // the last: they use all others
};

}  // namespace intake
