#include "workbench/cli/UsageError.h"
#include "workbench/commands/commands.h"

namespace workbench {

ExitStatus runExplain(lumo::Host&, const lumo::Plugin&, const Options&, const StandardStreams&) {
    throw UsageError("explain is there on Linux only, so far.");
}

ExitStatus runExplore(lumo::Host&, const lumo::Plugin&, const Options&, const StandardStreams&) {
    throw UsageError("explore is there on Linux only, so far.");
}

ExitStatus runServe(lumo::Host&, const lumo::Plugin&, const Options&, const StandardStreams&) {
    throw UsageError("serve is there on Linux only, so far.");
}

}  // namespace workbench
