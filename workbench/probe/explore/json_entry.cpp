#include "workbench/probe/explore/json_entry.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <unordered_set>

#include "formats/json/json_select.h"
#include "formats/text/trim.h"
#include "workbench/probe/LookFailure.h"
#include "workbench/probe/explore/OutlinePage.h"
#include "workbench/probe/explore/PathTree.h"
#include "workbench/probe/explore/Wanted.h"
#include "workbench/probe/json_path_text.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

using intake::JsonDocument;
using Node = JsonDocument::Node;

constexpr std::size_t longestPath = 511;  // bytes, of the parameter
constexpr std::size_t mostWheres = 20;    // for each of which all entries are looked at

intake::ByteBuffer bufferOf(const std::string& body) {
    intake::ByteBuffer buffer;
    std::memcpy(buffer.prepare(body.size() + 1), body.c_str(), body.size() + 1);
    buffer.commit(body.size() + 1);
    return buffer;
}

PathTree::Kind kindOf(JsonDocument::Type type) {
    switch (type) {
        case JsonDocument::Type::NULL_VALUE:
            return PathTree::Kind::Null;
        case JsonDocument::Type::STRING:
            return PathTree::Kind::Text;
        case JsonDocument::Type::NUMBER:
            return PathTree::Kind::Number;
        case JsonDocument::Type::BOOL:
            return PathTree::Kind::Switch;
        case JsonDocument::Type::ARRAY:
            return PathTree::Kind::Array;
        case JsonDocument::Type::OBJECT:
            return PathTree::Kind::Object;
    }
    return PathTree::Kind::Null;
}

/// Whether a step can ask for a member of that value.
bool canBeAsked(std::string_view field, std::string_view value) {
    constexpr std::string_view blanks = " \f\n\r\t\v";
    const auto isPlain = [&](std::string_view text) {
        return text.find_first_of(std::string_view("/]\0", 3)) == std::string_view::npos &&
               intake::trimmed(text, blanks).size() == text.size();
    };
    return canBeNamed(field) && field.find('=') == std::string_view::npos &&
           !field.starts_with('@') && isPlain(field) && isPlain(value);
}

class JsonEntry {
public:
    JsonEntry(const JsonDocument& document, const OutlineWish& wish)
        : document_(document), wish_(wish), path_(wish.place) {
        end_ = document.behind(JsonDocument::ROOT);
        const bool isOfRoot = path_.starts_with("*[") &&
                              document.type(JsonDocument::ROOT) == JsonDocument::Type::ARRAY;
        if (isOfRoot) takeElementOfRoot();
    }

    Outline make() {
        const Selected here = selected(path_);
        if (here.nodes.empty()) throw LookFailure("has nothing at " + quoted(wish_.place));
        const Wanted wanted(wish_.find);
        OutlinePage page(wish_);
        OutlineEntry entry = entryOf(wish_.place, wish_.place, here, path_);
        entry.place.clear();
        if (wanted.isIn(entry.name)) page.add(std::move(entry));
        for (const std::string& name : namesIn(here.nodes)) {
            const std::string path = path_ + "/" + name;
            OutlineEntry member = entryOf(name, wish_.place + "/" + name, selected(path), path);
            member.depth = 1;
            if (!wanted.isIn(name) && !wanted.isIn(member.value)) continue;
            if (page.wantsNext()) addWhere(here.nodes.front(), member);
            page.add(std::move(member));
        }
        return page.take();
    }

private:
    /// What a path selects within the entry.
    struct Selected {
        std::vector<Node> nodes;
        std::size_t first = 0;  // the position of the first of them among all that it selects
    };

    /// A path cannot tell the elements of such a document apart: rows are counted instead.
    void takeElementOfRoot() {
        const auto close = std::min(path_.find(']'), path_.size());
        const auto steps = intake::parsePath(path_.substr(0, close + 1));
        if (steps.front().kind != intake::PathStep::Kind::INDEX) return;
        isOfRoot_ = true;
        path_ = "*" + path_.substr(std::min(close + 1, path_.size()));
        begin_ = JsonDocument::firstChild(JsonDocument::ROOT);
        for (int32_t i = 0; begin_ != end_ && i < steps.front().index; ++i)
            begin_ = document_.behind(begin_);
        if (begin_ != end_) end_ = document_.behind(begin_);
    }

