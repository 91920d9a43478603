#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace workbench {

/// The lines of a file that may be very long, or hardly have any. One thread.
class LineReader {
public:
    /// Reads no more than so many bytes, and keeps no more than one more than `longest` of a line.
    LineReader(const std::filesystem::path& file, std::uintmax_t most, std::size_t longest);

    /// The next line. False at the end.
    bool next(std::string& line);

    /// Where the next line begins, in bytes; what comes next begins there.
    std::uintmax_t place() const { return place_; }
    void seek(std::uintmax_t place);

    /// Whether the file goes on behind what may be read of it.
    bool isCut() { return left_ == 0 && stream_.peek() != std::char_traits<char>::eof(); }

private:
    bool fill();
    void append(std::string_view part, std::string& line) const;

    std::ifstream stream_;
    const std::uintmax_t most_;
    std::uintmax_t left_;  // that may still be read
    std::uintmax_t place_ = 0;
    const std::size_t longest_;
    std::vector<char> block_;
    std::string_view rest_;  // of the block
};

}  // namespace workbench
