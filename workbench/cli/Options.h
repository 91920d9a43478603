#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "workbench/cli/RecordRange.h"

namespace workbench {

enum class Command { Help, Load, Params, Run, Explain, Explore, Serve };
enum class Output { Table, Script, Json, Trace };

/// What the command line asks for.
struct Options {
    Command command = Command::Help;
    std::string helpText;  // what to print for Help; the version too is help

    std::string plugin;  // empty: the one that was built with this executable
    Output output = Output::Table;

    std::string source;  // what `load` names without an option; empty for none
    std::string scene;   // empty for none
    std::string instance;
    std::vector<std::string> settings;  // NAME=VALUE
    std::vector<std::string> definitions;
    double timeoutSeconds = 60;
    bool mayWrite = false;  // a query that is explained
    int32_t fontEncoding = 1;

    std::optional<RecordRange> expectedRecords;
    std::string report;  // the file to which loads are reported; empty for none

    std::string at;          // the place that is explored
    std::string find;        // what is looked for
    std::size_t limit = 40;  // of what is listed
    std::size_t from = 0;    // so much of it is passed over
    bool countsRows = false;

    bool watchesScene = false;
    bool explains = false;
    uint16_t port = 0;       // that is served on; 0 for any
    bool opensPage = false;  // in the browser

    std::optional<int64_t> frames;
    std::optional<double> seconds;
};

/// Reads the command line. Throws UsageError.
Options readOptions(int argc, const char* const* argv);

/// "1.2.3".
const char* programVersion();

}  // namespace workbench
