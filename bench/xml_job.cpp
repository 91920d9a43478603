// One load of a large XML document: what each stage of the reader costs in processor time, and what
// libxml2's own parse of the same document costs, with blanks dropped and the tree freed again.
//
//     xml_job FILE XPATH [TIMES]       (without a file of that name, one of 100 MB is made)

#include <libxml/parser.h>
#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

#include "bench/process_usage.h"
#include "pipeline/ReaderLogger.h"
#include "pipeline/command_text.h"
#include "platform/Platform.h"
#include "readers/xml/XMLHandler.h"
#include "readers/xml/XmlRecords.h"

namespace {

constexpr int ROWS = 500'000;

/// Rows of six fields, a line each.
void makeRows(const std::string& path) {
    std::ofstream file(path, std::ios::binary);
    file << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<data>\n";
    for (int row = 0; row < ROWS; ++row) {
        file << "  <row id=\"" << row << "\">\n"
             << "    <name>Contestant number " << row << "</name>\n"
             << "    <team>Åland &amp; Friends</team>\n"
             << "    <score>" << row % 1000 << "." << row % 10 << "</score>\n"
             << "    <time>00:0" << row % 10 << ":" << 10 + row % 50 << "</time>\n"
             << "    <status>" << (row % 3 == 0 ? "finished" : "running") << "</status>\n"
             << "    <note>lane " << row % 8 + 1 << ", second heat</note>\n"
             << "  </row>\n";
    }
    file << "</data>\n";
}

intake::RequestRecord request(const std::string& file, const std::string& xpath) {
    intake::RequestRecord request;
    std::istringstream command("FILENAME |" + file + "| XPATH |" + xpath +
                               "| NUM_ROWS |2147483647| TABLE |T| TGT_MODE 1 ");
    ParseCommand(request, command);
    return request;
}

/// Calls `job` and returns the milliseconds of processor time that it took.
template <class Job>
double timed(Job job) {
    const double start = bench::cpuSeconds();
    job();
    return (bench::cpuSeconds() - start) * 1000;
}

/// Gives all free memory back to the system: who is given new pages pays for them.
void beginCold() {
    malloc_trim(0);
}

double timeLibrary(const std::string& path) {
    beginCold();
    return timed([&] {
        xmlDoc* const document =
            xmlReadFile(path.c_str(), nullptr, XML_PARSE_NOBLANKS | XML_PARSE_HUGE);
        if (document == nullptr) {
            throw std::runtime_error("libxml2 refuses " + path);
        }
        xmlFreeDoc(document);
    });
}

double timeReader(const intake::RequestRecord& request, intake::ReaderLogger& logger) {
    const intake::EndMark endMark;
    const auto connections = intake::systemPlatform().http.keepConnections();
    intake::XMLHandler reader(logger, intake::systemPlatform().xml, *connections, endMark);
    std::string script, error;
    bool success = false;
    beginCold();
    const double time = timed([&] { success = reader.Read(request, script, error); });
    if (!success) {
        throw std::runtime_error(error);
    }
    return time;
}

void printStages(const intake::RequestRecord& request, intake::ReaderLogger& logger) {
    const intake::EndMark endMark;
    auto document = intake::systemPlatform().xml.createDocument(
        intake::TextEncoding::UTF8, intake::XmlSource::LOCAL_FILE, endMark);
    std::string script;
    beginCold();
    const double load = timed([&] { document->loadFile(request.filename); });
    const double select = timed([&] { document->selectNodes(request.xpath); });
    const size_t rows = document->selectedCount();
    const double write =
        timed([&] { intake::XmlRecords(*document, request, logger, script).write(); });
    const double free = timed([&] { document.reset(); });
    std::printf("load %.0f, select %.0f, write %.0f, free %.0f ms; %zu rows, script of %zu bytes\n",
                load, select, write, free, rows, script.size());
}

void run(const std::string& path, const std::string& xpath, int times) {
    if (!std::filesystem::exists(path)) {
        makeRows(path);
    }
    const intake::RequestRecord job = request(path, xpath);
    intake::ReaderLogger logger(intake::systemPlatform().clock, intake::systemPlatform().textFiles);
    logger.setLevel(intake::LOG_FATAL);
    double reader = 0;
    double library = 0;
    for (int i = 0; i < times; ++i) {  // in turn, so that it matters less how busy the machine is
        library += timeLibrary(path);
        reader += timeReader(job, logger);
    }
    printStages(job, logger);
    std::printf("whole job %.0f ms, libxml2's parse and free %.0f ms, ratio %.2f; peak %.0f MB\n",
                reader / times, library / times, reader / library, bench::peakBytes() / 1e6);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fputs("usage: xml_job FILE XPATH [TIMES]\n", stderr);
        return 2;
    }
    run(argv[1], argv[2], argc > 3 ? std::atoi(argv[3]) : 3);
    return 0;
}
