#include "platform/linux/workbook/workbook_errors.h"

#include "platform/linux/com_failures.h"

namespace intake {

namespace {

constexpr const char* SOURCE = "Intake workbook provider";

}  // namespace

void throwUnreadable(const std::string& path, const std::string& reason) {
    UNSPECIFIED.raise(SOURCE, "The workbook \"" + path + "\" cannot be read: " + reason);
}

void throwMissingTable(const std::string& description) {
    NO_TABLE.raise(SOURCE, description);
}

void throwQueryError(const std::string& description) {
    ERRORS_IN_COMMAND.raise(SOURCE, description);
}

void throwIfEnded(const EndMark& endMark) {
    if (endMark.isSet()) {
        ABORTED.raise(SOURCE, "The load was given up.");
    }
}

}  // namespace intake
