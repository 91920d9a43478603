// A plain path, which is followed while the document is read, and the same path in brackets, which
// is evaluated in the whole document, give the same script or error. So does that document with all
// its attributes, and pieces of any size that the document is read in. The first line is the path,
// the second the namespaces, the third the key, the fourth how to read: see `requestOf`; the rest
// is the document.

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

#include "formats/xml/RowReader.h"
#include "formats/xml/libxml_setup.h"
#include "formats/xml/scan_document.h"
#include "formats/xml/xml_load.h"
#include "formats/xml/xml_markup.h"
#include "pipeline/error_reports.h"
#include "pipeline/narrow_text.h"
#include "platform/Platform.h"
#include "platform/PlatformError.h"
#include "readers/xml/XMLHandler.h"
#include "tests/fakes/platform/FakeConnections.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/readers/xml/ServedXml.h"

namespace {

/// A file in memory, by its path.
class MemoryFile {
public:
    MemoryFile() : descriptor_(memfd_create("document", 0)) {}

    void hold(std::string_view text) const {
        if (ftruncate(descriptor_, 0) != 0 ||
            pwrite(descriptor_, text.data(), text.size(), 0) != static_cast<ssize_t>(text.size())) {
            std::abort();
        }
    }
    std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

private:
    const int descriptor_;
};

/// A condition that always holds, and looks as if it were one on an attribute.
constexpr const char* KEEPS_ATTRIBUTES = "['@']";

/// From the first row and the number of rows on, the letters of a line choose the target mode, text
/// or markup, the encoding, whether it is a payload, and whether it comes from a server.
intake::RequestRecord requestOf(const std::string& how, const std::string& file) {
    const auto choose = [&how](size_t at, unsigned count) {
        return static_cast<int32_t>(static_cast<unsigned>(intake::numberAt(how, at, 0)) % count);
    };
    intake::RequestRecord request;
    request.fromRow = intake::numberAt(how, 0, 0);
    request.numRows = intake::numberAt(how, 1, 100000);
    request.targetMode = choose(2, 5);
    request.targetOutFormat = choose(3, 2);
    request.encoding = choose(4, 2) * 2;
    request.sourceInFormat = choose(5, 2);
    request.filename = choose(6, 2) == 0 ? file : "http://feeds.example/";
    request.table = choose(7, 2) == 0 ? "T" : "";
    return request;
}

/// What a failure tells but for an expression, which is not the same in both ways.
std::string refusal(const intake::PlatformError& failure, const intake::RequestRecord& request) {
    const std::string& reason = failure.description();
    const auto names = [&](const std::string& expression) {
        return reason.ends_with(": " + intake::toUtf8(expression, request.encoding));
    };
    const bool namesExpression =
        !reason.starts_with("The namespaces are ") && (names(request.xpath) || names(request.key));
    return namesExpression ? "refused" : "refused: " + intake::comErrorReport(failure);
}

std::string outcome(const intake::RequestRecord& request, std::string_view text) {
    const intake::EndMark endMark;
    intake::ReaderLogger logger(intake::systemPlatform().clock, intake::systemPlatform().textFiles);
    logger.setLevel(-1);
    intake::ServedXml served{std::string(text)};
    intake::FakeConnections connections;
    std::string script, error;
    try {
        const bool success =
            intake::XMLHandler(logger, served, connections, endMark).Read(request, script, error);
        return (success ? "loaded: " : "failed: ") + error + script;
    } catch (const intake::PlatformError& failure) {
        return refusal(failure, request);
    } catch (const std::length_error& failure) {
        return failure.what();
    }
}

/// Whether brackets around it leave it one expression.
bool isBalanced(const std::string& expression) {
    int open = 0;
    for (const char each : expression) {
        open += each == '(' ? 1 : each == ')' ? -1 : 0;
        if (open < 0) {
            return false;
        }
    }
    return open == 0;
}

/// The rows of a document that is read in pieces of so many bytes.
std::string rowsByPieces(const intake::XmlRowQuery& query, std::string_view text,
                         size_t windowSize) {
    const intake::EndMark endMark;
    std::string all;
    const intake::RowReader::Tell tell = [&all](const xmlNode* row) {
        intake::appendNodeMarkup(row, all);
        all += '\n';
    };
    intake::RowReader rows(query, tell, intake::ANY_NUMBER_OF_NODES);
    try {
        const bool isWhole =
            intake::scanDocument(intake::TextSource(text), "", endMark, rows, windowSize);
        return isWhole ? all + std::to_string(rows.found()) : "unknown";
    } catch (const std::length_error& failure) {
        return failure.what();
    }
}

void comparePieces(const intake::RequestRecord& request, std::string_view text, size_t windowSize) {
    const auto uriOf = [](std::string_view prefix) { return "urn:" + std::string(prefix); };
    const auto path = parsePlainPath(request.xpath, intake::PathStart::DOCUMENT, uriOf);
    if (!path) {
        return;
    }
    const intake::XmlRowQuery query{*path, std::nullopt, true, request.fromRow,
                                    request.fromRow + request.numRows};
    if (rowsByPieces(query, text, windowSize) != rowsByPieces(query, text, intake::USUAL_WINDOW)) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const MemoryFile file;
    intake::setUpLibxml();
    intake::FuzzInput input(data, size);
    const std::string path = input.line();
    const std::string namespaces = input.line();
    const std::string key = input.line();
    const std::string how = input.line();
    if (!isBalanced(path) || !isBalanced(key)) {
        return 0;
    }
    file.hold(input.rest());
    intake::RequestRecord request = requestOf(how, file.path());
    request.xpath = path;
    request.namespaces = namespaces;
    request.key = key;
    const std::string plain = outcome(request, input.rest());
    comparePieces(request, input.rest(), 1 + size % 40);
    request.xpath = "(" + path + ")";
    request.key = "(" + key + ")";
    if (plain != outcome(request, input.rest())) {
        std::abort();
    }
    request.xpath += KEEPS_ATTRIBUTES;
    request.key += KEEPS_ATTRIBUTES;
    if (plain != outcome(request, input.rest())) {
        std::abort();
    }
    return 0;
}
