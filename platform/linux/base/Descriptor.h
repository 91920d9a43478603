#pragma once

#include <unistd.h>

#include <utility>

namespace intake {

/// A file descriptor, closed with its object. Negative when there is none.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) {
            ::close(number_);
        }
    }
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&&) = delete;

    int get() const { return number_; }
    bool isOpen() const { return number_ >= 0; }

    /// The number, which the caller closes.
    int release() { return std::exchange(number_, -1); }

private:
    int number_;
};

}  // namespace intake
