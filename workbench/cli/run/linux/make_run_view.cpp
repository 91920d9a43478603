#include "workbench/cli/run/EventLines.h"
#include "workbench/cli/run/linux/RunDisplay.h"

namespace workbench {

std::unique_ptr<RunView> makeRunView(const StandardStreams& streams) {
    if (streams.errorIsTerminal()) return std::make_unique<RunDisplay>();
    return std::make_unique<EventLines>(false);
}

}  // namespace workbench
