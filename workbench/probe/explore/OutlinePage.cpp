#include "workbench/probe/explore/OutlinePage.h"

#include <utility>

namespace probe {

void OutlinePage::add(OutlineEntry entry) {
    if (wantsNext()) outline_.entries.push_back(std::move(entry));
    ++met_;
}

Outline OutlinePage::take() {
    outline_.total = met_;
    return takeUncounted();
}

Outline OutlinePage::takeUncounted() {
    if (met_ > from_) outline_.leftOut = met_ - from_ - outline_.entries.size();
    return std::move(outline_);
}

}  // namespace probe
