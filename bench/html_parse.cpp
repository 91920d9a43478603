// html_parse PARSER FILE: what a parser alone costs for that page, its bytes being in memory
// already: intake, gumbo or myhtml. The baselines of the HTML figures.

#include <gumbo.h>
#include <myhtml/api.h>

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>

#include "bench/process_usage.h"
#include "bench/read_file.h"
#include "formats/html/Page.h"

namespace {

// What they make is left to the end of the process, as far as each allows.

bool parseByIntake(const std::string& page) {
    const intake::EndMark endMark;
    return intake::html::parsePage(page, endMark)->document.firstChild != nullptr;
}

bool parseByGumbo(const std::string& page) {
    GumboOptions options = kGumboDefaultOptions;
    options.max_errors = 0;
    return gumbo_parse_with_options(&options, page.data(), page.size())->root != nullptr;
}

bool parseByMyhtml(const std::string& page) {
    myhtml_t* const parser = myhtml_create();
    myhtml_init(parser, MyHTML_OPTIONS_PARSE_MODE_SINGLE, 1, 0);
    myhtml_tree_t* const tree = myhtml_tree_create();
    myhtml_tree_init(tree, parser);
    myhtml_parse(tree, MyENCODING_UTF_8, page.data(), page.size());
    return myhtml_tree_get_node_html(tree) != nullptr;
}

struct Parser {
    const char* name;
    bool (*parse)(const std::string& page);
};

constexpr Parser PARSERS[] = {
    {"intake", parseByIntake}, {"gumbo", parseByGumbo}, {"myhtml", parseByMyhtml}};

int run(const std::string& name, const std::string& path) {
    const std::string page = bench::readFile(path);
    for (const Parser& parser : PARSERS) {
        if (name == parser.name) {
            const double start = bench::wallSeconds();
            const double cpuStart = bench::cpuSeconds();
            const bool isParsed = parser.parse(page);
            std::fprintf(stderr, "seconds %.4f cpu %.4f peak_mb %.1f\n",
                         bench::wallSeconds() - start, bench::cpuSeconds() - cpuStart,
                         bench::peakBytes() / 1e6);
            return isParsed ? 0 : 1;
        }
    }
    throw std::invalid_argument("there is no parser " + name);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: html_parse intake|gumbo|myhtml FILE\n");
        return 2;
    }
    try {
        return run(argv[1], argv[2]);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "html_parse: %s\n", failure.what());
        return 1;
    }
}
