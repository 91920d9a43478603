#include "workbench/cli/source_settings.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <sstream>

#include "formats/connection/sqlite_connection_string.h"
#include "workbench/cli/UsageError.h"
#include "workbench/cli/display_text.h"
#include "workbench/cli/received_text.h"
#include "workbench/probe/LookFailure.h"
#include "workbench/probe/fetch/source_start.h"
#include "workbench/probe/kinds.h"

namespace workbench {

namespace {

std::string textOf(const char* name, const lumo::ParameterTable& parameters,
                   const lumo::Record& record) {
    const auto index = parameters.find(name);
    return index ? std::string(record.text(*index)) : "";
}

bool isOn(const char* name, const lumo::ParameterTable& parameters, const lumo::Record& record) {
    const auto index = parameters.find(name);
    return index && record.integer(*index) != 0;
}

probe::Request requestOf(const lumo::ParameterTable& parameters, const lumo::Record& record) {
    probe::Request request;
    if (isOn("useAuth", parameters, record)) {
        request.user = textOf("userName", parameters, record);
        request.password = textOf("password", parameters, record);
    }
    if (!isOn("useCustomHeaders", parameters, record)) return request;
    std::istringstream lines(receivedText(textOf("customHeaders", parameters, record)));
    for (std::string line; std::getline(lines, line);) {
        line.erase(line.find_last_not_of('\r') + 1);
        if (line.find(':') != std::string::npos) request.headers.push_back(line);
    }
    return request;
}

std::string startOf(const std::string& source, const lumo::ParameterTable& parameters,
                    const lumo::Record& record) {
    if (!probe::isUrl(source)) return probe::startOfFile(source);
    if (isOn("enableProxy", parameters, record))
        throw probe::LookFailure(
            "is not looked at through a proxy; say what it is, for example with --set "
            "queryMode=JSON");
    return probe::startOfUrl(source, requestOf(parameters, record));
}

/// As it stands between $' and '.
std::string escaped(const std::string& text) {
    std::string written;
    for (const char c : text) {
        const bool isPrinted = c >= ' ' && c < 0x7F;
        std::array<char, 8> code{};
        std::snprintf(code.data(), code.size(), "\\x%02x",
                      static_cast<unsigned>(static_cast<unsigned char>(c)));
        const bool isOfSyntax = c == '\'' || c == '\\';
        written += !isPrinted ? code.data() : (isOfSyntax ? "\\" : "") + std::string(1, c);
    }
    return written;
}

void addDatabase(const std::string& source, const lumo::ParameterTable& parameters,
                 const lumo::Record& record, SourceSettings& found) {
    if (probe::isUrl(source))
        throw probe::LookFailure("is an SQLite database; it can only be read as a file");
    if (textOf("query", parameters, record).empty())
        throw UsageError(source +
                         " is an SQLite database; say what to read from it, with --set "
                         "query=\"SELECT * FROM …\".");
    found.settings.push_back("connStr=" + intake::sqliteConnectionString(source));
}

}  // namespace

SourceSettings settingsForSource(const std::string& source, const lumo::ParameterTable& parameters,
                                 const lumo::Record& record) {
    const std::string start = startOf(source, parameters, record);
    const probe::Kind kind = probe::recognise(start);
    const auto type = probe::queryTypeFor(kind);
    if (!type)
        throw probe::LookFailure(std::string("is ") + probe::wordsFor(kind) +
                                 "; what can be loaded is JSON, XML, HTML tables, worksheets and "
                                 "databases");
    SourceSettings found{probe::wordsFor(kind, start),
                         {std::string("queryMode=") + probe::valueOf(*type)}};
    if (kind == probe::Kind::Sqlite) addDatabase(source, parameters, record, found);
    return found;
}

std::string asArgument(const std::string& setting) {
    if (printable(setting) != setting) return " --set $'" + escaped(setting) + "'";
    const bool isPlain = setting.find_first_of(" \t\n;\"'$&|<>()[]{}*?!#~`\\") == std::string::npos;
    if (isPlain) return " --set " + setting;
    std::string quoted;
    for (const char c : setting)
        quoted += c == '\'' ? "'\\''" : std::string(1, c);
    return " --set '" + quoted + "'";
}

std::string sentenceAbout(const std::string& source, const SourceSettings& found) {
    std::string sentence = probe::withoutUserInfo(source) + " is " + found.words + ":";
    for (const std::string& setting : found.settings)
        sentence += asArgument(setting);
    return sentence;
}

}  // namespace workbench
