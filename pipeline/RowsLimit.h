#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace intake {

/// The rows of a load became larger than they may.
class RowsTooLarge : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// How large a script the rows of a load may become. Names, keys and texts may be repeated in every
/// row, so that a small source could become any amount. Asked after each row, so that what is
/// written is larger by one at most.
class RowsLimit {
public:
    /// As much as a source of XML may have, and still less than 31 bits count.
    static constexpr size_t MOST_MEGABYTES = 2000;

    /// `rows` is what the error says of what has become too large; not copied.
    explicit RowsLimit(const char* rows, size_t megabytes = MOST_MEGABYTES)
        : rows_(rows), megabytes_(megabytes) {}

    size_t bytes() const { return megabytes_ * 1000 * 1000; }

    bool isExceededBy(const std::string& script) const { return script.size() > bytes(); }

    /// The error, as it is shown.
    std::string error() const {
        return std::string(rows_) + " become larger than " + std::to_string(megabytes_) + " MB";
    }

    /// Throws RowsTooLarge when the script is larger than allowed.
    void check(const std::string& script) const {
        if (isExceededBy(script)) {
            throw RowsTooLarge(error());
        }
    }

private:
    const char* rows_;
    size_t megabytes_;
};

}  // namespace intake
