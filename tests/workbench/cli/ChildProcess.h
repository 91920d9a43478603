#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// What came of a process that ran to its end.
struct ChildResult {
    int status = -1;  // its exit status, or -1 when it did not exit by itself
    std::string out;
    std::string err;
};

/// Runs `program` in `folder` and waits for its end. Standard input is empty.
ChildResult runChild(const std::string& program, const std::vector<std::string>& arguments,
                     const std::filesystem::path& folder);
