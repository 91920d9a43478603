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

/// The first row that fits holds.
const std::array ACCESS{
    Access{"host/", {"host/", "plugin/", "workbench/"}},
    Access{"plugin/", {"plugin/"}},
    Access{"pipeline/IntakeThread.h", {"pipeline/IntakeThread.", "plugin/"}},
    Access{"pipeline/WorkerState.h", {"pipeline/WorkerState.", "pipeline/IntakeThread."}},
    Access{"pipeline/", {"pipeline/", "readers/", "plugin/"}},
    Access{"readers/", {"readers/", "pipeline/WorkerState."}},
    Access{"platform/linux/", {"platform/linux/"}},
    Access{"platform/windows/", {"platform/windows/"}},
    Access{"platform/", {"platform/", "pipeline/", "readers/", "plugin/"}},
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

Violations includeCycles(const SourceTree& tree) {
    return CycleSearch(tree).run();
}

}  // namespace intake
