#include "workbench/cli/run/EventLines.h"
#include "workbench/cli/run/linux/RunDisplay.h"

namespace workbench {

std::unique_ptr<RunView> makeRunView(const StandardStreams& streams, const Options& options) {
    const bool isShared = options.report == "-" && streams.resultColumns();
    if (streams.errorIsTerminal() && !isShared) return std::make_unique<RunDisplay>();
    return std::make_unique<EventLines>(false);
}

}  // namespace workbench
