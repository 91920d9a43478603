#include "tests/tree/platform_table.h"

#include <algorithm>
#include <set>
#include <sstream>
#include <string_view>
#include <vector>

namespace intake {

namespace {

constexpr const char* TABLE = "platform/README.md";

std::vector<std::string> splitAt(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::istringstream in(text);
    for (std::string part; std::getline(in, part, separator);) {
        parts.push_back(part);
    }
    return parts;
}

/// What stands between backquotes.
std::vector<std::string> namesIn(const std::string& cell) {
    std::vector<std::string> names;
    const std::vector<std::string> parts = splitAt(cell, '`');
    for (size_t i = 1; i < parts.size(); i += 2) {
        names.push_back(parts[i]);
    }
    return names;
}

struct Row {
    int line;
    std::string interfaces, onLinux, onWindows, contract;
};

std::vector<Row> rowsOf(const std::string& text) {
    std::vector<Row> rows;
    const std::vector<std::string> lines = splitAt(text, '\n');
    for (size_t i = 0; i < lines.size(); ++i) {
        const std::vector<std::string> cells = splitAt(lines[i], '|');
        if (cells.size() > 4 && cells[1].find('`') != std::string::npos) {
            rows.push_back({static_cast<int>(i) + 1, cells[1], cells[2], cells[3], cells[4]});
        }
    }
    return rows;
}

/// The classes of platform/*.h that others implement.
std::set<std::string> interfacesIn(const SourceTree& tree) {
    constexpr std::string_view DESTRUCTOR = "virtual ~";
    std::set<std::string> interfaces;
    for (const auto& [path, file] : tree) {
        if (!path.starts_with("platform/") || path.rfind('/') != path.find('/')) {
            continue;
        }
        for (const std::string& line : file.lines) {
            if (const size_t at = line.find(DESTRUCTOR); at != std::string::npos) {
                const size_t start = at + DESTRUCTOR.size();
                interfaces.insert(line.substr(start, line.find('(', start) - start));
            }
        }
    }
    return interfaces;
}

bool hasLine(const SourceTree& tree, const std::string& folder, const std::string& start,
             const std::string& inIt) {
    return std::any_of(tree.begin(), tree.end(), [&](const auto& entry) {
        const auto& lines = entry.second.lines;
        return entry.first.starts_with(folder) &&
               std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
                   return line.starts_with(start) && line.find(inIt) != std::string::npos;
               });
    });
}

class TableCheck {
public:
    TableCheck(const SourceTree& tree, Violations& found) : tree_(tree), found_(found) {}

    void check(const Row& row) {
        for (const std::string& interface : namesIn(row.interfaces)) {
            rest_.erase(interface);
            checkImplemented(row, interface, "platform/linux/", row.onLinux);
            checkImplemented(row, interface, "platform/windows/", row.onWindows);
        }
        checkContract(row);
    }

    void checkAllThere() {
        for (const std::string& interface : rest_) {
            found_.push_back(violation(TABLE, 1, "has no row for " + interface));
        }
    }

private:
    void checkImplemented(const Row& row, const std::string& interface, const std::string& folder,
                          const std::string& cell) {
        const std::vector<std::string> names = namesIn(cell);
        const bool isImplemented =
            std::any_of(names.begin(), names.end(), [&](const std::string& name) {
                return hasLine(tree_, folder, "class " + name + " ", "public " + interface + " ");
            });
        if (!isImplemented) {
            found_.push_back(violation(TABLE, row.line,
                                       "names no class in " + folder + " that is a " + interface));
        }
    }

    void checkContract(const Row& row) {
        if (row.contract.starts_with(" none: ")) {
            return;
        }
        for (const std::string& test : namesIn(row.contract)) {
            if (!tree_.contains("tests/platform/" + test) && !tree_.contains("tests/" + test)) {
                found_.push_back(violation(TABLE, row.line, "there is no test " + test));
            }
        }
        if (namesIn(row.contract).empty()) {
            found_.push_back(violation(TABLE, row.line, "names no contract test"));
        }
    }

    const SourceTree& tree_;
    Violations& found_;
    std::set<std::string> rest_ = interfacesIn(tree_);
};

}  // namespace

Violations platformTableFaults(const std::string& text, const SourceTree& tree) {
    Violations found;
    TableCheck check(tree, found);
    for (const Row& row : rowsOf(text)) {
        check.check(row);
    }
    check.checkAllThere();
    return found;
}

}  // namespace intake
