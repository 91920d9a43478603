#include "formats/json/json_path.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

#include "formats/text/ascii.h"
#include "formats/text/trim.h"

namespace intake {

namespace {

constexpr std::string_view WHITE_SPACE = " \f\n\r\t\v";
constexpr std::string_view WHITE_SPACE_AND_AT = " \f\n\r\t\v@";

bool isDecimal(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), isDigit);
}

int32_t toIndex(std::string_view digits) {
    int32_t index = 0;
    const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), index);
    return parsed.ec == std::errc{} ? index : std::numeric_limits<int32_t>::max();
}

/// Reads what stands between the brackets of a segment.
void parseContent(std::string_view content, PathStep& step) {
    if (isDecimal(content)) {
        step.kind = PathStep::Kind::INDEX;
        step.index = toIndex(content);
        return;
    }
    const size_t equals = content.find('=');
    if (content == "*" || equals == std::string_view::npos) {
        return;
    }
    step.kind = PathStep::Kind::FILTER;
    step.field = trimmed(content.substr(0, equals), WHITE_SPACE_AND_AT);
    step.value = trimmed(content.substr(equals + 1), WHITE_SPACE);
}

PathStep parseSegment(std::string_view segment, bool directChildren) {
    PathStep step;
    step.directChildren = directChildren;
    const size_t bracket = segment.find('[');
    step.name = segment.substr(0, bracket);
    if (bracket != std::string_view::npos) {
        const std::string_view rest = segment.substr(bracket + 1);
        parseContent(rest.substr(0, rest.find(']')), step);
    }
    return step;
}

}  // namespace

std::vector<PathStep> parsePath(std::string_view path) {
    std::vector<PathStep> steps;
    bool directChildren = true;
    for (size_t start = 0; start < path.size();) {
        const size_t slash = std::min(path.find('/', start), path.size());
        const std::string_view segment = trimmed(path.substr(start, slash - start), WHITE_SPACE);
        if (!segment.empty()) {
            steps.push_back(parseSegment(segment, directChildren));
        }
        directChildren = !segment.empty();
        start = slash + 1;
    }
    return steps;
}

}  // namespace intake
