#pragma once

#include <stdexcept>
#include <string>

namespace intake {

/// Why SQLite would not take a step, in its words.
class SqliteError : public std::runtime_error {
public:
    SqliteError(int code, const std::string& message) : std::runtime_error(message), code_(code) {}

    /// One of SQLite's result codes, such as SQLITE_BUSY.
    int code() const { return code_; }

private:
    int code_;
};

}  // namespace intake
