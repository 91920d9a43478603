#include "formats/xml/xpath_rewriting.h"

#include <algorithm>
#include <array>
#include <vector>

#include "formats/text/ascii.h"
#include "formats/text/trim.h"

namespace intake {

namespace {

constexpr std::array<std::string_view, 4> OPERATOR_NAMES{"and", "or", "div", "mod"};
constexpr std::string_view OPERATOR_SIGNS = "=!<>+-";

bool isNameStart(char character) {
    return isLetter(character) || character == '_' || !isAscii(character);
}

bool isNameCharacter(char character) {
    return isNameStart(character) || isDigit(character) || character == '-' || character == '.';
}

bool isSpace(char character) {
    return XML_SPACE.find(character) != std::string_view::npos;
}

/// Whether a path cannot lead to more than one element: then the library has nothing to compare.
bool isOneNode(std::string_view path) {
    path = trimmed(path, XML_SPACE);
    const bool isRoot = path.starts_with('/') && path.rfind('/') == 0 &&
                        path.find("::") == std::string_view::npos;  // not /descendant::a
    return isRoot || path == "." || path == "..";
}

bool isBlank(std::string_view text) {
    return trimmed(text, XML_SPACE).empty();
}

std::string joined(const std::vector<std::string>& parts, std::string_view sign) {
    std::string text = parts.front();
    for (size_t i = 1; i < parts.size(); ++i) {
        text.append(sign).append(parts[i]);
    }
    return text;
}

/// The blank keeps an operator before it apart.
std::string call(const char* function, const std::string& arguments) {
    return std::string(" ") + function + "(" + arguments + ")";
}

/// Goes through an expression token by token, level by level of its brackets.
class Rewriter {
public:
    Rewriter(std::string_view text, std::vector<std::string>& steps) : text_(text), steps_(steps) {}

    /// Rewrites all up to the end or to a closing bracket that was not opened.
    std::string rewriteLevel();

    bool isAtEnd() const { return at_ == text_.size(); }
    std::string_view rest() const { return text_.substr(at_); }

private:
    /// What stands between two operators or commas of one level.
    struct Operand {
        std::vector<std::string> paths;  // of a union, but for the last
        std::string path;
        bool isComplete = false;  // what follows can only be an operator, or go on with a slash

        std::string take();
    };

    bool isAtChild();
    bool isAtJudgedChild();
    bool isAtSlowAxis();
    bool isAtSlowStep(const Operand& operand, std::string_view slashes);
    void takeSlowStep(Operand& operand, std::string_view slashes);
    std::string takeAxis();
    std::string takeStep();
    bool takeOperator(Operand& operand, std::string& level);
    const char* descend();
    bool takesAllNodes(const Operand& operand, std::string_view slashes);
    static void appendSlashes(Operand& operand, std::string_view slashes, const char* descend);
    void takeSlashes(Operand& operand);
    void takeBrackets(Operand& operand);
    void takeToken(Operand& operand);
    std::string_view takeName();
    std::string_view takeWhile(bool (*belongs)(char));
    std::string_view takeLiteral();
    std::string_view take(size_t length);
    bool startsWith(std::string_view sign) const { return rest().starts_with(sign); }

