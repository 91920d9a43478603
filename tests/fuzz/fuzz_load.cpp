// Whole loads, as the worker does them: a command text and its source give a script or an error.
// The first line chooses the mode and what is counted, the next ones are the words of the command;
// the rest is the source.

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "pipeline/WorkerState.h"
#include "readers/Readers.h"
#include "tests/fuzz/FuzzInput.h"

namespace {

using namespace intake;

/// How a command begins: before its source, and behind. A query on a database may write to any
/// file, one on a workbook to none.
struct Beginning {
    const char* before;
    const char* behind;
};
constexpr std::array<Beginning, 5> BEGINNINGS{{
    {"MODE |JSON| FILENAME |", "| "},
    {"MODE |XML| FILENAME |", "| "},
    {"MODE |HTML| FILENAME |", "| "},
    {"MODE |SQL| CONNSTR |Provider=Microsoft.ACE.OLEDB.12.0;"
     "Extended Properties=\"Excel 12.0 Xml;HDR=YES\";Data Source=",
     "| "},
    {"MODE |SQL| CONNSTR |Provider=SQLite;Data Source=", "| QUERY |SELECT * FROM t| "},
}};

constexpr std::array<const char*, 4> NUMBERS{"TGT_MODE", "FROM_ROW", "SRC_INFORMAT",
                                             "TGT_OUTFORMAT"};
constexpr std::array<const char*, 7> WORDS{
    "XPATH", "KEY", "TABLE", "NAMESPACES", "SHEET", "FIELDS_DELIMITER", "VARSPREFIX"};

/// A file of this process, which holds the source of a load.
const std::string& source() {
    static const std::string path = [] {
        std::string folder = (std::filesystem::temp_directory_path() / "fuzz-XXXXXX").string();
        return std::string(mkdtemp(folder.data())) + "/source";
    }();
    return path;
}

/// What ends a word would begin another, such as the URL of a server.
std::string word(std::string text) {
    std::erase(text, '|');
    return text;
}

std::string commandOf(FuzzInput& input) {
    const std::string choice = input.line();
    const auto number = [&](size_t place) {
        return place < choice.size() ? static_cast<unsigned char>(choice[place]) : 0U;
    };
    const Beginning& beginning = BEGINNINGS[number(0) % BEGINNINGS.size()];
    std::string command = beginning.before + source() + beginning.behind;
    for (size_t i = 0; i < NUMBERS.size(); ++i) {
        command += std::string(NUMBERS[i]) + " " + std::to_string(number(i + 1) % 6) + " ";
    }
    for (const char* const key : WORDS) {
        command += std::string(key) + " |" + word(input.line()) + "| ";
    }
    if (number(0) % BEGINNINGS.size() == 3) {
        command += "QUERY |" + word(input.line()) + "| ";
    }
    return command + "NUM_ROWS 50 LOG_LEVEL -1 ";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzInput input(data, size);
    const std::string command = commandOf(input);
    std::ofstream(source(), std::ios::binary) << input.rest();
    WorkerState worker(systemPlatform(), makerOfReaders(systemPlatform()));
    bool success = false;
    std::string script, error;
    worker.ProcessCommand(command, success, script, error);
    if (!success && !script.empty()) {
        std::abort();
    }
    return 0;
}
