// libxml_parse FILE: what libxml2's parse alone costs for that file, blanks dropped and the tree
// freed again. The baseline of the XML figures.

#include <libxml/parser.h>

#include <cstdio>

#include "bench/process_usage.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: libxml_parse FILE\n");
        return 2;
    }
    const double start = bench::wallSeconds();
    const double cpuStart = bench::cpuSeconds();
    xmlDoc* const document = xmlReadFile(argv[1], nullptr, XML_PARSE_NOBLANKS | XML_PARSE_HUGE);
    if (document == nullptr) {
        return 1;  // the library has said why
    }
    xmlFreeDoc(document);
    std::fprintf(stderr, "seconds %.4f cpu %.4f peak_mb %.1f\n", bench::wallSeconds() - start,
                 bench::cpuSeconds() - cpuStart, bench::peakBytes() / 1e6);
    return 0;
}