    Selected selected(const std::string& path) const {
        std::vector<Node> all = intake::selectNodes(document_, intake::parsePath(path));
        const auto first = std::lower_bound(all.begin(), all.end(), begin_);
        const auto last = std::lower_bound(first, all.end(), end_);
        return {{first, last}, static_cast<std::size_t>(first - all.begin())};
    }

    Proposal settingsFor(const std::string& path, const Selected& found) const {
        if (path.size() > longestPath) return {};
        if (!isOfRoot_) return {{"xpath", path}};
        return {{"xpath", path},
                {"fromRow", std::to_string(found.first)},
                {"numRows", std::to_string(found.nodes.size())}};
    }

    OutlineEntry entryOf(const std::string& name, const std::string& place, const Selected& found,
                         const std::string& path) const {
        OutlineEntry entry;
        entry.name = name;
        entry.records = found.nodes.size();
        uint8_t kinds = 0;
        bool hasMembers = false;
        for (const Node node : found.nodes) {
            const auto kind = static_cast<unsigned>(kindOf(document_.type(node)));
            kinds = static_cast<uint8_t>(kinds | 1U << kind);
            if (document_.isContainer(node)) {
                hasMembers = hasMembers || document_.childCount(node) > 0;
            } else if (entry.value.empty()) {
                entry.value = startOf(document_.asString(node));
            }
        }
        entry.kind = wordsForKinds(kinds);
        if (hasMembers) entry.place = place;
        if (!found.nodes.empty()) entry.settings = settingsFor(path, found);
        return entry;
    }

    /// The names that a path can ask for, each once.
    std::vector<std::string> namesIn(const std::vector<Node>& nodes) const {
        std::vector<std::string> names;
        for (const Node node : nodes) {
            if (!document_.isContainer(node)) continue;
            const bool isArray = document_.type(node) == JsonDocument::Type::ARRAY;
            const Node end = document_.behind(node);
            for (Node child = JsonDocument::firstChild(node); child != end;
                 child = document_.behind(child)) {
                std::string name(isArray ? "*" : document_.name(child));
                if (isArray || canBeNamed(name)) names.push_back(std::move(name));
            }
        }
        std::vector<std::string> once;
        std::unordered_set<std::string_view> seen;
        for (const std::string& name : names) {
            if (seen.insert(name).second) once.push_back(name);
        }
        return once;
    }

    /// The path of all entries that have the value that this one has.
    void addWhere(Node node, OutlineEntry& member) {
        const Node found = document_.find(node, member.name);
        if (found == JsonDocument::NONE || document_.isContainer(found)) return;
        const std::string_view value = document_.asString(found);
        const auto bracket = path_.rfind('[');
        const bool isIndexed = bracket != std::string::npos && path_.ends_with(']');
        const bool isElement = isIndexed || (isOfRoot_ && path_ == "*");
        if (!isElement || !canBeAsked(member.name, value) || ++wheres_ > mostWheres) return;
        const std::string path =
            path_.substr(0, bracket) + "[" + member.name + "=" + std::string(value) + "]";
        const auto nodes = intake::selectNodes(document_, intake::parsePath(path));
        const bool isFound = std::find(nodes.begin(), nodes.end(), node) != nodes.end();
        if (isFound && path.size() <= longestPath)
            member.where = Choice{{{"xpath", path}}, nodes.size()};
    }

    const JsonDocument& document_;
    const OutlineWish& wish_;
    std::string path_;                 // of the place, but for the position in the document itself
    bool isOfRoot_ = false;            // the place is in an element of the document
    Node begin_ = JsonDocument::ROOT;  // of the nodes that are looked at
    Node end_ = JsonDocument::ROOT;
    std::size_t wheres_ = 0;
};

}  // namespace

bool isJsonEntry(const std::string& place) {
    return place.find('[') != std::string::npos;
}

Outline jsonEntryOutline(const std::string& body, const OutlineWish& wish) {
    try {
        const JsonDocument document(bufferOf(body));
        return JsonEntry(document, wish).make();
    } catch (const std::invalid_argument&) {
        throw LookFailure("is no JSON that can be read; explain says where it ends");
    }
}

}  // namespace probe