    std::string_view text_;
    std::vector<std::string>& steps_;
    size_t at_ = 0;
};

std::string Rewriter::Operand::take() {
    std::vector<std::string> all = std::move(paths);
    all.push_back(std::move(path));
    *this = {};
    // The library would take an argument that is missing for none.
    const bool isWhole = std::none_of(all.begin(), all.end(), isBlank);
    const std::string united = joined(all, isWhole ? "," : "|");
    return all.size() > 1 && isWhole ? call(UNION_FUNCTION, united) : united;
}

std::string_view Rewriter::take(size_t length) {
    const std::string_view taken = rest().substr(0, length);
    at_ += taken.size();
    return taken;
}

std::string_view Rewriter::takeWhile(bool (*belongs)(char)) {
    const auto end =
        std::find_if_not(text_.begin() + static_cast<std::ptrdiff_t>(at_), text_.end(), belongs);
    return take(static_cast<size_t>(end - text_.begin()) - at_);
}

std::string_view Rewriter::takeLiteral() {
    const size_t end = text_.find(text_[at_], at_ + 1);
    return take(end == std::string_view::npos ? end : end + 1 - at_);
}

/// With its prefix; the name behind that may be a star.
std::string_view Rewriter::takeName() {
    const size_t start = at_;
    takeWhile(isNameCharacter);
    if (startsWith(":") && !startsWith("::")) {
        take(1);
        startsWith("*") ? take(1) : takeWhile(isNameCharacter);
    }
    return text_.substr(start, at_ - start);
}

std::string Rewriter::rewriteLevel() {
    std::string level;
    Operand operand;
    while (!isAtEnd() && !startsWith(")") && !startsWith("]")) {
        if (takeOperator(operand, level)) {
            continue;
        }
        if (startsWith("/")) {
            takeSlashes(operand);
        } else if (startsWith("(") || startsWith("[")) {
            takeBrackets(operand);
        } else {
            takeToken(operand);
        }
    }
    return level + operand.take();
}

/// Takes a comma or an operator, if one stands here. A star and the operators' names are such only
/// behind what is complete.
bool Rewriter::takeOperator(Operand& operand, std::string& level) {
    if (startsWith("|")) {
        take(1);
        operand.paths.push_back(std::move(operand.path));
        operand.path.clear();
        operand.isComplete = false;
        return true;
    }
    std::string_view sign;
    if (startsWith(",") || OPERATOR_SIGNS.find(text_[at_]) != std::string_view::npos ||
        (operand.isComplete && startsWith("*"))) {
        sign = take(1);
    } else if (operand.isComplete && isNameStart(text_[at_])) {
        const size_t start = at_;
        const std::string_view name = takeName();
        if (std::find(OPERATOR_NAMES.begin(), OPERATOR_NAMES.end(), name) == OPERATOR_NAMES.end()) {
            at_ = start;
            return false;
        }
        sign = name;
    } else {
        return false;
    }
    level.append(operand.take()).append(sign);
    return true;
}

/// Whether a step along the axis of children stands here, which need not be named.
bool Rewriter::isAtChild() {
    const size_t start = at_;
    bool isChild = startsWith("*");
    if (!isAtEnd() && isNameStart(text_[at_])) {
        takeName();
        takeWhile(isSpace);
        isChild = !startsWith("::");
    }
    at_ = start;
    return isChild;
}

/// Whether one with a predicate stands here.
bool Rewriter::isAtJudgedChild() {
    if (!isAtChild()) {
        return false;
    }
    const size_t start = at_;
    startsWith("*") ? take(1) : takeName();
    takeWhile(isSpace);
    const bool isJudged = startsWith("[");
    at_ = start;
    return isJudged;
}

/// Whether a step stands here that can lead from several nodes to the same others.
bool Rewriter::isAtSlowAxis() {
    constexpr std::array<std::string_view, 9> AXES{
        "following",         "preceding", "following-sibling",
        "preceding-sibling", "ancestor",  "ancestor-or-self",
        "descendant",        "parent",    "descendant-or-self"};
    const size_t start = at_;
    const std::string_view name = takeName();
    takeWhile(isSpace);
    const bool isAxis = startsWith("::");
    at_ = start;
    return startsWith("..") || (isAxis && std::find(AXES.begin(), AXES.end(), name) != AXES.end());
}

/// Takes an axis and what it is to find.
std::string Rewriter::takeAxis() {
    std::string text;
    text.append(takeName()).append(takeWhile(isSpace)).append(take(2)).append(takeWhile(isSpace));
    return text.append(startsWith("*") ? take(1) : takeName());
}

/// Takes such a step with its predicates.
std::string Rewriter::takeStep() {
    Operand step;
    step.path = startsWith("..") ? std::string(take(2)) : takeAxis();
    for (step.path.append(takeWhile(isSpace)); startsWith("(") || startsWith("[");
         step.path.append(takeWhile(isSpace))) {
        takeBrackets(step);
    }
    return step.path;
}

/// Whether such a step stands here and begins at more than one node.
bool Rewriter::isAtSlowStep(const Operand& operand, std::string_view slashes) {
    const bool isDeep = slashes == "//";
    const bool beginsAtOne = !isDeep && (!operand.isComplete || isOneNode(operand.path));
    return slashes.size() <= 2 && !beginsAtOne && isAtSlowAxis();
}

/// The library compares each node that such a step finds with those from all nodes before. That is
/// left to it only where the step cannot be quoted.
void Rewriter::takeSlowStep(Operand& operand, std::string_view slashes) {
    const std::string step = takeStep();
    const char quote = step.find('"') == std::string::npos ? '"' : '\'';
    if (step.find(quote) != std::string::npos) {
        appendSlashes(operand, slashes, DESCENDANTS_FUNCTION);
        operand.path.append(step);
    } else {
        steps_.push_back(step);
        // What stands before slashes that begin a path is blank, or wrong.
        const std::string all = slashes != "//"      ? operand.path
                                : operand.isComplete ? call(DESCENDANTS_FUNCTION, operand.path)
                                                     : operand.path + "/descendant-or-self::node()";
        operand.path = call(EACH_FUNCTION, all + "," + quote + step + quote);
    }
    operand.isComplete = true;
}

/// `descend` is what to call for two slashes within a path.
void Rewriter::appendSlashes(Operand& operand, std::string_view slashes, const char* descend) {
    if (slashes == "//" && operand.isComplete && !isOneNode(operand.path)) {
        operand.path = call(descend, operand.path) + "/";
    } else {
        operand.path.append(slashes);
    }
}

/// What to call for two slashes before the step that stands here.
const char* Rewriter::descend() {
    return startsWith("@") ? ELEMENTS_FUNCTION
           : isAtChild()   ? PARENTS_FUNCTION
                           : DESCENDANTS_FUNCTION;
}

/// Whether the library would collect all nodes of a document, or of its root element, to take the
/// step that stands here from each of them.
bool Rewriter::takesAllNodes(const Operand& operand, std::string_view slashes) {
    const bool isAtStart = operand.isComplete ? trimmed(operand.path, XML_SPACE).starts_with('/')
                                              : isBlank(operand.path);
    return slashes == "//" && isAtStart && (startsWith("@") || isAtJudgedChild());
}

void Rewriter::takeSlashes(Operand& operand) {
    const std::string_view slashes = takeWhile([](char character) { return character == '/'; });
    const std::string_view blanks = takeWhile(isSpace);
    if (isAtSlowStep(operand, slashes)) {
        return takeSlowStep(operand, slashes);
    }
    if (takesAllNodes(operand, slashes)) {
        operand.path = call(descend(), operand.isComplete ? operand.path : "/") + "/";
    } else {
        appendSlashes(operand, slashes, descend());
    }
    operand.path.append(blanks);
    if (!isAtEnd() && !isAscii(text_[at_])) {
        operand.path.append("child::");
    }
    operand.isComplete = false;
}

void Rewriter::takeBrackets(Operand& operand) {
    operand.path.append(take(1)).append(rewriteLevel()).append(take(1));
    operand.isComplete = true;
}

void Rewriter::takeToken(Operand& operand) {
    const char first = text_[at_];
    if (isSpace(first)) {
        operand.path.append(take(1));
        return;
    }
    operand.isComplete = true;
    if (first == '"' || first == '\'') {
        operand.path.append(takeLiteral());
    } else if (isNameStart(first)) {
        operand.path.append(takeName());
    } else if (startsWith("::") || first == '@' || first == '$') {
        operand.path.append(take(startsWith("::") ? 2 : 1));
        operand.isComplete = false;
    } else {
        operand.path.append(take(1));  // of a number, dots, a star
    }
}

/// The library goes through a document once for a plain expression, also for a union of such.
bool isPlain(std::string_view expression) {
    return expression.find_first_of("[(@:") == std::string_view::npos &&
           expression.find("..") == std::string_view::npos &&
           std::all_of(expression.begin(), expression.end(), isAscii);
}

}  // namespace

std::string rewrittenXPath(std::string_view expression, std::vector<std::string>& steps) {
    if (isPlain(expression)) {
        return std::string(expression);
    }
    Rewriter rewriter(expression, steps);
    std::string all = rewriter.rewriteLevel();
    return all.append(rewriter.rest());  // is empty unless a bracket is closed too often
}

}  // namespace intake
