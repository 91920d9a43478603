#include "workbench/probe/explain/JsonStop.h"

#include <algorithm>

#include "formats/json/json_select.h"
#include "workbench/probe/NameList.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

using intake::JsonDocument;
using Node = JsonDocument::Node;
using Nodes = std::vector<Node>;

// In the order of JsonDocument::Type.
constexpr std::array<const char*, 6> typeWords{"null",     "a text",   "a number",
                                               "a switch", "an array", "an object"};

const char* wordsFor(const JsonDocument& document, Node node) {
    return typeWords[static_cast<std::size_t>(document.type(node))];
}

Nodes select(const JsonDocument& document, const std::string& path) {
    return intake::selectNodes(document, intake::parsePath(path));
}

template <class Visit>
void forEachChild(const JsonDocument& document, Node node, Visit visit) {
    if (!document.isContainer(node)) return;
    const Node end = document.behind(node);
    for (Node child = JsonDocument::firstChild(node); child != end; child = document.behind(child))
        visit(child);
}

std::string elementsWords(std::size_t count) {
    return count == 1 ? "1 element" : std::to_string(count) + " elements";
}

}  // namespace

std::vector<std::string> memberNames(const JsonDocument& document, const Nodes& nodes) {
    NameList list;
    for (const Node node : nodes) {
        forEachChild(document, node, [&](Node child) {
            if (!document.name(child).empty()) list.add(document.name(child));
        });
    }
    return list.names();
}

std::string spacedPath(const std::vector<PathSegment>& segments) {
    std::string text;
    for (const PathSegment& each : segments)
        text += (each.anyDepth ? (text.empty() ? "// " : " // ") : (text.empty() ? "" : " / ")) +
                each.text;
    return text.empty() ? "/" : text;
}

JsonStop::JsonStop(const JsonDocument& document, std::vector<PathSegment> segments)
    : document_(document), segments_(std::move(segments)), parents_{JsonDocument::ROOT} {
    for (; stop_ + 1 < segments_.size(); ++stop_) {
        Nodes found = select(document_, pathOf(segments_, stop_ + 1));
        if (found.empty()) return;
        parents_ = std::move(found);
    }
}

/// What has the name that the step asks for, whatever else it asks for.
Nodes JsonStop::matches() const {
    const PathSegment& segment = segments_[stop_];
    const std::string wanted = nameIn(segment);
    Nodes found;
    for (const Node parent : parents_) {
        const auto take = [&](Node child) {
            if (wanted == "*" || document_.name(child) == wanted) found.push_back(child);
        };
        if (!segment.anyDepth) {
            forEachChild(document_, parent, take);
        } else if (document_.isContainer(parent)) {
            for (Node below = parent + 1; below != document_.behind(parent); ++below)
                take(below);
        }
    }
    return found;
}

bool JsonStop::isEmptyArray() const {
    const auto isEmpty = [this](Node node) {
        return document_.type(node) == JsonDocument::Type::ARRAY && document_.childCount(node) == 0;
    };
    const Nodes found = matches();
    const bool ofRoot = segments_.empty() || found.empty();
    if (ofRoot) return stop_ == 0 && isEmpty(JsonDocument::ROOT);
    return std::all_of(found.begin(), found.end(), isEmpty);
}

std::vector<std::string> JsonStop::names() const {
    if (!segments_[stop_].anyDepth) return memberNames(document_, parents_);
    Nodes containers;
    for (const Node parent : parents_) {
        for (Node below = parent; below != document_.behind(parent); ++below) {
            if (document_.type(below) == JsonDocument::Type::OBJECT) containers.push_back(below);
        }
    }
    return memberNames(document_, containers);
}

std::string JsonStop::parentWords() const {
    return stop_ == 0 ? "The document" : quoted(segments_[stop_ - 1].text);
}

/// Something has the name, but not the element or the member that is asked for behind it.
std::string JsonStop::causeOfMatches(const Nodes& matches) const {
    const intake::PathStep step = intake::parsePath(pathOf({{segments_[stop_].text}})).front();
    std::size_t elements = 0;
    NameList values;
    for (const Node match : matches) {
        const auto note = [&](Node candidate) {
            const Node member = document_.find(candidate, step.field);
            if (member != JsonDocument::NONE) values.add(document_.asString(member));
        };
        if (document_.type(match) != JsonDocument::Type::ARRAY) {
            note(match);
            continue;
        }
        elements = std::max<std::size_t>(elements, document_.childCount(match));
        forEachChild(document_, match, note);
    }
    const std::string name = quoted(step.name);
    if (step.kind == intake::PathStep::Kind::INDEX)
        return name + " has " + elementsWords(elements) + ", counted from 0.";
    if (step.kind == intake::PathStep::Kind::FILTER)
        return values.names().empty()
                   ? "Nothing in " + name + " has a member " + quoted(step.field) + "."
                   : "Nothing in " + name + " has " + quoted(step.value) + " for its " +
                         quoted(step.field) + ". There are: " + listOf(values.names()) + ".";
    return name + " holds nothing.";
}

