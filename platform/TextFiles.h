#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace intake {

/// A text file that is being written, closed with its object. One thread. What cannot be written is
/// lost.
class TextFile {
public:
    virtual ~TextFile() = default;

    /// Lines end in "\n"; in the file they end as the system's do. It is in the file at once,
    /// behind whatever another object has written to it.
    virtual void append(std::string_view text) = 0;
};

/// Makes text files that are for their owner's eyes. Process-wide; any thread.
class TextFiles {
public:
    virtual ~TextFiles() = default;

    /// Makes a file, or empties one of ours. Null when that fails; where the system can tell, also
    /// when there is a link, something else than a file, or somebody else's.
    virtual std::unique_ptr<TextFile> create(const std::string& path) = 0;
};

}  // namespace intake
