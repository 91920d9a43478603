#pragma once

#include <termios.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace workbench {

/// The terminal behind standard error. While it lives, it belongs to the display alone: what
/// anything else prints to standard output or standard error, the plugin above all, is set aside;
/// the cursor is hidden, and what is typed does not appear. Main thread.
class Terminal {
public:
    /// Throws std::system_error.
    Terminal();
    ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    /// Zeros where the terminal does not tell.
    struct Size {
        std::size_t columns = 0;
        std::size_t rows = 0;
    };
    Size size() const;

    /// Writes the text in one piece.
    void write(std::string_view text) const;

    /// When the user has suspended the process by Ctrl-Z: gives the terminal back, waits until the
    /// process is to go on, and returns true.
    bool suspendWhereAsked();

    /// The whole lines that were printed since this was called last.
    std::string takePrinted();

private:
    void seize();
    void giveBack();
    void hideTyping();

    int terminal_;       // where standard error led
    int output_;         // where standard output led
    int printed_;        // a file in memory, where they lead now
    off_t taken_ = 0;    // how far that was read
    std::string begun_;  // a line whose end has not been printed yet
    std::optional<termios> typing_;
};

}  // namespace workbench
