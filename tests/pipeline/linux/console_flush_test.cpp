// What a host sees that reads standard output through a pipe.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <string>

#include "pipeline/messages.h"
#include "tests/fakes/platform/FakeDiagnostics.h"

namespace intake {

namespace {

/// Standard output as a pipe, while it lives.
class OutputPipe {
public:
    OutputPipe() {
        std::fflush(stdout);
        if (pipe2(ends_.data(), O_NONBLOCK) == 0) {
            dup2(ends_[1], STDOUT_FILENO);
        }
    }
    ~OutputPipe() {
        std::fflush(stdout);
        dup2(former_, STDOUT_FILENO);
        for (const int file : {former_, ends_[0], ends_[1]}) {
            close(file);
        }
    }
    OutputPipe(const OutputPipe&) = delete;
    OutputPipe& operator=(const OutputPipe&) = delete;

    /// What has come through so far.
    std::string received() const {
        std::array<char, 100> text{};
        const ssize_t length = read(ends_[0], text.data(), text.size());
        return {text.data(), length > 0 ? static_cast<size_t>(length) : 0};
    }

private:
    const int former_ = dup(STDOUT_FILENO);
    std::array<int, 2> ends_{};
};

}  // namespace

TEST(ConsolePipe, AMessageIsThereAtOnce) {
    FakeDiagnostics diagnostics;
    const OutputPipe output;
    printToConsole(diagnostics, "Status code %d", 404);
    EXPECT_EQ(output.received(), "Status code 404");
}

}  // namespace intake
