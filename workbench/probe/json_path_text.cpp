#include "workbench/probe/json_path_text.h"

#include <algorithm>

#include "formats/text/trim.h"

namespace probe {

namespace {

constexpr std::string_view whiteSpace = " \f\n\r\t\v";

bool isQuoted(std::string_view text) {
    return text.size() >= 2 && (text.front() == '\'' || text.front() == '"') &&
           text.back() == text.front();
}

std::string_view unquoted(std::string_view text) {
    return isQuoted(text) ? text.substr(1, text.size() - 2) : text;
}

/// ?(@.id == 7) as @id=7; empty for any other test.
std::string filterIn(std::string_view content) {
    content = intake::trimmed(content.substr(1), " ()");
    const auto equals = content.find("==");
    if (!content.starts_with("@.") || equals == std::string_view::npos) return "";
    const auto field = intake::trimmed(content.substr(2, equals - 2), " ");
    const auto value = unquoted(intake::trimmed(content.substr(equals + 2), " "));
    return "[@" + std::string(field) + "=" + std::string(value) + "]";
}

/// What stands in a pair of brackets: a name in quotes is a step, any element is no word, an index
/// stays.
std::string fromBrackets(std::string_view content) {
    if (isQuoted(content)) return "/" + std::string(unquoted(content));
    if (content == "*") return "";
    if (content.starts_with('?')) return filterIn(content);
    return "[" + std::string(content) + "]";
}

}  // namespace

std::vector<PathSegment> pathSegments(std::string_view path) {
    std::vector<PathSegment> segments;
    bool anyDepth = false;
    for (std::size_t start = 0; start < path.size();) {
        const std::size_t slash = std::min(path.find('/', start), path.size());
        const auto segment = intake::trimmed(path.substr(start, slash - start), whiteSpace);
        if (!segment.empty()) segments.push_back({std::string(segment), anyDepth});
        anyDepth = segment.empty();
        start = slash + 1;
    }
    return segments;
}

std::string pathOf(const std::vector<PathSegment>& segments, std::size_t count) {
    std::string path;
    for (std::size_t i = 0; i < count; ++i)
        path +=
            std::string(i > 0 ? "/" : "") + (segments[i].anyDepth ? "/" : "") + segments[i].text;
    return path;
}

std::string pathOf(const std::vector<PathSegment>& segments) {
    return pathOf(segments, segments.size());
}

std::string nameIn(const PathSegment& segment) {
    return segment.text.substr(0, segment.text.find('['));
}

PathSegment renamed(const PathSegment& segment, std::string_view name) {
    const auto bracket = std::min(segment.text.find('['), segment.text.size());
    return {std::string(name) + segment.text.substr(bracket), segment.anyDepth};
}

std::vector<PathSegment> withoutDots(const std::vector<PathSegment>& segments) {
    std::vector<PathSegment> kept;
    for (const PathSegment& each : segments) {
        if (each.text == "..") {
            if (!kept.empty()) kept.pop_back();
        } else if (each.text != ".") {
            kept.push_back(each);
        }
    }
    return kept;
}

bool canBeNamed(std::string_view name) {
    return !name.empty() && name != "*" && name.find_first_of("/[") == std::string_view::npos &&
           intake::trimmed(name, whiteSpace).size() == name.size() &&
           name.find('\0') == std::string_view::npos;
}

std::string fromJsonPath(std::string_view path) {
    const bool hasRoot = path.starts_with('$');
    if (!hasRoot && (path.find('/') != std::string_view::npos || path.find('.') == path.npos))
        return "";
    if (hasRoot) path.remove_prefix(1);
    std::string converted;
    while (!path.empty()) {
        if (path.front() == '[') {
            const auto end = std::min(path.find(']'), path.size() - 1);
            converted += fromBrackets(path.substr(1, end - 1));
            path.remove_prefix(end + 1);
        } else {
            converted += path.front() == '.' ? '/' : path.front();
            path.remove_prefix(1);
        }
    }
    const bool fromAnyDepth = converted.starts_with("//");
    return fromAnyDepth || !converted.starts_with('/') ? converted : converted.substr(1);
}

}  // namespace probe
