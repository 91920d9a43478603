// Any text ends the parser, and what it reads can be written and read again.

#include <cstdlib>
#include <sstream>

#include "pipeline/command_text.h"
#include "tests/fuzz/FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace intake;
    RequestRecord record;
    std::istringstream in{std::string(FuzzInput(data, size).rest())};
    ParseCommand(record, in);

    std::string command;
    appendTextPair(command, "FILENAME", EscapeValue(record.filename));
    RequestRecord again;
    std::istringstream written(command);
    ParseCommand(again, written);
    if (again.filename != record.filename) {
        std::abort();
    }
    return 0;
}
