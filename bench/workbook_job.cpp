// workbook_job FILE SHEET [ROUNDS]: loads one sheet as a DataArray, the whole job from file to
// script, and takes turns with unpacking the same parts by zlib alone and with scanning what was
// unpacked. Processor time, the least of all rounds.

#include <zlib.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "bench/process_usage.h"
#include "formats/workbook/ZipArchive.h"
#include "formats/xml/XmlScanner.h"
#include "pipeline/WorkerState.h"
#include "platform/Platform.h"
#include "platform/linux/base/RegularFile.h"
#include "readers/Readers.h"

namespace {

constexpr const char* PARTS[] = {"xl/sharedStrings.xml", "xl/worksheets/sheet1.xml"};

/// Counts what is told to it, so that telling cannot be left out.
class Counter final : public intake::XmlEvents {
public:
    void startDocument() override {}
    void startElement(std::string_view, const intake::XmlAttributes&) override { ++count; }
    bool endElement() override { return true; }
    void text(std::string_view text) override { count += text.size(); }

    size_t count = 0;
};

struct Times {
    double inflate = 1e9;
    double scan = 1e9;
    double job = 1e9;
};

/// Unpacks and checks the sum as zlib does both, with all bytes at hand.
void inflateByZlib(const std::string& packed, const intake::ZipEntry& entry, char* out) {
    z_stream stream{};
    inflateInit2(&stream, -MAX_WBITS);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(out);
    stream.avail_out = static_cast<uInt>(entry.size);
    const int result = inflate(&stream, Z_FINISH);
    inflateEnd(&stream);
    const uLong checksum =
        crc32(0, reinterpret_cast<const Bytef*>(out), static_cast<uInt>(entry.size));
    if (result != Z_STREAM_END || checksum != entry.checksum) {
        std::fprintf(stderr, "the workbook cannot be unpacked\n");
        std::exit(1);
    }
}

void inflateAndScan(const std::string& path, Times& times) {
    const intake::RegularFile file(path);
    const intake::ZipArchive archive(file);
    double inflate = 0;
    double scan = 0;
    for (const char* const name : PARTS) {
        const intake::ZipEntry& entry = *archive.find(name);
        std::string text(entry.size + 1, 0);
        std::string packed(entry.packedSize, 0);
        archive.read(archive.dataOffset(entry), packed.data(), packed.size());
        double start = bench::cpuSeconds();
        inflateByZlib(packed, entry, text.data());
        inflate += bench::cpuSeconds() - start;

        Counter counter;
        intake::XmlScanner<Counter> scanner(counter);
        start = bench::cpuSeconds();
        scanner.scan({text.data(), entry.size});
        scan += bench::cpuSeconds() - start;
        if (!scanner.isComplete() || counter.count == 0) {
            std::fprintf(stderr, "%s cannot be scanned\n", name);
            std::exit(1);
        }
    }
    times.inflate = std::min(times.inflate, inflate);
    times.scan = std::min(times.scan, scan);
}

size_t wholeJob(const std::string& path, const std::string& sheet, Times& times) {
    const std::string command =
        "MODE |SQL| CONNSTR |Provider=Microsoft.ACE.OLEDB.12.0;Data Source=" + path +
        ";Extended Properties=\"Excel 12.0 Xml;HDR=YES\";| QUERY |SELECT * FROM [" + sheet +
        "$];| NUM_ROWS |0| TABLE |T| TGT_MODE 1 ";
    intake::WorkerState worker(intake::systemPlatform(),
                               intake::makerOfReaders(intake::systemPlatform()));
    bool success = false;
    std::string script, error;
    const double start = bench::cpuSeconds();
    worker.ProcessCommand(command, success, script, error);
    times.job = std::min(times.job, bench::cpuSeconds() - start);
    if (!success) {
        std::fprintf(stderr, "%s\n", error.c_str());
        std::exit(1);
    }
    return script.size();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: workbook_job FILE SHEET [ROUNDS]\n");
        return 2;
    }
    const int rounds = argc > 3 ? std::atoi(argv[3]) : 5;
    Times times;
    size_t script = wholeJob(argv[1], argv[2], times);
    const double peak = bench::peakBytes() / 1e6;
    for (int round = 0; round < rounds; ++round) {
        inflateAndScan(argv[1], times);
        script = wholeJob(argv[1], argv[2], times);
    }
    std::printf(
        "whole job %.0f ms, inflate %.0f + scan %.0f ms, ratio %.2f; "
        "script of %.0f MB, peak of the first job %.0f MB\n",
        times.job * 1e3, times.inflate * 1e3, times.scan * 1e3,
        times.job / (times.inflate + times.scan), static_cast<double>(script) / 1e6, peak);
    return 0;
}
