#include "tests/formats/workbook/ZipWriter.h"

#include <zlib.h>

#include <stdexcept>

namespace intake {

namespace {

void append(std::string& out, uint64_t number, int bytes) {
    for (; bytes > 0; --bytes, number >>= 8) {
        out += static_cast<char>(number & 0xFF);
    }
}

std::string deflated(const std::string& content) {
    z_stream stream{};
    if (deflateInit2(&stream, 6, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK) {
        throw std::runtime_error("deflateInit2");
    }
    std::string packed(deflateBound(&stream, content.size()), 0);
    std::string source = content;
    stream.next_in = reinterpret_cast<Bytef*>(source.data());
    stream.avail_in = static_cast<uInt>(source.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

constexpr uint64_t IN_EXTENSION = 0xFFFFFFFF;

}  // namespace

void ZipWriter::add(const std::string& name, const std::string& content, const Options& options) {
    Entry entry{name,
                options.stored ? content : deflated(content),
                content.size(),
                static_cast<uint32_t>(crc32(0, reinterpret_cast<const Bytef*>(content.data()),
                                            static_cast<uInt>(content.size()))),
                files_.size(),
                options};
    if (options.stored) {
        entry.options.method = 0;
    }
    append(files_, 0x04034b50, 4);
    append(files_, 20, 2);
    append(files_, options.encrypted ? 1 : 0, 2);
    append(files_, entry.options.method, 2);
    append(files_, 0, 4);
    append(files_, entry.checksum, 4);
    append(files_, entry.packed.size(), 4);
    append(files_, entry.size, 4);
    append(files_, name.size(), 2);
    append(files_, 0, 2);
    files_.append(name).append(entry.packed);
    entries_.push_back(entry);
}

std::string ZipWriter::bytes() const {
    std::string out = files_;
    bool zip64 = false;
    for (const Entry& entry : entries_) {
        const bool extended = entry.options.zip64;
        zip64 = zip64 || extended;
        append(out, 0x02014b50, 4);
        append(out, 20, 2);
        append(out, 20, 2);
        append(out, entry.options.encrypted ? 1 : 0, 2);
        append(out, entry.options.method, 2);
        append(out, 0, 4);
        append(out, entry.checksum, 4);
        append(out, extended ? IN_EXTENSION : entry.packed.size(), 4);
        append(out, extended ? IN_EXTENSION : entry.size, 4);
        append(out, entry.name.size(), 2);
        append(out, extended ? 28 : 0, 2);
        append(out, 0, 10);
        append(out, extended ? IN_EXTENSION : entry.offset, 4);
        out += entry.name;
        if (extended) {
            append(out, 1, 2);
            append(out, 24, 2);
            append(out, entry.size, 8);
            append(out, entry.packed.size(), 8);
            append(out, entry.offset, 8);
        }
    }
    const uint64_t directory = files_.size();
    const uint64_t directoryEnd = out.size();
    if (zip64) {
        append(out, 0x06064b50, 4);
        append(out, 44, 8);
        append(out, 45, 2);
        append(out, 45, 2);
        append(out, 0, 8);
        append(out, entries_.size(), 8);
        append(out, entries_.size(), 8);
        append(out, directoryEnd - directory, 8);
        append(out, directory, 8);
        append(out, 0x07064b50, 4);
        append(out, 0, 4);
        append(out, directoryEnd, 8);
        append(out, 1, 4);
    }
    append(out, 0x06054b50, 4);
    append(out, 0, 4);
    append(out, entries_.size(), 2);
    append(out, entries_.size(), 2);
    append(out, zip64 ? IN_EXTENSION : directoryEnd - directory, 4);
    append(out, zip64 ? IN_EXTENSION : directory, 4);
    append(out, 0, 2);
    return out;
}

}  // namespace intake
