#include "tests/soak/Rewriter.h"

namespace intake {

namespace {

using std::chrono::steady_clock;

constexpr std::chrono::milliseconds BETWEEN_CHANGES{15};
constexpr std::chrono::seconds ABSENCE{2};
constexpr unsigned CHANGES_PER_REMOVAL = 11;  // prime to any likely number of sources

}  // namespace

void Rewriter::stop() {
    isStopped_ = true;
    if (thread_.joinable()) {
        thread_.join();
    }
}

void Rewriter::run() {
    while (!isStopped_) {
        putBack(steady_clock::now());
        change(*sources_[changes_ % sources_.size()]);
        std::this_thread::sleep_for(BETWEEN_CHANGES);
    }
    putBack(steady_clock::time_point::max());
}

void Rewriter::change(Source& source) {
    if (++changes_ % CHANGES_PER_REMOVAL == 0 && source.isRemovable()) {
        source.remove();
        removed_.push_back({&source, steady_clock::now() + ABSENCE});
    } else {
        source.renew();
    }
}

void Rewriter::putBack(steady_clock::time_point dueAt) {
    std::erase_if(removed_, [&](const Removed& each) {
        const bool isDue = each.until <= dueAt;
        if (isDue) {
            each.source->renew();
        }
        return isDue;
    });
}

}  // namespace intake
