#include "workbench/probe/explore/json_outline.h"

#include <rapidjson/reader.h>

#include "formats/json/take_number.h"
#include "formats/text/utf8.h"
#include "workbench/probe/LookFailure.h"
#include "workbench/probe/explore/json_entry.h"
#include "workbench/probe/explore/path_index.h"
#include "workbench/probe/json_path_text.h"

namespace probe {

namespace {

using Id = PathTree::Id;
using Kind = PathTree::Kind;

constexpr const char* anyName = "*";
constexpr std::size_t longestPath = 511;  // bytes, of the parameter

/// Puts the values of a document where the paths that select them are: a path takes the members of
/// a name, and of a member that is an array its elements.
class PathEvents : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, PathEvents> {
public:
    using Length = rapidjson::SizeType;

    explicit PathEvents(PathSink& paths) : paths_(paths) {}

    bool Null() { return scalar(Kind::Null, {}); }
    bool Bool(bool value) { return scalar(Kind::Switch, value ? "true" : "false"); }
    bool RawNumber(const char* text, Length length, bool) {
        return scalar(Kind::Number, {text, length});
    }
    bool String(const char* text, Length length, bool) {
        return scalar(Kind::Text, {text, length});
    }
    bool Key(const char* name, Length length, bool) {
        name_.assign(name, length);
        return true;
    }
    bool StartObject() {
        open_.push_back({selected(Kind::Object), false, 0});
        return true;
    }
    bool StartArray() {
        // An array that a name has selected gives its elements; one that is itself an element, or
        // the document, is a value.
        const bool isSelected = !open_.empty() && !open_.back().passesElements;
        if (isSelected) {
            open_.push_back({classOfChild(), true, 0});
        } else {
            open_.push_back({selected(Kind::Array), false, 0, true});
        }
        return true;
    }
    bool EndObject(Length) { return close(); }
    bool EndArray(Length) { return close(); }

private:
    struct Container {
        Id place;             // of the node, or of the elements of the array
        bool passesElements;  // an array that a name has selected: its elements are the values
        std::size_t hint;
        bool isArray = false;  // a node that is an array: its elements have no names
    };

    /// Where a child of the innermost container is.
    Id classOfChild() {
        Container& in = open_.back();
        return paths_.child(in.place, in.isArray ? anyName : std::string_view(name_), in.hint);
    }

    /// Counts a value where a path selects it, and says where that is.
    Id selected(Kind kind, std::string_view value = {}) {
        const Id place = open_.empty()                 ? PathTree::ROOT
                         : open_.back().passesElements ? open_.back().place
                                                       : classOfChild();
        paths_.count(place, kind, value);
        return place;
    }

    bool scalar(Kind kind, std::string_view value) {
        paths_.end(selected(kind, value));
        return !paths_.hasEnough();
    }

    bool close() {
        if (!open_.back().passesElements) paths_.end(open_.back().place);
        open_.pop_back();
        return !paths_.hasEnough();
    }

    PathSink& paths_;
    std::vector<Container> open_;
    std::string name_;
};

constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag |
                           rapidjson::kParseValidateEncodingFlag;

}  // namespace

}  // namespace probe

// As the plugin does, which takes numbers of any size.
template <>
template <>
void rapidjson::Reader::ParseNumber<probe::flags, rapidjson::StringStream, probe::PathEvents>(
    rapidjson::StringStream& stream, probe::PathEvents& events) {
    rapidjson::internal::StreamLocalCopy<rapidjson::StringStream> copy(stream);
    const char* const start = copy.s.src_;
    const ParseErrorCode error = intake::takeNumber(copy.s);
    if (error != kParseErrorNone) {
        RAPIDJSON_PARSE_ERROR(error, copy.s.Tell());
    }
    if (!events.RawNumber(start, static_cast<SizeType>(copy.s.src_ - start), true)) {
        RAPIDJSON_PARSE_ERROR(kParseErrorTermination, copy.s.Tell());
    }
}

namespace probe {

namespace {

void read(const std::string& body, PathSink& paths) {
    const bool hasMark = body.starts_with(intake::UTF8_MARK);
    rapidjson::StringStream stream(body.data() + (hasMark ? intake::UTF8_MARK.size() : 0));
    PathEvents events(paths);
    rapidjson::Reader reader;
    const bool isRead = !reader.Parse<flags>(stream, events).IsError();
    if (paths.hasEnough()) return;
    const bool hasRest = stream.src_ != body.data() + body.size();  // behind a zero byte
    if (!isRead || hasRest)
        throw LookFailure("is no JSON that can be read; explain says where it ends");
}

/// The path that selects a node; nothing when none does.
std::string pathTo(const PathTree& tree, Id node) {
    std::string path;
    for (Id each = node; each != PathTree::ROOT; each = tree.at(each).parent) {
        const std::string& name = tree.at(each).name;
        const bool isAny = name == anyName;
        const bool isMixed = isAny && tree.at(tree.at(each).parent).children.size() > 1;
        if (isMixed || (!isAny && !canBeNamed(name))) return "";
        path = path.empty() ? name : name + "/" + path;
    }
    return path.size() <= longestPath ? path : "";
}

std::vector<std::string> namesIn(const std::string& place) {
    std::vector<std::string> names;
    for (const PathSegment& segment : pathSegments(place))
        names.push_back((segment.anyDepth ? "//" : "") + segment.text);
    return names;
}

OutlineEntry entryFor(const PathTree& tree, Id node) {
    const PathTree::Node& found = tree.at(node);
    const std::string path = pathTo(tree, node);
    OutlineEntry entry{0,
                       found.name,
                       wordsForKinds(found.kinds),
                       found.records,
                       found.match.empty() ? found.value : found.match,
                       "",
                       {}};
    if (path.empty()) return entry;
    entry.settings = {{"xpath", path}};
    if (!found.children.empty()) entry.place = path;
    return entry;
}

}  // namespace

Outline jsonOutline(const std::string& body, const OutlineWish& wish) {
    if (isJsonEntry(wish.place)) return jsonEntryOutline(body, wish);
    const std::vector<std::string> place = namesIn(wish.place);
    const auto tree = pathIndex(body.size(), wish, place, [&](PathSink& paths) {
        read(body, paths);
        return true;
    });
    const Id from = placeIn(*tree, wish, place);
    Outline outline = outlineOf(*tree, from, wish, [&](Id node) { return entryFor(*tree, node); });
    if (wantsPreview(wish)) {
        PathPreview preview(place, columnsOf(outline));
        read(body, preview);
        outline.preview = previewOf(preview, *tree, from, [&](std::size_t row) {
            return wish.place + "[" + std::to_string(row) + "]";
        });
    }
    return outline;
}

}  // namespace probe
