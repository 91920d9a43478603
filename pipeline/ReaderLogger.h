#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Clock.h"
#include "platform/TextFiles.h"

namespace intake {

enum LogLevel : int32_t { LOG_FATAL, LOG_ERROR, LOG_WARNING, LOG_INFO, LOG_DEBUG };

/// The levelled log of one worker and its readers, all on the worker's thread. The file is made in
/// the current directory by the first message that passes the level, is named after that minute, is
/// for its owner's eyes, and gives way to a new one after 5001 messages. A file that cannot be
/// written loses its messages in silence.
class ReaderLogger {
public:
    /// Both are borrowed and outlive this object.
    ReaderLogger(Clock& clock, TextFiles& files) : clock_(clock), files_(files) {}
    virtual ~ReaderLogger() = default;

    /// Messages above this level are left out.
    void setLevel(int32_t level) { level_ = level; }

    /// Writes one message, which may come in parts. It brings its own line end.
    void Write(LogLevel level, std::string_view text) {
        Write(level, std::initializer_list<std::string_view>{text});
    }
    void Write(LogLevel level, std::initializer_list<std::string_view> parts);

private:
    void open(const LocalTime& now);
    void append(std::string line, std::initializer_list<std::string_view> parts);

    Clock& clock_;
    TextFiles& files_;
    std::unique_ptr<TextFile> file_;
    bool opened_ = false;  // or tried to: a failed open is tried again only with the next file
    int32_t level_ = LOG_DEBUG;
    int32_t lines_ = 0;
};

}  // namespace intake
