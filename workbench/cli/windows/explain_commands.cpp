#include "workbench/cli/UsageError.h"
#include "workbench/cli/commands.h"

namespace workbench {

ExitStatus runExplain(lumo::Host&, const lumo::Plugin&, const Options&, const StandardStreams&) {
    throw UsageError("explain is there on Linux only, so far.");
}

ExitStatus runExplore(lumo::Host&, const lumo::Plugin&, const Options&, const StandardStreams&) {
    throw UsageError("explore is there on Linux only, so far.");
}

}  // namespace workbench
