#pragma once

#include <string>

namespace probe {

/// Throws DatabaseFailure when there is no file of that name. Nothing is opened.
void checkDatabaseFile(const std::string& path);

}  // namespace probe
