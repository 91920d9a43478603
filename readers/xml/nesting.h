#pragma once

#include <stdexcept>

namespace intake {

/// Counts the levels of a recursive walk over a document; a document that is nested too deep must
/// not overflow the stack.
class NestingLevel {
public:
    static constexpr int LIMIT = 1000;

    /// Throws std::length_error beyond the limit.
    explicit NestingLevel(int& depth) : depth_(depth) {
        if (depth_ == LIMIT) {
            throw std::length_error("The document is nested deeper than 1000 elements.\n");
        }
        ++depth_;
    }
    ~NestingLevel() { --depth_; }
    NestingLevel(const NestingLevel&) = delete;
    NestingLevel& operator=(const NestingLevel&) = delete;

private:
    int& depth_;
};

}  // namespace intake
