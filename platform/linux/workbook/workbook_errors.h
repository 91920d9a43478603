#pragma once

#include <stdexcept>
#include <string>

#include "platform/EndMark.h"

namespace intake {

/// Why a workbook cannot be read. What is thrown of a part goes on from 'its part "NAME" ' or 'the
/// sheet "NAME" ', which whoever reads the part puts before it; what is thrown of the whole goes on
/// from 'The workbook "PATH" cannot be read: '.
class WorkbookFault : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Throws the PlatformError of a workbook that cannot be read.
[[noreturn]] void throwUnreadable(const std::string& path, const std::string& reason);

/// Throws the PlatformError of a query that names a table which the workbook does not have.
[[noreturn]] void throwMissingTable(const std::string& description);

/// Throws the PlatformError of a query that cannot be run.
[[noreturn]] void throwQueryError(const std::string& description);

/// Throws a PlatformError once nobody waits for the load any more.
void throwIfEnded(const EndMark& endMark);

}  // namespace intake
