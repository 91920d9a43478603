#include "workbench/probe/database/database_file.h"

#include <filesystem>

#include "workbench/probe/database/Database.h"
#include "workbench/probe/words.h"

namespace probe {

void checkDatabaseFile(const std::string& path) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    const std::string place = std::filesystem::absolute(path, error).string();
    if (status.type() == std::filesystem::file_type::not_found)
        throw DatabaseFailure(DatabaseFault::Missing,
                              "The database is not there; it was looked for as " + place + ".",
                              "Correct the file in \"Connection String\" (connStr). A path that "
                              "does not begin at the root starts at the folder in which the host "
                              "was started.");
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
        throw DatabaseFailure(DatabaseFault::Missing, probe::quoted(path) + " is no file.",
                              "Set \"Connection String\" (connStr) to the file of a database.");
}

}  // namespace probe
