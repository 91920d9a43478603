#include "workbench/probe/xpath_text.h"

#include <algorithm>

#include "formats/text/trim.h"

namespace probe {

namespace {

constexpr std::string_view blanks = " \t\r\n";

/// The position of the next of `signs` outside of brackets and literals; the size where there is
/// none.
std::size_t findOutside(std::string_view text, std::string_view signs, std::size_t from) {
    int depth = 0;
    for (std::size_t at = from; at < text.size(); ++at) {
        const char sign = text[at];
        if (depth == 0 && signs.find(sign) != std::string_view::npos) return at;
        if (sign == '[' || sign == '(') ++depth;
        if (sign == ']' || sign == ')') --depth;
        if (sign == '\'' || sign == '"') at = std::min(text.find(sign, at + 1), text.size() - 1);
    }
    return text.size();
}

XPathStep stepOf(std::string_view text, bool anyDepth) {
    XPathStep step;
    step.anyDepth = anyDepth;
    const auto bracket = findOutside(text, "[", 0);
    step.predicates = text.substr(bracket);
    std::string_view test = intake::trimmed(text.substr(0, bracket), blanks);
    const auto axisEnd = test.find("::");
    const std::size_t axis = test.starts_with('@')               ? 1
                             : axisEnd == std::string_view::npos ? 0
                                                                 : axisEnd + 2;
    step.axis = test.substr(0, axis);
    step.name = intake::trimmed(test.substr(axis), blanks);
    return step;
}

bool isPlainTest(const XPathStep& step) {
    const bool isCall = step.name.find('(') != std::string::npos && step.name != "text()" &&
                        step.name != "node()" && step.name != "comment()";
    return !step.name.empty() && !isCall && step.name.find_first_of("$=<>+,!") == std::string::npos;
}

}  // namespace

bool XPathStep::isName() const {
    return name != "*" && name != "." && name != ".." && name.find('(') == std::string::npos;
}

std::string XPathStep::localName() const {
    return name.substr(name.find(':') + 1);
}

std::string XPathStep::prefix() const {
    const auto colon = name.find(':');
    return colon == std::string::npos ? "" : name.substr(0, colon);
}

std::string LocationPath::text(std::size_t count) const {
    std::string path;
    for (std::size_t i = 0; i < count; ++i) {
        const bool hasSlash = i > 0 || isAbsolute;
        path += (steps[i].anyDepth ? "//" : hasSlash ? "/" : "") + steps[i].text();
    }
    return path.empty() && isAbsolute ? "/" : path;
}

std::string declarationOf(std::string_view prefix, std::string_view address) {
    std::string declaration = "xmlns:" + std::string(prefix) + "=\"";
    for (const char sign : address)
        declaration += sign == '&'   ? "&amp;"
                       : sign == '<' ? "&lt;"
                       : sign == '"' ? "&quot;"
                                     : std::string(1, sign);
    return declaration + '"';
}

LocationPath locationPath(std::string_view expression) {
    expression = intake::trimmed(expression, blanks);
    LocationPath path;
    if (findOutside(expression, "|", 0) != expression.size()) return path;
    path.isAbsolute = expression.starts_with('/');
    bool anyDepth = false;
    for (std::size_t start = path.isAbsolute ? 1 : 0; start <= expression.size();) {
        const auto slash = findOutside(expression, "/", start);
        const auto text = intake::trimmed(expression.substr(start, slash - start), blanks);
        if (!text.empty()) {
            path.steps.push_back(stepOf(text, anyDepth));
            if (!isPlainTest(path.steps.back())) return {};
        }
        anyDepth = text.empty();
        start = slash + 1;
    }
    return path;
}

}  // namespace probe
