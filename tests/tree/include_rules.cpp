#include "tests/tree/include_rules.h"

#include <algorithm>
#include <array>
#include <set>

namespace intake {

namespace {

/// Who may include the files whose path begins like this. Tests and benchmarks look at everything.
struct Access {
    const char* included;
    std::vector<const char*> includers;
};

/// Everybody who may include what sources are read from and what is done with texts.
const std::vector<const char*> ANYBODY{"formats/", "platform/", "pipeline/",
                                       "readers/", "plugin/",   "workbench/"};

/// The first row that fits holds.
const std::array ACCESS{
    Access{"host/",
           {"host/", "plugin/", "workbench/cli/", "workbench/cobaltlib/", "workbench/lumo/"}},
    Access{"plugin/", {"plugin/"}},
    Access{"readers/Readers.h", {"readers/Readers.", "plugin/"}},
    Access{"readers/", {"readers/"}},
    Access{"pipeline/IntakeThread.h", {"pipeline/IntakeThread.", "plugin/"}},
    Access{"pipeline/WorkerState.h", {"pipeline/WorkerState.", "pipeline/IntakeThread."}},
    Access{"pipeline/", {"pipeline/", "readers/", "plugin/"}},
    Access{"platform/linux/", {"platform/linux/"}},
    Access{"platform/windows/", {"platform/windows/"}},
    Access{"platform/", {"platform/", "pipeline/", "readers/", "plugin/"}},
    Access{"formats/source/", ANYBODY},
    Access{"formats/text/", ANYBODY},
    Access{"formats/connection/", {"formats/connection/", "platform/", "workbench/"}},
    Access{"formats/html/", {"formats/html/", "platform/", "workbench/"}},
    Access{"formats/json/", {"formats/json/", "readers/json/", "workbench/"}},
    Access{"formats/workbook/", {"formats/workbook/", "platform/", "workbench/"}},
    Access{"formats/xml/", {"formats/xml/", "formats/workbook/", "platform/", "workbench/"}},
    Access{"workbench/probe/", {"workbench/probe/", "workbench/cli/", "workbench/commands/"}},
    Access{"workbench/", {"workbench/"}},
    Access{"bench/", {}},
    Access{"tests/", {}},
};

bool mayInclude(const std::string& includer, const std::string& included) {
    const auto access = std::find_if(ACCESS.begin(), ACCESS.end(), [&](const Access& row) {
        return included.starts_with(row.included);
    });
    return access == ACCESS.end() ||
           std::any_of(access->includers.begin(), access->includers.end(),
                       [&](const char* allowed) { return includer.starts_with(allowed); });
}

bool looksAtEverything(const std::string& includer, const std::string& included) {
    return includer.starts_with("tests/") ||
           (includer.starts_with("bench/") && !included.starts_with("tests/"));
}

/// Walks the includes depth first; a file that is met again on the way to itself closes a cycle.
class CycleSearch {
public:
    explicit CycleSearch(const SourceTree& tree) : tree_(tree) {}

    Violations run() {
        for (const auto& [path, file] : tree_) {
            visit(path);
        }
        return found_;
    }

private:
    void visit(const std::string& path) {
        if (!visited_.insert(path).second) {
            return;
        }
        way_.push_back(path);
        for (const Include& include : tree_.at(path).includes) {
            follow(path, include);
        }
        way_.pop_back();
    }

    void follow(const std::string& path, const Include& include) {
        const auto start = std::find(way_.begin(), way_.end(), include.path);
        if (start != way_.end()) {
            std::string cycle = "the include closes the cycle ";
            std::for_each(start, way_.end(), [&](const auto& step) { cycle += step + " > "; });
            found_.push_back(violation(path, include.line, cycle + include.path));
        } else if (tree_.contains(include.path)) {
            visit(include.path);
        }
    }

    const SourceTree& tree_;
    std::set<std::string> visited_;
    std::vector<std::string> way_;
    Violations found_;
};

std::string folderOf(const std::string& path) {
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? "" : path.substr(0, slash);
}

/// The tree with folders for files: each includes what its files include.
SourceTree folders(const SourceTree& tree) {
    SourceTree folders;
    for (const auto& [path, file] : tree) {
        const std::string folder = folderOf(path);
        if (folder.starts_with("tests")) {
            continue;
        }
        for (const Include& include : file.includes) {
            const std::string included = folderOf(include.path);
            if (tree.contains(include.path) && included != folder) {
                folders[folder].includes.push_back({include.line, included, true});
                folders[included];
            }
        }
    }
    return folders;
}

/// Headers of the language, and of the libraries by which formats are read.
const std::set<std::string> HEADERS_OF_FORMATS{
    "iconv.h",
    "isa-l/crc.h",
    "isa-l/igzip_lib.h",
    "libxml/SAX2.h",
    "libxml/parser.h",
    "libxml/parserInternals.h",
    "libxml/tree.h",
    "libxml/xpath.h",
    "rapidjson/allocators.h",
    "rapidjson/encodings.h",
    "rapidjson/error/en.h",
    "rapidjson/reader.h",
};

}  // namespace

Violations forbiddenIncludes(const SourceTree& tree) {
    Violations found;
    for (const auto& [path, file] : tree) {
        for (const Include& include : file.includes) {
            if (!looksAtEverything(path, include.path) && !mayInclude(path, include.path)) {
                found.push_back(violation(path, include.line, "must not include " + include.path));
            }
        }
    }
    return found;
}

Violations unknownIncludes(const SourceTree& tree) {
    Violations found;
    for (const auto& [path, file] : tree) {
        for (const Include& include : file.includes) {
            if (include.quoted && !tree.contains(include.path)) {
                found.push_back(violation(path, include.line,
                                          "\"" + include.path + "\" is no file from the root"));
            }
        }
    }
    return found;
}

Violations ownHeadersNotFirst(const SourceTree& tree) {
    Violations found;
    for (const auto& [path, file] : tree) {
        const std::string header = path.substr(0, path.rfind('.')) + ".h";
        if (path.ends_with(".cpp") && tree.contains(header) &&
            (file.includes.empty() || file.includes[0].path != header)) {
            const int line = file.includes.empty() ? 1 : file.includes[0].line;
            found.push_back(violation(path, line, "must include " + header + " first"));
        }
    }
    return found;
}

Violations includeCycles(const SourceTree& tree) {
    return CycleSearch(tree).run();
}

Violations folderCycles(const SourceTree& tree) {
    return CycleSearch(folders(tree)).run();
}

Violations foreignHeadersOfFormats(const SourceTree& tree) {
    Violations found;
    for (const auto& [path, file] : tree) {
        for (const Include& include : file.includes) {
            const bool isOfLanguage = include.path.find_first_of("./") == std::string::npos;
            if (path.starts_with("formats/") && !include.quoted && !isOfLanguage &&
                !HEADERS_OF_FORMATS.contains(include.path)) {
                found.push_back(violation(path, include.line, "must not need " + include.path));
            }
        }
    }
    return found;
}

}  // namespace intake
