#include "tests/soak/Source.h"

#include <sqlite3.h>

#include <array>
#include <fstream>
#include <memory>
#include <stdexcept>

namespace intake {

namespace {

using Parameters = std::vector<std::pair<std::string, std::string>>;

struct KindOfSource {
    const char* extension;
    Parameters parameters;
};

const KindOfSource& describe(Kind kind) {
    static const std::array<KindOfSource, 5> KINDS{{
        {".json", {{"queryMode", "JSON"}, {"xpath", "r/v"}}},
        {".xml", {{"queryMode", "XML"}, {"xpath", "//r/@v"}}},
        {".html", {{"queryMode", "4"}, {"sheet", "ID t"}, {"fromRow", "1"}, {"key", "v"}}},
        {".db", {{"queryMode", "SQL"}, {"query", "SELECT v FROM t ORDER BY rowid"}, {"key", "v"}}},
        {".xlsx", {{"queryMode", "EXCEL"}, {"sheet", "S"}, {"range", "v"}, {"key", "v"}}},
    }};
    return KINDS[static_cast<size_t>(kind)];
}

void executeSql(const std::string& file, const std::string& statements) {
    sqlite3* opened = nullptr;
    const bool isOpen = sqlite3_open(file.c_str(), &opened) == SQLITE_OK;
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> database(opened, sqlite3_close);
    constexpr int LONGEST_WAIT_FOR_READERS = 60'000;  // milliseconds
    sqlite3_busy_timeout(opened, LONGEST_WAIT_FOR_READERS);
    const std::string all = "PRAGMA synchronous = OFF;" + statements;
    if (!isOpen || sqlite3_exec(opened, all.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw std::runtime_error(file + ": " + sqlite3_errmsg(opened));
    }
}

}  // namespace

std::string Source::fileName() const {
    return std::to_string(number_) + describe(kind_).extension;
}

std::optional<int> Source::versionShownBy(const std::string& script) const {
    const std::optional<int> shown = versionOf(script, kind_, table(), number_);
    return shown && *shown >= 1 && *shown <= version_ ? shown : std::nullopt;
}

Parameters Source::parameters(const std::string& server) const {
    const std::string name = (place_ == Place::SERVER ? server + "/" : "") + fileName();
    Parameters all = describe(kind_).parameters;
    all.emplace_back("mode", "Data Field Array");
    all.emplace_back("table", table());
    if (kind_ == Kind::SQL) {
        all.emplace_back("connStr", "Provider=SQLite;Data Source=" + name);
    } else {
        all.emplace_back("filename", name);
    }
    return all;
}

void Source::renew() {
    ++version_;  // before anybody can see it
    if (place_ == Place::FILE) {
        writeFile();
    }
}

void Source::writeFile() const {
    if (isChangedInPlace()) {
        executeSql(fileName(), document());
        return;
    }
    const std::string next = "next" + fileName();
    if (kind_ == Kind::SQL) {
        executeSql(next, document());
    } else {
        std::ofstream(next, std::ios::binary) << document();
    }
    std::filesystem::rename(next, fileName());
}

void Source::remove() const {
    std::filesystem::remove(fileName());
}

}  // namespace intake
