#include "workbench/cobalt/Expression.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "tests/workbench/cobalt/show.h"

namespace cobalt {
namespace {

// The fields after the script and then the action, or the error.
std::string act(std::string_view script, std::string_view action) {
    Store store;
    if (const auto error = store.execute(script)) return "script: " + show(*error);
    Expression expression;
    if (const auto error = expression.parse(action)) return "parse: " + show(*error);
    const auto error = expression.execute(store, nullptr, nullptr);
    return show(store) + (error ? "execute: " + show(*error) : "");
}

std::string calculate(std::string_view calculation) {
    return act("", "x=" + std::string(calculation));
}

TEST(Expression, AnEmptyTextDoesNothing) {
    EXPECT_EQ(act("a=1;", ""), "a = 1\n");
    EXPECT_EQ(act("a=1;", " ;;\r\n "), "a = 1\n");
}

TEST(Expression, BeforeItIsParsedDoesNothing) {
    Store store;
    EXPECT_FALSE(Expression().execute(store, nullptr, nullptr));
    EXPECT_EQ(show(store), "");
}

TEST(Expression, StatementsAreSeparatedBySemicolonsAndTheLastOneMayBeLeftOut) {
    EXPECT_EQ(act("", "a=1; b=a+1 ;c=b+1"), "a = 1\nb = 2\nc = 3\n");
    EXPECT_EQ(act("", "a=1;"), "a = 1\n");
}

TEST(Expression, TargetsAreThoseOfAScript) {
    EXPECT_EQ(act("T[0-1]=1,2;", "T[k]=T[1]+1; T[0-1]=7,8; Goal-diff=5; s=1,2,"),
              "T = [0: 7, 1: 8, k: 3]\nGoal-diff = 5\ns = [0: 1, 1: 2]\n");
}

TEST(Expression, ALiteralAssignmentIsThatOfAScript) {
    EXPECT_EQ(act("", "T[0]=\"\"x\"\"; a=7.50; b=\"y\"; c=;"),
              "T = [0: \"x\"]\na = 7.50\nb = \"y\"\nc = \"\"\n");
}

TEST(Expression, MultipliesBeforeItAddsAndAddsBeforeItCompares) {
    EXPECT_EQ(calculate("1+2*3-8/4"), "x = 5\n");
    EXPECT_EQ(calculate("1+1==4/2"), "x = 1\n");
    EXPECT_EQ(calculate("(1+2)*3"), "x = 9\n");
}

TEST(Expression, GoesFromLeftToRightAmongEqualOperators) {
    EXPECT_EQ(calculate("10-4-3"), "x = 3\n");
    EXPECT_EQ(calculate("16/4/2"), "x = 2\n");
}

TEST(Expression, AMinusSignNegates) {
    EXPECT_EQ(calculate("-2*-(1+2)"), "x = 6\n");
    EXPECT_EQ(calculate("--3"), "x = 3\n");
    EXPECT_EQ(act("a=4;", "a=-a"), "a = -4\n");
}

TEST(Expression, ComparisonsOfNumbersGiveOneOrZero) {
    EXPECT_EQ(act("", "a=2==2.0;b=2!=2;c=2<10;d=2<=2;e=2>10;f=3>=4"),
              "a = 1\nb = 0\nc = 1\nd = 1\ne = 0\nf = 0\n");
}

TEST(Expression, ComparisonsOfTextsGoByTheirBytes) {
    EXPECT_EQ(act("", "a=\"x\"==\"x\";b=\"B\"<\"a\";c=\"10\"<\"9\""), "a = 1\nb = 1\nc = 1\n");
}

TEST(Expression, PlusJoinsWhenEitherSideIsAText) {
    EXPECT_EQ(calculate("\"Row \"+1"), "x = \"Row 1\"\n");
    EXPECT_EQ(calculate("1+\"\". row\"\""), "x = \"1. row\"\n");
    EXPECT_EQ(act("a=7.50;", "x=\"EUR \"+a"), "a = 7.50\nx = \"EUR 7.50\"\n");
}

TEST(Expression, AQuotedTextIsNeverANumber) {
    EXPECT_EQ(calculate("\"0\"+7"), "x = \"07\"\n");
    EXPECT_EQ(calculate("\"1\"+\"2\"+3"), "x = \"123\"\n");
}

TEST(Expression, AFieldWhoseTextReadsAsANumberCountsAsOne) {
    EXPECT_EQ(act("a=\"\"3\"\";T[k]=\"\"4\"\";", "x=a+T[k];y=a<10"),
              "a = \"3\"\nT = [k: \"4\"]\nx = 7\ny = 1\n");
}

TEST(Expression, AFieldThatIsCopiedStaysWhatItIs) {
    EXPECT_EQ(act("a=\"\"007\"\";b=7.50;", "x=a;y=b"),
              "a = \"007\"\nb = 7.50\nx = \"007\"\ny = 7.50\n");
}

TEST(Expression, AMissingFieldIsZeroBesideANumberAndEmptyBesideAText) {
    EXPECT_EQ(calculate("missing+1"), "x = 1\n");
    EXPECT_EQ(calculate("2*missing"), "x = 0\n");
    EXPECT_EQ(calculate("missing==0"), "x = 1\n");
    EXPECT_EQ(calculate("\"a\"+missing+missing[key]"), "x = \"a\"\n");
    EXPECT_EQ(calculate("missing"), "x = \"\"\n");
}

TEST(Expression, CountsUpAFieldThatIsNotThereYet) {
    Store store;
    Expression count;
    ASSERT_FALSE(count.parse("Loads=Loads+1"));
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(count.execute(store, nullptr, nullptr));
    EXPECT_EQ(show(store), "Loads = 3\n");
}

TEST(Expression, NamesMayHaveBlanksInside) {
    EXPECT_EQ(act("Home goals=2;Away goals=1;", "Sum = Home goals + Away goals"),
              "Home goals = 2\nAway goals = 1\nSum = 3\n");
}

TEST(Expression, AKeyIsTheWholeTextUpToTheClosingBracket) {
    EXPECT_EQ(act("T[a + b]=2;", "x=T[a + b]*2"), "T = [a + b: 2]\nx = 4\n");
}

TEST(Expression, AMemberOfAStructureIsReadByItsName) {
    EXPECT_EQ(act("s={a=2;};", "x=s[a]+1"), "s = {a: 2}\nx = 3\n");
}

TEST(Expression, AQuotedTextEndsBeforeAnOperatorOrAnEnd) {
    EXPECT_EQ(calculate("\"say \"hi\"\"+1"), "x = \"say \"hi\"1\"\n");
    EXPECT_EQ(calculate("\"\"a; \"b\" c\"\" + 1"), "x = \"a; \"b\" c1\"\n");
}

TEST(Expression, TwoQuotesWithoutTwoClosingOnesAreAnEmptyText) {
    EXPECT_EQ(calculate("\"\""), "x = \"\"\n");
    EXPECT_EQ(calculate("\"\" + 5 + \"a\""), "x = \"5a\"\n");
}

TEST(Expression, ACommandIsSentAndYieldsItsAnswer) {
    Store store;
    ASSERT_FALSE(store.execute("Name=Lions;"));
    std::string sent;
    const auto command = [&](const std::string& text) {
        sent += "<" + text + ">";
        return std::string("41");
    };
    Expression expression;
    ASSERT_FALSE(expression.parse("command(\"\"SCENE \"\"+Name); Answer=command(\"COUNT\")+1"));
    EXPECT_FALSE(expression.execute(store, command, nullptr));
    EXPECT_EQ(sent, "<SCENE Lions><COUNT>");
    EXPECT_EQ(show(store), "Name = \"Lions\"\nAnswer = 42\n");
}

TEST(Expression, ACommandMayReplaceTheActionThatSendsIt) {
    Store store;
    Expression expression;
    const auto command = [&](const std::string&) {
        EXPECT_FALSE(expression.parse("a=2"));
        return std::string();
    };
    ASSERT_FALSE(expression.parse("command(\"x\"); a=1; b=a+1"));
    EXPECT_FALSE(expression.execute(store, command, nullptr));
    EXPECT_EQ(show(store), "a = 1\nb = 2\n");
}

TEST(Expression, ANameWithoutAFieldIsAskedForAsAMacro) {
    Store store;
    ASSERT_FALSE(store.execute("a=1;"));
    const MacroQuery macro = [](const std::string& name) -> std::optional<std::string> {
        if (name == "a" || name == "$ROWS") return "20";
        return std::nullopt;
    };
    Expression expression;
    ASSERT_FALSE(expression.parse("x=a+$ROWS; y=\"none\"+other"));
    EXPECT_FALSE(expression.execute(store, nullptr, macro));
    EXPECT_EQ(show(store), "a = 1\nx = 21\ny = \"none\"\n");
}

TEST(Expression, DivisionByZeroEndsTheActionAndChangesNothingFurther) {
    EXPECT_EQ(act("a=1;", "b=2;\n c=4/(a-1); d=3"), "a = 1\nb = 2\nexecute: 2:5 division by zero");
}

TEST(Expression, CalculatingWithATextIsAnError) {
    EXPECT_EQ(act("a=abc;", "b=2*a"),
              "a = \"abc\"\nexecute: 1:4 expected a number, found the text 'abc'");
    EXPECT_EQ(act("", "b=-\"5\""), "execute: 1:3 expected a number, found the text '5'");
}

TEST(Expression, AResultBeyondTheLargestNumberIsAnError) {
    EXPECT_EQ(calculate("1e300*1e300"), "execute: 1:8 the result is too large for a number");
}

TEST(Expression, AStructureOrAListIsNoOperand) {
    EXPECT_EQ(act("T[k]={{a=1;},};", "x=T"),
              "T = [k: [0: {a: 1}]]\nexecute: 1:3 expected a text or a number, but T holds a list");
    EXPECT_EQ(act("s={a={b=1;};};", "x=1+s[a]"),
              "s = {a: {b: 1}}\n"
              "execute: 1:5 expected a text or a number, but s[a] holds a structure");
}

TEST(Expression, AnActionThatDoesNotParseIsEmptyAfterwards) {
    Store store;
    Expression expression;
    ASSERT_FALSE(expression.parse("a=1"));
    EXPECT_TRUE(expression.parse("a=2+"));
    EXPECT_FALSE(expression.execute(store, nullptr, nullptr));
    EXPECT_EQ(show(store), "");
}

TEST(Expression, AParseErrorSaysWhereAndWhatWasExpected) {
    EXPECT_EQ(act("", "a=2+"), "parse: 1:5 expected a value, found the end of the text");
    EXPECT_EQ(act("", "a=1;\nb=2*;"), "parse: 2:5 expected a value, found ';'");
    EXPECT_EQ(act("", "=1"), "parse: 1:1 expected the name of a field, found '=1'");
    EXPECT_EQ(act("", "a=(1+2"), "parse: 1:3 expected a ')' for this '('");
    EXPECT_EQ(act("", "a=(1 2)"), "parse: 1:6 expected an operator or ')', found '2)'");
    EXPECT_EQ(act("", "a=1 b"), "parse: 1:5 expected an operator or ';', found 'b'");
    EXPECT_EQ(act("", "a=b\nc=d"), "parse: 2:1 expected an operator or ';', found 'c=d'");
    EXPECT_EQ(act("", "a=\"b"), "parse: 1:3 expected '\"' at the end of this quoted text");
    EXPECT_EQ(act("", "a=T[1"), "parse: 1:4 expected a ']' for this '['");
    EXPECT_EQ(act("", "send(1)"),
              "parse: 1:1 expected command(...), which is the only function, found 'send(1)'");
    EXPECT_EQ(act("", "T[0-1]=1,2,3"),
              "parse: 1:8 expected at most 2 values for the range [0-1], found 3");
}

TEST(Expression, AMillionNestedParenthesesAreAnError) {
    EXPECT_EQ(calculate(std::string(1000000, '(')),
              "parse: 1:503 expected at most 500 nested parentheses");
    EXPECT_EQ(calculate(std::string(1000000, '-')),
              "parse: 1:503 expected at most 500 nested parentheses");
}

TEST(Expression, AMillionOperatorsAreNoBurden) {
    std::string sum = "1";
    for (int i = 0; i < 1000000; ++i)
        sum += "+1";
    EXPECT_EQ(calculate(sum), "x = 1000001\n");
}

TEST(Expression, OfRandomSignsIsRefusedWholeOrExecutedFromTheBeginning) {
    std::mt19937 random(1);
    const std::string signs = "=+-*/()[];,\"\"ab01<! \n";
    for (int run = 0; run < 20000; ++run) {
        std::string action = "first=1;";
        for (int i = 0; i < 30; ++i)
            action += signs[random() % signs.size()];
        Store store;
        Expression expression;
        const bool refused = expression.parse(action).has_value();
        expression.execute(store, nullptr, nullptr);
        EXPECT_EQ(store.empty(), refused) << action;
        EXPECT_EQ(store.find("first") == nullptr, refused) << action;
    }
}

}  // namespace
}  // namespace cobalt
