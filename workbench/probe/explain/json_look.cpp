#include "workbench/probe/explain/json_look.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "formats/json/json_select.h"
#include "formats/text/trim.h"
#include "formats/text/utf8.h"
#include "workbench/probe/explain/JsonStop.h"
#include "workbench/probe/explain/KeyTally.h"
#include "workbench/probe/explain/RowRange.h"
#include "workbench/probe/explain/ScriptCheck.h"
#include "workbench/probe/explain/text_end.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

using intake::JsonDocument;
using Node = JsonDocument::Node;
using Nodes = std::vector<Node>;

/// A text with the zero byte behind it that the parser asks for.
intake::ByteBuffer bufferOf(std::string_view body) {
    intake::ByteBuffer buffer;
    std::memcpy(buffer.prepare(body.size() + 1), body.data(), body.size());
    buffer.data()[body.size()] = '\0';
    buffer.commit(body.size() + 1);
    return buffer;
}

/// Half of the bytes of a text in UTF-16 are mostly zero.
bool isUtf16(std::string_view body) {
    const std::string_view start = body.substr(0, 4);
    return start.starts_with("\xFF\xFE") || start.starts_with("\xFE\xFF") ||
           start.find('\0') != std::string_view::npos;
}

void tellUnreadable(std::string_view body, const std::string& reason, Ladder& ladder) {
    if (isUtf16(body)) {
        ladder.fail(Stage::Format, "JSON, in UTF-16",
                    reason + " JSON is read in UTF-8 only; this text is in UTF-16.",
                    "Have the source written in UTF-8.");
        return;
    }
    if (!intake::isValidUtf8(body)) {
        ladder.fail(Stage::Format, "JSON, not in UTF-8",
                    reason +
                        " JSON is read in UTF-8 only; this text is in another encoding, such "
                        "as ISO-8859-1.",
                    "Have the source written in UTF-8.");
        return;
    }
    const bool isCut = namesEnd(reason.substr(0, reason.find(':')), body);
    ladder.fail(Stage::Format, "JSON that is not whole or not right",
                reason + (isCut ? " The text ends there: it is cut off." : ""),
                isCut ? "Fetch it again, or ask whoever writes it." : "Have the source mended.");
}

class JsonLook {
public:
    JsonLook(const Settings& settings, const JsonDocument& document, Ladder& ladder)
        : settings_(settings), document_(document), ladder_(ladder) {}

    void look() {
        segments_ = pathSegments(settings_.xpath);
        if (settings_.xpath.empty()) return tellWholeDocument();
        nodes_ = intake::selectNodes(document_, intake::parsePath(settings_.xpath));
        if (nodes_.empty()) return tellStop();
        tellSelection();
        checkKinds();
        takeRows();
        checkKey();
        checkScript();
    }

private:
    bool isContainer(Node node) const { return document_.isContainer(node); }

    /// The plugin then writes one value and counts nothing.
    void tellWholeDocument() {
        ladder_.warn(Stage::Selection, "the whole document",
                     "\"XPath\" (xpath) is empty: the document is written as one value, and no "
                     "records are counted.",
                     "Set \"XPath\" (xpath) to the path of the records.");
        proposeArrays();
    }

    void tellStop() {
        const JsonStop stop(document_, segments_);
        if (stop.isEmptyArray()) {
            ladder_.ok(Stage::Selection,
                       spacedPath(segments_) +
                           ": 0 records: the array is there and is empty; the source is fine");
            ladder_.ok(Stage::Rows, "no record");
            ladder_.records = 0;
            return;
        }
        ladder_.add(Stage::Selection, stop.step());
        const std::vector<std::string> paths = stop.remedies();
        for (std::size_t i = 0; i < std::min(paths.size(), mostProposals); ++i)
            propose(Stage::Selection, paths[i]);
        if (paths.empty()) proposeArrays();
    }

    void propose(Stage stage, const std::string& path) {
        ladder_.propose(stage, {{"xpath", path}});
    }

    /// The arrays of objects, the largest first.
    void proposeArrays() {
        std::vector<std::pair<uint32_t, std::string>> arrays;
        findArrays(JsonDocument::ROOT, "", 0, arrays);
        std::stable_sort(arrays.begin(), arrays.end(),
                         [](const auto& a, const auto& b) { return a.first > b.first; });
        for (std::size_t i = 0; i < std::min(arrays.size(), mostProposals); ++i)
            propose(Stage::Selection, arrays[i].second);
    }

