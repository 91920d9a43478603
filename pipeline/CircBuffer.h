#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>

#include "platform/Mutex.h"

namespace intake {

/// A ring of ten entries between two threads. All but `count` is called with the mutex held.
///
/// A full ring is never refused: the eleventh entry takes the slot of the oldest and the count goes
/// on, so that the newest requests survive when the reader falls behind.
template <class Entry>
class CircBuffer {
public:
    static constexpr int32_t CAPACITY = 10;

    explicit CircBuffer(std::unique_ptr<Mutex> mutex) : mutex_(std::move(mutex)) {}
    virtual ~CircBuffer() = default;
    CircBuffer(const CircBuffer&) = delete;
    CircBuffer& operator=(const CircBuffer&) = delete;

    Mutex& mutex() { return *mutex_; }

    /// Entries held; may be read without the mutex.
    int32_t count() const { return count_; }

    /// The slot for a new entry; it still holds what it held before.
    Entry& reserve() {
        Entry& slot = slots_[static_cast<size_t>((head_ + count_) % CAPACITY)];
        ++count_;
        return slot;
    }

    /// Takes the oldest entry. It stays readable in its slot until the mutex is released.
    Entry& take() {
        Entry& slot = slots_[static_cast<size_t>(head_)];
        --count_;
        head_ = (head_ + 1) % CAPACITY;
        return slot;
    }

private:
    std::array<Entry, CAPACITY> slots_;
    std::atomic<int32_t> count_ = 0;
    int32_t head_ = 0;
    std::unique_ptr<Mutex> mutex_;
};

}  // namespace intake
