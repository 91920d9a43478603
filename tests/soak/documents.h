#pragma once

// What the sources of the soak hold. Every value names its source, its version, its row and how
// many rows that version has, so that a script tells whether it comes from one whole version.

#include <optional>
#include <string>

namespace intake {

enum class Kind { JSON, XML, HTML, SQL, WORKSHEET };

/// The bytes of a version; of a database the statements that make it.
std::string documentOf(Kind kind, int source, int version);

/// The script into which a Data Field Array named `table` makes that version.
std::string scriptOf(Kind kind, const std::string& table, int source, int version);

/// The version of a script that is one whole version; nothing when it is none.
std::optional<int> versionOf(const std::string& script, Kind kind, const std::string& table,
                             int source);

}  // namespace intake
