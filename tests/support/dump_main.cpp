// Prints what a file becomes when it is parsed: dump FILE. What it is, its name says.

#include <algorithm>
#include <array>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>

#include "formats/html/Page.h"
#include "formats/html/page_encoding.h"
#include "formats/source/ByteSource.h"
#include "formats/xml/libxml_setup.h"
#include "formats/xml/xml_load.h"
#include "tests/conformance/tree_dump.h"
#include "tests/formats/json/parse.h"
#include "tests/support/json_dump.h"
#include "tests/support/workbook_dump.h"
#include "tests/support/xml_dump.h"

namespace intake {

namespace {

std::string dumpJsonText(std::string text) {
    return dumpJson(parse(text));
}

std::string dumpXmlText(std::string text) {
    setUpLibxml();
    const LoadedXml loaded = loadXml(TextSource(text), EndMark());
    if (loaded.document == nullptr) {
        throw std::runtime_error(loaded.reason);
    }
    return dumpXml(xmlDocGetRootElement(loaded.document.get()));
}

std::string dumpHtmlText(std::string text) {
    return html::dumpTree(*html::parsePage(html::decodePage(std::move(text), ""), EndMark()));
}

std::string dumpWorkbookBytes(std::string bytes) {
    const TextSource file(bytes);
    const EndMark endMark;
    Workbook workbook(file, endMark);
    return dumpWorkbook(workbook);
}

struct Dumper {
    const char* extension;
    std::string (*dump)(std::string);
};

constexpr std::array<Dumper, 6> DUMPERS{{{".json", dumpJsonText},
                                         {".xml", dumpXmlText},
                                         {".html", dumpHtmlText},
                                         {".htm", dumpHtmlText},
                                         {".xlsx", dumpWorkbookBytes},
                                         {".xlsm", dumpWorkbookBytes}}};

std::string dumpFile(const std::filesystem::path& path) {
    const auto dumper = std::find_if(DUMPERS.begin(), DUMPERS.end(), [&](const Dumper& each) {
        return path.extension() == each.extension;
    });
    if (dumper == DUMPERS.end()) {
        throw std::runtime_error("the name of a .json, .xml, .html or .xlsx file is wanted");
    }
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("it cannot be read");
    }
    return dumper->dump({std::istreambuf_iterator<char>(file), {}});
}

}  // namespace

}  // namespace intake

int main(int count, char** words) {
    if (count != 2) {
        std::cerr << "usage: dump FILE\n";
        return 2;
    }
    try {
        std::cout << intake::dumpFile(words[1]);
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << words[1] << ": " << failure.what() << "\n";
        return 1;
    }
}
