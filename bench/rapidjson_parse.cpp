// rapidjson_parse FILE: what RapidJSON's Document::Parse alone costs for that file, its text being
// in memory already. The baseline of the JSON figures.

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>

#include <cstdio>
#include <exception>
#include <string>

#include "bench/process_usage.h"
#include "bench/read_file.h"

namespace {

int run(const std::string& path) {
    const std::string text = bench::readFile(path);
    const double start = bench::wallSeconds();
    const double cpuStart = bench::cpuSeconds();
    rapidjson::Document document;
    document.Parse(text.c_str());
    const double seconds = bench::wallSeconds() - start;
    if (document.HasParseError()) {
        std::fprintf(stderr, "rapidjson_parse: %s: %s\n", path.c_str(),
                     rapidjson::GetParseError_En(document.GetParseError()));
        return 1;
    }
    std::fprintf(stderr, "seconds %.4f cpu %.4f peak_mb %.1f\n", seconds,
                 bench::cpuSeconds() - cpuStart, bench::peakBytes() / 1e6);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: rapidjson_parse FILE\n");
        return 2;
    }
    try {
        return run(argv[1]);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "rapidjson_parse: %s\n", failure.what());
        return 1;
    }
}
