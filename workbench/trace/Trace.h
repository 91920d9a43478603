#pragma once

// The record of every call that the plugin makes into the host, in order, one a line, as it would
// be written in source. Owned by the Host; host's thread only. Costs nothing until it is started.

#include <cstdint>
#include <string>
#include <string_view>

namespace tracing {

/// An argument that is written without quotes: the name of an object or of a function.
struct Bare {
    std::string_view name;
};

class Trace {
public:
    void start() { started_ = true; }

    template <typename... Arguments>
    void call(std::string_view function, const Arguments&... arguments) {
        if (!started_) return;
        begin(function);
        (append(arguments), ...);
        end();
    }

    /// Takes the last line back when it is a call of `function`.
    void takeBack(std::string_view function);

    /// All lines so far, each ended by a line feed.
    const std::string& text() const { return text_; }

private:
    void begin(std::string_view function);
    void end();
    void append(const char* text);
    void append(const std::string& text) { append(text.c_str()); }
    void append(const char* const* entries);
    void append(int32_t number);
    void append(float number);
    void append(Bare object);
    void separate();

    bool started_ = false;
    bool firstArgument_ = true;
    std::string text_;
};

/// The text between double quotes, with line ends, tabs, quotes and backslashes escaped.
std::string quoted(std::string_view text);

}  // namespace tracing
