// Whatever a source or a path holds, it is read or refused. Run with the sanitizers.

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "formats/json/json_path.h"
#include "formats/json/json_select.h"
#include "readers/json/JsonRecords.h"
#include "tests/formats/json/RandomJson.h"
#include "tests/formats/json/parse.h"
#include "tests/readers/json/read.h"

namespace intake {
namespace {

using Node = JsonDocument::Node;
using Nodes = std::vector<Node>;

constexpr int CASES = 20000;

/// Whether the children of every container are as many as it says and end where it ends.
bool isSound(const JsonDocument& document) {
    for (Node node = JsonDocument::ROOT; node != document.behind(JsonDocument::ROOT); ++node) {
        if (!document.isContainer(node)) {
            continue;
        }
        Node child = JsonDocument::firstChild(node);
        for (uint32_t i = 0; i < document.childCount(node); ++i) {
            child = document.behind(child);
        }
        if (child != document.behind(node)) {
            return false;
        }
    }
    return true;
}

/// Loads a source in every mode. It has to be refused exactly when it does not parse.
void load(const std::string& source, RandomJson& random) {
    const std::string refusal = parseError(source);
    RequestRecord request = requestOf({.path = random.path(), .key = "id"});
    for (request.targetMode = DATA_TABLE; request.targetMode <= SHARED_MEMORY;
         ++request.targetMode) {
        const Outcome outcome = read(source, request);
        ASSERT_EQ(outcome.success, refusal == "accepted") << source;
        ASSERT_TRUE(outcome.success || outcome.script.empty()) << source;
        ASSERT_EQ(outcome.error,
                  outcome.success ? "" : "Error parsing JSON: source.json: " + refusal);
    }
}

TEST(JsonRobustness, RandomBytesAreParsedOrRefused) {
    RandomJson random(1);
    for (int i = 0; i < CASES; ++i) {
        const std::string source = random.bytes(24);
        if (parseError(source) == "accepted") {
            ASSERT_TRUE(isSound(parse(source))) << source;
        }
    }
}

TEST(JsonRobustness, RandomDocumentsAreParsed) {
    RandomJson random(2);
    for (int i = 0; i < CASES; ++i) {
        const std::string source = random.document();
        ASSERT_EQ(parseError(source), "accepted") << source;
        ASSERT_TRUE(isSound(parse(source))) << source;
    }
}

TEST(JsonRobustness, DamagedDocumentsAreLoadedOrRefusedInEveryMode) {
    RandomJson random(3);
    for (int i = 0; i < CASES / 2; ++i) {
        ASSERT_NO_FATAL_FAILURE(load(random.damaged(random.document()), random));
    }
}

TEST(JsonRobustness, DocumentsAreLoadedByDamagedPathsInEveryMode) {
    RandomJson random(4);
    for (int i = 0; i < CASES / 2; ++i) {
        ASSERT_NO_FATAL_FAILURE(load(random.document(), random));
    }
}

TEST(JsonRobustness, PathsOfRandomBytesSelectSomethingOrNothing) {
    RandomJson random(5);
    const JsonDocument document = parse(R"({"a":[{"b":1},[2]],"c":{"a":[]}})");
    const Node end = document.behind(JsonDocument::ROOT);
    for (int i = 0; i < CASES; ++i) {
        const std::string path = random.bytes(16);
        for (const Node node : selectNodes(document, parsePath(path))) {
            ASSERT_LT(node, end) << path;
        }
    }
}

/// Selection as a search: each match is followed to the end of the path before the next one. Slow
/// and recursive, but its order is plain.
class DepthFirstSearch {
public:
    DepthFirstSearch(const JsonDocument& document, const std::vector<PathStep>& path)
        : document_(document), path_(path) {}

    Nodes run() {
        pass(JsonDocument::ROOT, 0);
        return found_;
    }

private:
    /// A node that has passed all steps before `step`.
    void pass(Node node, size_t step) {
        if (step == path_.size()) {
            found_.push_back(node);
        } else {
            search(node, step);
        }
    }

    void search(Node node, size_t step) {
        for (const Node child : childrenOf(node)) {
            if (path_[step].name == "*" || document_.name(child) == path_[step].name) {
                handleMatch(child, step);
            } else if (!path_[step].directChildren) {
                search(child, step);
            }
        }
    }

    void handleMatch(Node match, size_t step) {
        if (document_.type(match) != JsonDocument::Type::ARRAY) {
            passIfFilterHolds(match, step);
            return;
        }
        const Nodes elements = childrenOf(match);
        if (path_[step].kind == PathStep::Kind::INDEX) {
            const auto index = static_cast<size_t>(path_[step].index);
            if (index < elements.size()) {
                pass(elements[index], step + 1);
            }
            return;
        }
        for (const Node element : elements) {
            passIfFilterHolds(element, step);
        }
    }

    void passIfFilterHolds(Node node, size_t step) {
        if (path_[step].kind == PathStep::Kind::FILTER) {
            const Node member = document_.find(node, path_[step].field);
            if (member == JsonDocument::NONE || document_.asString(member) != path_[step].value) {
                return;
            }
        }
        pass(node, step + 1);
    }

    Nodes childrenOf(Node node) const {
        Nodes children;
        if (document_.isContainer(node)) {
            for (Node child = node + 1; child != document_.behind(node);
                 child = document_.behind(child)) {
                children.push_back(child);
            }
        }
        return children;
    }

    const JsonDocument& document_;
    const std::vector<PathStep>& path_;
    Nodes found_;
};

TEST(JsonRobustness, RandomPathsSelectWhatADepthFirstSearchFindsInItsOrder) {
    RandomJson random(6);
    int selected = 0;
    for (int i = 0; i < CASES; ++i) {
        const std::string source = random.document();
        const std::string text = random.path();
        const JsonDocument document = parse(source);
        const std::vector<PathStep> path = parsePath(text);
        const Nodes nodes = selectNodes(document, path);
        ASSERT_EQ(nodes, DepthFirstSearch(document, path).run()) << source << "\n" << text;
        selected += nodes.size() > 1 ? 1 : 0;
    }
    EXPECT_GT(selected, CASES / 20) << "too few paths select anything";
}

/// What the whole document gives, its rows being looked for once it is parsed.
std::string scriptOfSelection(const std::string& source, const RequestRecord& request) {
    const JsonDocument document = parse(source);
    std::string script;
    JsonRecords(document, request, script).write(selectNodes(document, parsePath(request.xpath)));
    return script;
}

TEST(JsonRobustness, RowsWrittenWhileReadingAreThoseOfTheWholeDocument) {
    constexpr std::array<const char*, 8> PATHS{"a",   "*",   "a/b", "*/a",
                                               "a/*", "*/*", "[*]", "*/[*]/b"};
    RandomJson random(7);
    int selected = 0;
    for (int i = 0; i < CASES; ++i) {
        const std::string source = random.document();
        RequestRecord request = requestOf({.path = PATHS[random.below(PATHS.size())],
                                           .mode = static_cast<TargetMode>(random.below(5)),
                                           .key = random.below(2) == 0 ? "" : "id"});
        request.fromRow = static_cast<int32_t>(random.below(6)) - 2;
        request.numRows = static_cast<int32_t>(random.below(6));
        const Outcome outcome = read(source, request);
        ASSERT_EQ(outcome.script, scriptOfSelection(source, request)) << source << "\n"
                                                                      << request.xpath;
        selected += outcome.script.find('"') != std::string::npos ? 1 : 0;
    }
    EXPECT_GT(selected, CASES / 20) << "too few paths select anything";
}

}  // namespace
}  // namespace intake
