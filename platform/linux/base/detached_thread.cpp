#include "platform/linux/base/detached_thread.h"

#include <thread>

namespace intake {

void Completion::set() {
    const std::lock_guard lock(mutex_);
    done_ = true;
    condition_.notify_all();
}

bool Completion::waitFor(std::chrono::milliseconds limit) {
    std::unique_lock lock(mutex_);
    return condition_.wait_for(lock, limit, [this] { return done_; });
}

DetachedThread startDetached(std::function<void()> body) {
    auto end = std::make_shared<Completion>();
    std::thread thread([body = std::move(body), end]() mutable {
        body();
        body = nullptr;
        end->set();
    });
    const uint64_t identifier = std::hash<std::thread::id>{}(thread.get_id());
    thread.detach();
    return {identifier, std::move(end)};
}

}  // namespace intake
