#pragma once

#include <atomic>
#include <string>
#include <thread>

namespace intake {

/// A server on loopback that speaks as much FTP as one download takes: one control connection, one
/// file, which everybody may have who logs in as `user` with `password`. Stops with its object.
class FtpServer {
public:
    FtpServer(std::string user, std::string password, std::string path, std::string content);
    ~FtpServer();
    FtpServer(const FtpServer&) = delete;
    FtpServer& operator=(const FtpServer&) = delete;

    std::string url(const std::string& path) const;

private:
    void serve();
    /// Answers one command. False when it was the last.
    bool answer(int control, const std::string& verb, const std::string& argument);
    void sendFile(int control);

    const std::string user_, password_, path_, content_;
    std::string givenUser_;
    int listener_;
    int dataListener_;
    std::atomic<int> control_ = -1;
    std::thread server_;
};

}  // namespace intake