    void findArrays(Node node, const std::string& path, int depth,
                    std::vector<std::pair<uint32_t, std::string>>& found) const {
        constexpr int deepest = 6;
        constexpr std::size_t most = 100;
        const bool isArray = document_.type(node) == JsonDocument::Type::ARRAY;
        if (isArray && document_.childCount(node) > 0 &&
            document_.type(node + 1) == JsonDocument::Type::OBJECT) {
            found.emplace_back(document_.childCount(node), path.empty() ? "*" : path);
            return;
        }
        if (isArray || !isContainer(node) || depth == deepest) return;
        const Node end = document_.behind(node);
        for (Node child = node + 1; child != end && found.size() < most;
             child = document_.behind(child)) {
            if (canBeNamed(document_.name(child)))
                findArrays(child,
                           path + (path.empty() ? "" : "/") + std::string(document_.name(child)),
                           depth + 1, found);
        }
    }

    void tellSelection() {
        const auto isKind = [this](JsonDocument::Type type) {
            return std::all_of(nodes_.begin(), nodes_.end(),
                               [&](Node node) { return document_.type(node) == type; });
        };
        const char* const thing = isKind(JsonDocument::Type::OBJECT)   ? "object"
                                  : isKind(JsonDocument::Type::STRING) ? "text"
                                  : isKind(JsonDocument::Type::NUMBER) ? "number"
                                  : isKind(JsonDocument::Type::ARRAY)  ? "array"
                                                                       : "value";
        ladder_.ok(Stage::Selection, spacedPath(segments_) + ": " + counted(nodes_.size(), thing));
    }

    /// A single value is asked of each record where a field array or a text is written.
    void checkKinds() {
        const bool takesValues =
            settings_.mode == TargetMode::FieldArray || settings_.mode == TargetMode::SharedMemory;
        const auto container = std::find_if(nodes_.begin(), nodes_.end(),
                                            [this](Node node) { return isContainer(node); });
        if (!takesValues || container == nodes_.end()) return;
        const bool isObject = document_.type(*container) == JsonDocument::Type::OBJECT;
        ladder_.fail(
            Stage::Selection, spacedPath(segments_),
            std::string("The records are ") + (isObject ? "objects" : "arrays") + ", of which a " +
                (settings_.mode == TargetMode::FieldArray ? "Data Field Array" : "Shared Memory") +
                " takes nothing: it takes single values. They have: " +
                listOf(memberNames(document_, nodes_)) + ".",
            "Add the name of a member to \"XPath\" (xpath), or set \"Field is a: \" (mode) "
            "to DataArray.");
        for (const std::string& name : scalarMembers())
            propose(Stage::Selection, pathOf(segments_) + "/" + name);
        ladder_.propose(Stage::Selection, {{"mode", "DataArray"}});
    }

    void takeRows() {
        checkRows(settings_, nodes_.size(), "record", ladder_);
        nodes_ = loadedOf(nodes_, rowRangeOf(settings_));
        ladder_.records = nodes_.size();
    }

    bool needsKey() const {
        return settings_.mode == TargetMode::DataTable ||
               (settings_.mode == TargetMode::DataStructure && !settings_.key.empty());
    }

    void checkKey() {
        if (settings_.mode == TargetMode::DataStructure && settings_.key.empty())
            return tellOneStructure(nodes_.size(), ladder_);
        if (!needsKey()) return ladder_.ok(Stage::Key, "none is needed");
        if (nodes_.empty()) return;
        KeyTally tally(settings_.key, "member");
        bool isScalar = true;
        for (const Node node : nodes_) {
            const Node member = document_.find(node, settings_.key);
            if (member == JsonDocument::NONE) {
                tally.add(std::nullopt);
                continue;
            }
            isScalar = isScalar && !isContainer(member);
            tally.add(document_.asString(member));
        }
        ladder_.records = tally.entries();
        if (tally.missing() == nodes_.size()) return tellKeyMissing();
        if (!isScalar) return tellKeyIsNone();
        tally.tell(ladder_);
        if (ladder_.at(Stage::Key).state == State::Warning) proposeKeys();
    }

