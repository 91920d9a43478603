#include "platform/linux/workbook/workbook_errors.h"

#include "platform/PlatformError.h"

namespace intake {

namespace {

constexpr const char* SOURCE = "Intake workbook provider";

}  // namespace

void throwUnreadable(const std::string& path, const std::string& reason) {
    throw PlatformError(0x80004005, "Unspecified error", SOURCE,
                        "The workbook \"" + path + "\" cannot be read: " + reason);
}

void throwMissingTable(const std::string& description) {
    throw PlatformError(0x80040E37, "The table does not exist.", SOURCE, description);
}

void throwQueryError(const std::string& description) {
    throw PlatformError(0x80040E14, "One or more errors occurred during processing of command.",
                        SOURCE, description);
}

void throwIfEnded(const EndMark& endMark) {
    if (endMark.isSet()) {
        throw PlatformError(0x80004004, "Operation aborted", SOURCE, "The load was given up.");
    }
}

}  // namespace intake
