#include "workbench/cli/Progress.h"

#include <cstdio>

namespace workbench {

void Progress::show(double elapsedSeconds) {
    if (!onTerminal_) return;
    char time[32];
    std::snprintf(time, sizeof time, "%.1f s", elapsedSeconds);
    const std::string line = what_ + " … " + time;
    if (line == shown_) return;
    std::fprintf(stderr, "\r\033[K%s", line.c_str());
    shown_ = line;
}

void Progress::clear() {
    if (!shown_.empty()) std::fputs("\r\033[K", stderr);
    shown_.clear();
}

}  // namespace workbench