Step JsonStop::step() const {
    Step step;
    step.state = State::Failed;
    step.seen = spacedPath(segments_);
    step.place = segments_[stop_].text;
    const std::vector<PathSegment> upTo(segments_.begin(),
                                        segments_.begin() + static_cast<std::ptrdiff_t>(stop_) + 1);
    step.placeOffset = spacedPath(upTo).size() - step.place.size();
    step.next = "Set \"XPath\" (xpath) to a path of names that are there.";
    const Nodes found = matches();
    const std::vector<std::string> there = names();
    const std::string converted = fromJsonPath(pathOf(segments_));
    const bool isOtherNotation = found.empty() && !converted.empty() && selects(converted);
    if (!found.empty()) {
        step.cause = causeOfMatches(found);
    } else if (!there.empty()) {
        step.cause = parentWords() +
                     (segments_[stop_].anyDepth ? " has nowhere a member " : " has no member ") +
                     quoted(nameIn(segments_[stop_])) + ". It has: " + listOf(there) + ".";
    } else {
        const Node first = parents_.front();
        const bool isArray = document_.type(first) == JsonDocument::Type::ARRAY;
        step.cause = parentWords() + " is " + wordsFor(document_, first) +
                     (isArray ? ", whose elements have no names; \"*\" takes them all."
                              : " and has no members.");
    }
    if (isOtherNotation) step.cause += " In a path of the plugin, slashes stand between the names.";
    return step;
}

bool JsonStop::selects(const std::string& path) const {
    return !select(document_, path).empty();
}

/// The path with each name that is not there replaced by the nearest that is; empty when that does
/// not help.
std::string JsonStop::mended() const {
    std::vector<PathSegment> segments = segments_;
    for (std::size_t tries = 0; tries <= segments.size(); ++tries) {
        const JsonStop stop(document_, segments);
        if (selects(pathOf(segments))) return pathOf(segments);
        const std::string near = nearName(nameIn(segments[stop.stop_]), stop.names());
        if (near.empty() || near == nameIn(segments[stop.stop_]) || !canBeNamed(near)) return "";
        segments[stop.stop_] = renamed(segments[stop.stop_], near);
    }
    return "";
}

std::vector<std::string> JsonStop::remedies() const {
    constexpr std::size_t mostTried = 50;
    std::vector<std::string> candidates{fromJsonPath(pathOf(segments_)),
                                        pathOf(withoutDots(segments_)), mended()};
    const std::string rest =
        pathOf({segments_.begin() + static_cast<std::ptrdiff_t>(stop_) + 1, segments_.end()});
    const std::string before = pathOf(segments_, stop_);
    const auto joined = [&](const std::string& step) {
        return before + (before.empty() ? "" : "/") + step + (rest.empty() ? "" : "/" + rest);
    };
    // What has the name is meant, whichever of its elements.
    const bool isNamed = !matches().empty();
    if (isNamed) candidates.push_back(joined(nameIn(segments_[stop_])));
    const std::vector<std::string> there = isNamed ? std::vector<std::string>{} : names();
    for (std::size_t i = 0; i < std::min(there.size(), mostTried) && !rest.empty(); ++i) {
        if (canBeNamed(there[i])) candidates.push_back(joined(there[i]));
    }
    const bool isUnnamed = !isNamed && there.empty() && document_.isContainer(parents_.front());
    if (isUnnamed) {
        candidates.push_back(joined("*"));
        candidates.push_back(joined("*/" + segments_[stop_].text));
    }
    candidates.push_back(
        "/" + pathOf({segments_.begin() + static_cast<std::ptrdiff_t>(stop_), segments_.end()}));
    std::vector<std::string> paths;
    for (const std::string& each : candidates) {
        const bool isNew = std::find(paths.begin(), paths.end(), each) == paths.end();
        if (!each.empty() && isNew && selects(each)) paths.push_back(each);
    }
    return paths;
}

}  // namespace probe
