#include "formats/xml/PlainPath.h"

#include <libxml/xpath.h>

#include <algorithm>
#include <array>

#include "formats/text/ascii.h"
#include "formats/text/trim.h"

namespace intake {

namespace {

struct ComparisonSign {
    std::string_view sign;
    PathComparison comparison;
};

/// The longer ones first.
constexpr std::array<ComparisonSign, 6> SIGNS{{{"!=", PathComparison::UNEQUAL},
                                               {"<=", PathComparison::AT_MOST},
                                               {">=", PathComparison::AT_LEAST},
                                               {"=", PathComparison::EQUAL},
                                               {"<", PathComparison::LESS},
                                               {">", PathComparison::GREATER}}};

double numberOf(const std::string& text) {
    return xmlXPathCastStringToNumber(reinterpret_cast<const xmlChar*>(text.c_str()));
}

/// Each operation takes one piece of the grammar and says whether it was there.
class PathParser {
public:
    PathParser(std::string_view text, const PrefixLookup& uriOf) : rest_(text), uriOf_(uriOf) {}

    std::optional<PlainPath> parse(PathStart start) {
        skipSpace();
        if (start == PathStart::ROW && takeSelf()) {
            return path_;
        }
        if (!takeStart(start) || !takeSteps() || !rest_.empty()) {
            return std::nullopt;
        }
        return std::move(path_);
    }

private:
    static constexpr size_t MOST_DIGITS = 9;

    void skipSpace() { rest_ = trimmedStart(rest_, XML_SPACE); }

    bool take(std::string_view sign) {
        if (!rest_.starts_with(sign)) {
            return false;
        }
        rest_.remove_prefix(sign.size());
        skipSpace();
        return true;
    }

    bool takeSelf() {
        const std::string_view before = rest_;
        if (take(".") && rest_.empty()) {
            return true;
        }
        rest_ = before;
        return false;
    }

    bool takeStart(PathStart start) {
        if (start == PathStart::DOCUMENT) {
            isDeep_ = take("//");
            if (!isDeep_) {
                take("/");  // or nothing: the same
            }
            return true;
        }
        if (rest_.starts_with('.')) {
            isDeep_ = take(".") && take("//");
            return isDeep_;
        }
        return true;  // a slash is no step
    }

    bool takeSteps() {
        do {
            if (path_.steps.size() == PlainPath::MOST_STEPS || !takeStep()) {
                return false;
            }
        } while (takeSlash());
        return true;
    }

    bool takeSlash() {
        isDeep_ = take("//");
        return isDeep_ || take("/");
    }

    bool takeStep() {
        if (!path_.steps.empty() &&
            (path_.steps.back().finds != PlainStep::Finds::ELEMENTS || path_.isLate())) {
            return false;  // nothing can follow
        }
        PlainStep step;
        step.isDeep = isDeep_;
        if (take("@")) {
            step.finds = PlainStep::Finds::ATTRIBUTES;
            path_.steps.push_back(step);
            return takeTest(path_.steps.back().test);
        }
        if (takeTextTest()) {
            step.finds = PlainStep::Finds::TEXTS;
            path_.steps.push_back(step);
            return true;
        }
        path_.steps.push_back(step);
        return takeTest(path_.steps.back().test) && takePredicates(path_.steps.back());
    }

    bool takeTextTest() {
        const std::string_view before = rest_;
        if (take("text") && take("(") && take(")")) {
            return true;
        }
        rest_ = before;
        return false;
    }

    /// A name or a star, with or without a prefix, that is no axis and no function.
    bool takeTest(NameTest& test) {
        test.anyName = test.anySpace = rest_.starts_with('*');
        if (test.anyName) {
            return take("*");
        }
        test.name = takeName();
        if (rest_.starts_with(':') && !rest_.starts_with("::")) {
            rest_.remove_prefix(1);
            const std::optional<std::string> uri = uriOf_(test.name);
            if (!uri) {
                return false;
            }
            test.uri = *uri;
            test.anyName = rest_.starts_with('*');
            test.name = test.anyName ? "" : takeName();
            rest_.remove_prefix(test.anyName ? 1 : 0);
        }
        skipSpace();
        return (test.anyName || !test.name.empty()) && !rest_.starts_with(':') &&
               !rest_.starts_with('(');
    }

    /// What ends a literal before its quote, by the library's rules.
    static bool isControl(char c) {
        return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r';
    }

