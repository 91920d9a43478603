// html_stages FILE SELECTOR: what each stage of one load of that page costs in processor time:
// finding out the encoding, parsing, finding the table, and writing it as a DataTable by the column
// "Key".

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>

#include "bench/process_usage.h"
#include "bench/read_file.h"
#include "formats/html/page_encoding.h"
#include "platform/linux/html/ParsedPage.h"
#include "readers/html/HtmlRecords.h"
#include "readers/html/TableSelector.h"

namespace {

using namespace intake;

void run(const std::string& path, const std::string& selector) {
    RequestRecord request;
    request.key = "Key";
    request.table = "T";
    request.numRows = 1000000;
    std::string page = bench::readFile(path);
    const EndMark endMark;
    const double start = bench::cpuSeconds();
    page = html::decodePage(std::move(page), "");
    const double decoded = bench::cpuSeconds();
    html::ParsedPage document(html::parsePage(std::move(page), endMark), endMark);
    const double parsed = bench::cpuSeconds();
    const auto element = TableSelector(selector, 0).find(document);
    if (element == nullptr) {
        throw std::runtime_error("there is no such table");
    }
    const double found = bench::cpuSeconds();
    std::string script, error;
    HtmlRecords(*document.table(element), request, script).write(error);
    const double written = bench::cpuSeconds();
    std::fprintf(stderr, "decode %.4f parse %.4f find %.4f write %.4f\n", decoded - start,
                 parsed - decoded, found - parsed, written - found);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: html_stages FILE SELECTOR\n");
        return 2;
    }
    try {
        run(argv[1], argv[2]);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "html_stages: %s\n", failure.what());
        return 1;
    }
}
