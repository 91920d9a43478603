#include <cstdio>
#include <exception>
#include <filesystem>

#include "workbench/cli/StandardStreams.h"
#include "workbench/cli/UsageError.h"
#include "workbench/cli/process.h"
#include "workbench/commands/commands.h"

namespace workbench {

namespace {

/// Where the plugin is: beside the executable, where packages install it, where it is built.
/// Throws UsageError, naming the places, when it is nowhere.
std::filesystem::path defaultPlugin() {
    const std::filesystem::path folder = executablePath().parent_path();
    const std::string file = std::string("Intake") + lumo::PluginLibrary::extension();
    std::string places;
    for (const char* const place : {".", INTAKE_PLUGIN_FOLDER, "../plugin"}) {
        const std::filesystem::path candidate = (folder / place / file).lexically_normal();
        if (std::filesystem::exists(candidate)) return candidate;
        places += "\n  " + candidate.string();
    }
    throw UsageError("The plugin " + file + " was not found. Name it with --plugin, or put it at" +
                     " one of:" + places);
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
