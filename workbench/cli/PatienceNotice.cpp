#include "workbench/cli/PatienceNotice.h"

#include <cstdio>

namespace workbench {

namespace {

constexpr double patienceSeconds = 1;

}  // namespace

void PatienceNotice::show(double elapsedSeconds) {
    if (!due_ || elapsedSeconds < patienceSeconds) return;
    due_ = false;
    std::fprintf(stderr, "Still loading; waiting %g seconds at most.\n", timeoutSeconds_);
}

}  // namespace workbench
