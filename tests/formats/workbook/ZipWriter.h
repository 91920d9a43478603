#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace intake {

/// Makes zip archives in memory, correct ones and, where a test asks for it, wrong ones.
class ZipWriter {
public:
    struct Options {
        bool stored = false;     // without compression
        bool zip64 = false;      // with the 64-bit extensions throughout
        bool encrypted = false;  // only says so
        uint16_t method = 8;     // what the entry claims
    };

    void add(const std::string& name, const std::string& content) { add(name, content, {}); }
    void add(const std::string& name, const std::string& content, const Options& options);

    /// The archive with all entries so far.
    std::string bytes() const;

private:
    struct Entry {
        std::string name;
        std::string packed;
        uint64_t size;
        uint32_t checksum;
        uint64_t offset;
        Options options;
    };

    std::string files_;
    std::vector<Entry> entries_;
};

}  // namespace intake