    std::string takeName() {
        const auto isStart = [](char c) { return isLetter(c) || c == '_'; };
        const auto isInside = [&](char c) {
            return isStart(c) || isDigit(c) || c == '-' || c == '.';
        };
        if (rest_.empty() || !isStart(rest_.front())) {
            return "";
        }
        const auto* const end = std::find_if_not(rest_.begin(), rest_.end(), isInside);
        const std::string name(rest_.begin(), end);
        rest_.remove_prefix(name.size());
        return rest_.empty() || isAscii(rest_.front()) ? name : "";
    }

    bool takePredicates(PlainStep& step) {
        bool isEarly = true;
        while (take("[")) {
            PathPredicate& predicate = step.predicates.emplace_back();
            if (!takeCondition(predicate) || !take("]")) {
                return false;
            }
            isEarly = isEarly && !predicate.isLate();
            step.early += isEarly ? 1 : 0;
        }
        return true;
    }

    bool takeCondition(PathPredicate& predicate) {
        using Subject = PathPredicate::Subject;
        if (!rest_.empty() && isDigit(rest_.front())) {
            predicate.comparison = PathComparison::EQUAL;
            return takePosition(predicate);
        }
        if (rest_.starts_with("position")) {
            take("position");
            return take("(") && take(")") && takeComparison(predicate) && takePosition(predicate);
        }
        predicate.subject = take("@") ? Subject::ATTRIBUTE : Subject::CHILD;
        return takeTest(predicate.test) && (!takeComparison(predicate) || takeValue(predicate));
    }

    bool takeComparison(PathPredicate& predicate) {
        for (const ComparisonSign& each : SIGNS) {
            if (take(each.sign)) {
                predicate.comparison = each.comparison;
                return true;
            }
        }
        return false;
    }

    bool takePosition(PathPredicate& predicate) {
        predicate.counter = path_.counters++;
        return takeDigits(predicate);
    }

    bool takeDigits(PathPredicate& predicate) {
        const auto* const end = std::find_if_not(rest_.begin(), rest_.end(), isDigit);
        const auto length = static_cast<size_t>(end - rest_.begin());
        predicate.isNumber = true;
        predicate.text = rest_.substr(0, length);
        predicate.number = numberOf(predicate.text);
        rest_.remove_prefix(length);
        skipSpace();
        return length > 0 && length <= MOST_DIGITS && !rest_.starts_with('.');
    }

    bool takeValue(PathPredicate& predicate) {
        if (rest_.empty() || (rest_.front() != '"' && rest_.front() != '\'')) {
            return takeDigits(predicate);
        }
        const size_t end = rest_.find(rest_.front(), 1);
        if (end == std::string_view::npos || (predicate.comparison != PathComparison::EQUAL &&
                                              predicate.comparison != PathComparison::UNEQUAL)) {
            return false;  // texts have no order
        }
        predicate.text = rest_.substr(1, end - 1);
        rest_.remove_prefix(end + 1);
        skipSpace();
        return std::none_of(predicate.text.begin(), predicate.text.end(), isControl);
    }

    std::string_view rest_;
    const PrefixLookup& uriOf_;
    PlainPath path_;
    bool isDeep_ = false;
};

}  // namespace

bool PathPredicate::holdsFor(double value) const {
    switch (comparison) {
        case PathComparison::EQUAL:
            return value == number;
        case PathComparison::UNEQUAL:
            return value != number;
        case PathComparison::LESS:
            return value < number;
        case PathComparison::AT_MOST:
            return value <= number;
        case PathComparison::GREATER:
            return value > number;
        case PathComparison::AT_LEAST:
            return value >= number;
        default:
            return true;
    }
}

bool PathPredicate::holdsFor(std::string_view value) const {
    if (comparison == PathComparison::NONE) {
        return true;
    }
    return isNumber ? holdsFor(numberOf(std::string(value)))
                    : (value == text) == (comparison == PathComparison::EQUAL);
}

bool PlainPath::looksAtAttributes() const {
    return std::any_of(steps.begin(), steps.end(), [](const PlainStep& step) {
        return step.finds == PlainStep::Finds::ATTRIBUTES ||
               std::any_of(step.predicates.begin(), step.predicates.end(),
                           [](const PathPredicate& each) {
                               return each.subject == PathPredicate::Subject::ATTRIBUTE;
                           });
    });
}

bool PlainPath::isDeep() const {
    return std::any_of(steps.begin(), steps.end(),
                       [](const PlainStep& step) { return step.isDeep; });
}

std::optional<PlainPath> parsePlainPath(std::string_view expression, PathStart start,
                                        const PrefixLookup& uriOf) {
    PathParser parser(expression, uriOf);
    return parser.parse(start);
}

}  // namespace intake
