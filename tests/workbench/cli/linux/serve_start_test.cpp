// How `serve` begins: without a scene, and by opening the browser.

#include <arpa/inet.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>

#include "tests/http/support/EnvironmentVariable.h"
#include "tests/http/support/ServerProcess.h"
#include "tests/http/support/loopback.h"
#include "tests/support/eventually.h"
#include "tests/workbench/cli/Workbench.h"

namespace {

namespace fs = std::filesystem;

/// The answer of the server at HOST:PORT. The head has no end yet.
std::string ask(const std::string& host, const std::string& head, const std::string& body = "") {
    const int connection = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(std::stoi(host.substr(host.find(':') + 1))));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(connect(connection, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
    intake::sendBytes(connection,
                      head + "\r\nHost: " + host + "\r\nConnection: close\r\n\r\n" + body);
    std::string answer;
    std::array<char, 4096> bytes{};
    for (int count = 1; count > 0; answer.append(bytes.data(), static_cast<std::size_t>(count)))
        count = std::max(0, intake::receiveBytes(connection, bytes.data(), bytes.size()));
    intake::closeSocket(connection);
    return answer;
}

class ServeStart : public Workbench {
protected:
    /// Serves a new instance; the programs are those of `folder`/bin alone.
    std::unique_ptr<intake::ServerProcess> open() const {
        const intake::EnvironmentVariable path("PATH", (folder / "bin").string());
        const intake::EnvironmentVariable temporary("TMPDIR", folder.string());
        const intake::EnvironmentVariable record("RECORD", (folder / "record").string());
        const uint16_t port = intake::freePort();
        return std::make_unique<intake::ServerProcess>(
            WORKBENCH, std::vector<std::string>{"serve", "--open", "--port", std::to_string(port)},
            intake::Ports{port}, folder / "output", SIGTERM);
    }

    /// What stands in for a browser.
    void writeBrowser(const std::string& script) const {
        fs::create_directory(folder / "bin");
        write("bin/xdg-open", "#!/bin/sh\n" + script);
        fs::permissions(folder / "bin/xdg-open", fs::perms::owner_all);
    }

    std::string contentOf(const fs::path& file) const {
        std::ifstream stream(folder / file);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    /// The first line that was printed, once it is there.
    std::string address() const {
        EXPECT_TRUE(intake::eventually(
            [this] { return contentOf("output").find('\n') != std::string::npos; }));
        return contentOf("output").substr(0, contentOf("output").find('\n'));
    }

    bool isTold(const std::string& text) const {
        return intake::eventually(
            [&] { return contentOf("output").find(text) != std::string::npos; });
    }
};

}  // namespace

TEST_F(ServeStart, OpensTheAddressByAFileThatOthersCannotRead) {
    writeBrowser("echo \"$# $1\" >\"$RECORD\"\n");
    const auto server = intake::withRetries([this] { return open(); });
    ASSERT_TRUE(intake::eventually([this] { return contentOf("record").ends_with('\n'); }));
    const std::string record = contentOf("record");
    ASSERT_TRUE(record.starts_with("1 " + folder.string() + "/intake-workbench-")) << record;
    const fs::path file = record.substr(2, record.size() - 3);
    EXPECT_EQ(fs::status(file.parent_path()).permissions(), fs::perms::owner_all);
    EXPECT_NE(contentOf(file).find("content=\"0; url=" + address() + "\""), std::string::npos)
        << contentOf(file);
}

TEST_F(ServeStart, LeavesNoSocketToTheBrowser) {
    writeBrowser(
        "/usr/bin/readlink /proc/$$/fd/* >\"$RECORD.part\"; /bin/mv \"$RECORD.part\" "
        "\"$RECORD\"\n");
    const auto server = intake::withRetries([this] { return open(); });
    ASSERT_TRUE(intake::eventually([this] { return fs::exists(folder / "record"); }));
    EXPECT_EQ(contentOf("record").find("socket"), std::string::npos) << contentOf("record");
}

TEST_F(ServeStart, HasOneNewInstanceWithoutAScene) {
    writeBrowser("exit 0\n");
    const auto server = intake::withRetries([this] { return open(); });
    const std::string host = address().substr(7, address().find("/#t=") - 7);
    const std::string token = "{\"token\": \"" + address().substr(address().size() - 64) + "\"}";
    const std::string login = ask(
        host,
        "POST /api/v1/session HTTP/1.1\r\nOrigin: http://" + host +
            "\r\nContent-Type: application/json\r\nContent-Length: " + std::to_string(token.size()),
        token);
    const auto cookie = login.find("intake-");
    ASSERT_NE(cookie, std::string::npos) << login;
    const std::string states =
        ask(host, "GET /api/v1/instances HTTP/1.1\r\nCookie: " +
                      login.substr(cookie, login.find(';', cookie) - cookie));
    EXPECT_NE(states.find("\"name\": \"workbench\""), std::string::npos) << states;
    EXPECT_EQ(states.rfind("\"name\""), states.find("\"name\"")) << states;
}

TEST_F(ServeStart, GoesOnInAFolderThatIsGone) {
    writeBrowser("exit 0\n");
    const fs::path gone = folder / "gone";
    fs::create_directory(gone);
    fs::current_path(gone);
    fs::remove(gone);
    const auto server = intake::withRetries([this] { return open(); });
    EXPECT_TRUE(address().starts_with("http://127.0.0.1:")) << address();
    fs::current_path(folder);
}

TEST_F(ServeStart, LeavesNoFileBehind) {
    writeBrowser("exit 0\n");
    intake::withRetries([this] { return open(); }).reset();
    for (const auto& entry : fs::directory_iterator(folder))
        EXPECT_FALSE(entry.path().filename().string().starts_with("intake-")) << entry.path();
}

TEST_F(ServeStart, GoesOnWithoutABrowserAndSaysSo) {
    fs::create_directory(folder / "bin");
    const auto server = intake::withRetries([this] { return open(); });
    EXPECT_TRUE(isTold(
        "The page could not be opened in a browser: xdg-open: No such file or directory.\n"));
    EXPECT_NE(contentOf("output").find("http://127.0.0.1:"), std::string::npos);
}

TEST_F(ServeStart, SaysThatNoBrowserWasFound) {
    writeBrowser("echo no display >&2; exit 3\n");
    const auto server = intake::withRetries([this] { return open(); });
    EXPECT_TRUE(isTold("xdg-open found no browser. Open the address yourself.\n"));
    EXPECT_EQ(contentOf("output").find("no display"), std::string::npos);
}
