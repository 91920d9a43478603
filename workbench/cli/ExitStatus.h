#pragma once

namespace workbench {

/// How the process ends; scripts depend on the numbers.
enum class ExitStatus {
    Loaded = 0,
    LoadFailed = 1,
    Usage = 2,
    NoAnswer = 3,
    NotExecuted = 4,
    UnexpectedRecords = 5
};

}  // namespace workbench
