#pragma once

#include <algorithm>
#include <cstdio>
#include <vector>

namespace bench {

/// Values of which the largest are of interest.
class Percentiles {
public:
    void add(double value) { values_.push_back(value); }

    /// The smallest value that so many per cent of all do not exceed.
    double at(double percent) {
        if (values_.empty()) return 0;
        std::sort(values_.begin(), values_.end());
        const auto below = static_cast<size_t>(percent / 100 * static_cast<double>(values_.size()));
        return values_[std::min(below, values_.size() - 1)];
    }

    void print(const char* name) {
        std::printf("%-30s %10.3f %10.3f %10.3f %10.3f\n", name, at(50), at(99), at(99.9), at(100));
    }

private:
    std::vector<double> values_;
};

}  // namespace bench
