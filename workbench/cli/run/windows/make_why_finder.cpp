#include "workbench/cli/UsageError.h"
#include "workbench/cli/run/WhyFinder.h"

namespace workbench {

std::unique_ptr<WhyFinder> makeWhyFinder(const lumo::Host&, const Options&) {
    throw UsageError("run --explain is there on Linux only, so far.");
}

}  // namespace workbench
