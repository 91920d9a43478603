#include "workbench/cli/run/PendingLoads.h"

namespace workbench {

double PendingLoads::answered(double now) {
    if (begun_.empty()) return 0;
    const double seconds = now - begun_.front();
    begun_.pop_front();
    if (late_ > 0) --late_;
    return seconds;
}

std::size_t PendingLoads::becameLate(double now, double limit) {
    const std::size_t before = late_;
    while (late_ < begun_.size() && now - begun_[late_] > limit)
        ++late_;
    return late_ - before;
}

std::optional<double> PendingLoads::age(double now) const {
    if (begun_.empty()) return std::nullopt;
    return now - begun_.front();
}

void PendingLoads::clear() {
    begun_.clear();
    late_ = 0;
}

}  // namespace workbench
