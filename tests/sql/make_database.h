#pragma once

#include <filesystem>
#include <string>

namespace intake {

/// Makes an SQLite file by SQL statements; fails the test when they do.
void makeDatabase(const std::filesystem::path& file, const std::string& statements);

}  // namespace intake
