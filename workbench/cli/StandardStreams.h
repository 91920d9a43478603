#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace workbench {

/// The process's standard streams. While it lives, standard output belongs to the results alone:
/// what anything else prints there, the plugin above all, appears on standard error.
/// One at a time, made first in main; main thread only.
class StandardStreams {
public:
    /// Throws std::system_error when the streams cannot be rearranged.
    StandardStreams();
    ~StandardStreams();
    StandardStreams(const StandardStreams&) = delete;
    StandardStreams& operator=(const StandardStreams&) = delete;

    /// Writes a result. Throws std::system_error when not all of it can be written.
    void writeResult(std::string_view text) const;

    /// The columns of the terminal that shows the results; none when it is no terminal.
    std::optional<std::size_t> resultColumns() const;
    bool errorIsTerminal() const;

private:
    int result_;
};

}  // namespace workbench
