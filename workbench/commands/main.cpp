#include <cstdio>
#include <exception>
#include <filesystem>

#include "workbench/cli/StandardStreams.h"
#include "workbench/cli/process.h"
#include "workbench/commands/commands.h"

namespace workbench {

namespace {

// Beside the executable where it is installed, in the neighbouring folder where it is built.
std::filesystem::path defaultPlugin() {
    const std::filesystem::path folder = executablePath().parent_path();
    const std::string file = std::string("Intake") + lumo::PluginLibrary::extension();
    const std::filesystem::path beside = folder / file;
    return std::filesystem::exists(beside) ? beside : folder.parent_path() / "plugin" / file;
}

ExitStatus execute(const Options& options, const StandardStreams& streams) {
    if (options.command == Command::Help) {
        streams.writeResult(options.helpText);
        return ExitStatus::Loaded;
    }
    lumo::Host host;
    host.fontEncoding = options.fontEncoding;
    if (options.output == Output::Trace) host.trace.start();
    const lumo::Plugin plugin(options.plugin.empty() ? defaultPlugin()
                                                     : std::filesystem::path(options.plugin));
    switch (options.command) {
        case Command::Params:
            return runParams(host, options, streams);
        case Command::Run:
            return runScene(host, plugin, options, streams);
        case Command::Serve:
            return runServe(host, plugin, options, streams);
        case Command::Explain:
            return runExplain(host, plugin, options, streams);
        case Command::Explore:
            return runExplore(host, plugin, options, streams);
        default:
            return runLoad(host, plugin, options, streams);
    }
}

}  // namespace

}  // namespace workbench

int main(int argc, char** argv) {
    int status = 0;
    try {
        const workbench::StandardStreams streams;
        status = static_cast<int>(workbench::execute(workbench::readOptions(argc, argv), streams));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "intake-workbench: %s\n", error.what());
        status = static_cast<int>(workbench::ExitStatus::Usage);
    }
    workbench::leaveProcess(status);
}
