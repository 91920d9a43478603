#pragma once

#include "tests/tree/SourceTree.h"

namespace intake {

/// Includes against the one direction in which they run.
Violations forbiddenIncludes(const SourceTree& tree);

/// Quoted includes that name no file of the tree: ours are named from its root.
Violations unknownIncludes(const SourceTree& tree);

/// Source files that include anything before the header of the same name, which would hide what
/// that header needs.
Violations ownHeadersNotFirst(const SourceTree& tree);

/// Includes that lead back to the file that they stand in.
Violations includeCycles(const SourceTree& tree);

/// The same for folders, the tests' aside: what a folder's files include, the folder includes.
Violations folderCycles(const SourceTree& tree);

/// System headers that formats may not include: they know no system, and few libraries.
Violations foreignHeadersOfFormats(const SourceTree& tree);

}  // namespace intake
