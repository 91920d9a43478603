#include "tests/soak/Verdict.h"

#include <algorithm>

namespace intake {

namespace {

constexpr double SHORTEST_JUDGED = 4;  // minutes

constexpr Noise RESIDENT{4096, 10};  // KB: what is free lies differently each time
constexpr Noise ALLOCATED{1024, 2};  // KB: loads are under way
constexpr Noise THREADS{2, 0};       // waits for names and drivers have threads of their own
constexpr Noise DESCRIPTORS{20, 0};  // sources and connections are open

#ifdef SANITIZED
constexpr bool MEMORY_IS_OURS = false;  // the sanitizers keep what was freed
#else
constexpr bool MEMORY_IS_OURS = true;
#endif

}  // namespace

Verdict::Verdict(double seconds, std::FILE* out)
    : out_(out), minutes_(seconds / 60), settledAt_(std::min(5.0, minutes_ / 5)) {}

void Verdict::add(double atSecond, const Holdings& holdings, const Tally& tally) {
    const double minute = atSecond / 60;
    if (minute >= settledAt_) {
        resident_.add(minute, static_cast<double>(holdings.residentKb));
        allocated_.add(minute, static_cast<double>(holdings.allocatedKb));
        threads_.add(minute, static_cast<double>(holdings.threads));
        descriptors_.add(minute, static_cast<double>(holdings.descriptors));
    }
    if (minute >= nextLine_) {
        std::fprintf(out_,
                     "%4.0f min: %zu loaded, %zu failed, %zu wrong; %zu KB resident, %zu KB "
                     "allocated, %zu threads, "
                     "%zu descriptors\n",
                     minute, tally.loaded, tally.failed, tally.wrong, holdings.residentKb,
                     holdings.allocatedKb, holdings.threads, holdings.descriptors);
        nextLine_ += 1;
    }
}

void Verdict::report(const Tally& tally, size_t behind) {
    std::fprintf(out_,
                 "%zu loads: %zu loaded, %zu failed, %zu shown wrongly; %zu instances did not "
                 "recover\n",
                 tally.all(), tally.loaded, tally.failed, tally.wrong, behind);
    isGood_ = tally.loaded != 0 && tally.wrong == 0 && behind == 0;
    check("resident memory, KB", resident_, RESIDENT, MEMORY_IS_OURS);
    check("allocated memory, KB", allocated_, ALLOCATED, MEMORY_IS_OURS);
    check("threads", threads_, THREADS, true);
    check("descriptors", descriptors_, DESCRIPTORS, true);
}

void Verdict::check(const char* what, const Trend& trend, Noise noise, bool counts) {
    const bool judged = counts && minutes_ >= SHORTEST_JUDGED;
    const double bound = std::max(noise.altogether / (minutes_ - settledAt_), noise.perMinute);
    std::fprintf(out_, "Growth per minute, %s: %.2f", what, trend.slope());
    std::fprintf(out_, judged ? " (at most %.2f)\n" : " (not judged)\n", bound);
    isGood_ = isGood_ && (!judged || trend.slope() <= bound);
}

}  // namespace intake
