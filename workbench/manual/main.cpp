// intake-manual man|words PLUGIN: prints the man page, or what shells complete.

#include <cstdio>
#include <exception>
#include <map>

#include "workbench/cli/command_line.h"
#include "workbench/lumo/Host.h"
#include "workbench/lumo/Plugin.h"
#include "workbench/manual/manual.h"

int main(int argc, char** argv) {
    using Writer = std::string (*)(const CLI::App&, const lumo::ParameterTable&);
    const std::map<std::string, Writer> writers{{"man", workbench::manPage},
                                                {"words", workbench::completionWords}};
    try {
        const auto writer = argc == 3 ? writers.find(argv[1]) : writers.end();
        if (writer == writers.end()) throw std::runtime_error("Give man or words, and a plugin.");
        lumo::Host host;
        const lumo::Plugin plugin(argv[2]);
        workbench::Options options;
        const auto app = workbench::commandLine(options);
        std::fputs(writer->second(*app, host.parameters).c_str(), stdout);
        return std::fflush(stdout) == 0 ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "intake-manual: %s\n", error.what());
        return 1;
    }
}
