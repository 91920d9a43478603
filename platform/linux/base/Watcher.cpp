#include "platform/linux/base/Watcher.h"

#include <utility>

namespace intake {

Watcher::Watcher(Time first, Look look)
    : look_(std::move(look)), thread_([this, first] { watch(first); }) {}

Watcher::~Watcher() {
    {
        const std::lock_guard lock(mutex_);
        done_ = true;
    }
    finished_.notify_one();
    thread_.join();
}

void Watcher::watch(Time wait) {
    std::unique_lock lock(mutex_);
    while (!finished_.wait_for(lock, wait, [this] { return done_; })) {
        const std::optional<Time> next = look_();
        if (!next) {
            return;
        }
        wait = *next;
    }
}

}  // namespace intake
