#include "workbench/cli/run/EventLines.h"

namespace workbench {

std::unique_ptr<RunView> makeRunView(const StandardStreams& streams, const Options&) {
    return std::make_unique<EventLines>(streams.errorIsTerminal());
}

}  // namespace workbench
