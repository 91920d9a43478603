#pragma once

#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace workbench {

/// What came of a child process.
struct ChildAnswer {
    int status = -1;  // its exit status; -1 when it was ended, or did not exit by itself
    std::string out;  // what it wrote to standard output
    std::string err;  // and to standard error
};

/// Runs a program with `input` as its standard input and waits for its end; ends it when that takes
/// longer than `timeoutSeconds`, when it writes more than 256 MB, or soon when a stop is requested.
/// It has the variables of this process, but for those of the same names in `environment`, each
/// NAME=VALUE, and nothing of what is open here. Throws std::system_error when it cannot be
/// started.
ChildAnswer askChild(const std::vector<std::string>& command, std::string_view input,
                     double timeoutSeconds, const std::stop_token& stop = {},
                     const std::vector<std::string>& environment = {});

}  // namespace workbench