    void tellKeyMissing() {
        const std::vector<std::string> there = memberNames(document_, nodes_);
        const std::string has = there.empty() ? "The records are no objects and have no members."
                                              : "They have: " + listOf(there) + ".";
        ladder_.fail(Stage::Key, settings_.key,
                     "None of the " + counted(nodes_.size(), "record") + " has a member " +
                         quoted(settings_.key) + ", so all are left out. " + has,
                     "Set \"Key\" (key) to a member that names a record.");
        const std::string near = nearName(settings_.key, there);
        if (!near.empty()) ladder_.propose(Stage::Key, {{"key", near}});
        proposeKeys();
    }

    void tellKeyIsNone() {
        ladder_.fail(Stage::Key, settings_.key,
                     "The member " + quoted(settings_.key) +
                         " is an object or an array, which gives no text for a key.",
                     "Set \"Key\" (key) to a member with a text or a number.");
        proposeKeys();
    }

    /// The members that the first records all have as a text or a number, those first that are
    /// another one in each. What is proposed is loaded before it is shown.
    std::vector<std::string> scalarMembers() const {
        constexpr std::size_t mostMembers = 40;
        std::vector<std::string> unique;
        std::vector<std::string> repeated;
        std::vector<std::string> names = memberNames(document_, nodes_);
        names.resize(std::min(names.size(), mostMembers));
        for (const std::string& name : names) {
            const auto tally = tallyOf(name);
            if (!tally || !canBeNamed(name)) continue;
            (tally->entries() == tally->records() ? unique : repeated).push_back(name);
        }
        unique.insert(unique.end(), repeated.begin(), repeated.end());
        unique.resize(std::min(unique.size(), mostProposals));
        return unique;
    }

    std::optional<KeyTally> tallyOf(const std::string& name) const {
        constexpr std::size_t mostRecords = 1000;
        KeyTally tally(name, "member");
        for (std::size_t i = 0; i < std::min(nodes_.size(), mostRecords); ++i) {
            const Node member = document_.find(nodes_[i], name);
            if (member == JsonDocument::NONE || isContainer(member)) return std::nullopt;
            tally.add(document_.asString(member));
        }
        return tally;
    }

    void proposeKeys() {
        for (const std::string& name : scalarMembers())
            ladder_.propose(Stage::Key, {{"key", name}});
        ladder_.propose(Stage::Key, {{"mode", "DataArray"}});
    }

    void checkScript() {
        if (settings_.mode == TargetMode::SharedMemory) return ladder_.ok(Stage::Script, "");
        ScriptCheck check(settings_);
        for (const Node node : nodes_) {
            const Node key = needsKey() ? document_.find(node, settings_.key) : JsonDocument::NONE;
            if (needsKey() && key == JsonDocument::NONE) continue;
            if (key != JsonDocument::NONE) check.key(document_.asString(key));
            for (Node each = node; each != document_.behind(node); ++each) {
                checkValue(each, each != node, check);
                if (document_.type(each) == JsonDocument::Type::OBJECT) check.record(namesIn(each));
            }
        }
        check.tell(ladder_);
    }

    std::vector<std::string_view> namesIn(Node object) const {
        std::vector<std::string_view> names;
        for (Node each = JsonDocument::firstChild(object); each != document_.behind(object);
             each = document_.behind(each))
            names.push_back(document_.name(each));
        return names;
    }

    void checkValue(Node node, bool isMember, ScriptCheck& check) const {
        const bool isElement = isMember && document_.name(node).empty();
        if (isMember && !isElement) check.name(document_.name(node));
        if (document_.type(node) == JsonDocument::Type::STRING)
            check.value(document_.name(node), document_.asString(node));
    }

    const Settings& settings_;
    const JsonDocument& document_;
    Ladder& ladder_;
    std::vector<PathSegment> segments_;
    Nodes nodes_;
};

}  // namespace

void lookAtJson(const Settings& settings, std::string_view body, Ladder& ladder) {
    try {
        const JsonDocument document(bufferOf(body));
        ladder.ok(Stage::Format, "JSON");
        JsonLook(settings, document, ladder).look();
    } catch (const std::invalid_argument& fault) {
        tellUnreadable(body, fault.what(), ladder);
    }
}

}  // namespace probe
