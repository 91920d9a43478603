// pugixml_rows FILE XPATH: what pugixml takes to build the tree of a document and to find nodes in
// it. A baseline of the XML figures.

#include <cstdio>
#include <pugixml.hpp>

#include "bench/process_usage.h"

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: pugixml_rows FILE XPATH\n");
        return 2;
    }
    const double start = bench::wallSeconds();
    const double cpuStart = bench::cpuSeconds();
    pugi::xml_document document;
    if (!document.load_file(argv[1])) {
        return 1;
    }
    const size_t rows = document.select_nodes(argv[2]).size();
    std::fprintf(stderr, "seconds %.4f cpu %.4f peak_mb %.1f rows %zu\n",
                 bench::wallSeconds() - start, bench::cpuSeconds() - cpuStart,
                 bench::peakBytes() / 1e6, rows);
    return 0;
}
