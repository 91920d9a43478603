// The calls by which a table is found, and what becomes of their failures.

#include <fstream>
#include <iterator>
#include <locale>
#include <vector>

#include "platform/PlatformError.h"
#include "tests/readers/html/HTMLHandlerFixture.h"
#include "tests/support/TempDirectory.h"

namespace intake {
namespace {

class HtmlSelectionSteps : public HTMLHandlerFixture {
protected:
    /// The name of the table that is chosen, or the error.
    std::string chosen(const std::string& selector) {
        request_.sheet = selector;
        script_.clear();
        error_.clear();
        if (!read()) {
            EXPECT_EQ(script_, "");
            return error_;
        }
        EXPECT_EQ(error_, "");
        const std::string calls = html_.calls();
        const size_t name = calls.rfind("\ntable ") + 7;
        return calls.substr(name, calls.find('\n', name) - name);
    }
};

TEST_F(HtmlSelectionSteps, ATableIsFoundAndReadFromItsFirstRowOn) {
    request_.sheet = "ID first";
    EXPECT_TRUE(read());
    EXPECT_EQ(script_, R"(T[0-0]=""x""; READER_NUM_RECORDS=1;)");
    EXPECT_EQ(html_.calls(),
              "open page.html\n"
              "elementById first\n"
              "table a\n"
              "rowCount\n"
              "appendCellText 0 0\n"
              "appendCellKey 1 0\n"
              "release table\n"
              "release document\n");
}

TEST_F(HtmlSelectionSteps, AnEmptySelectorTakesTheFirstTable) {
    EXPECT_EQ(chosen(""), "a");
    EXPECT_EQ(chosen("  "), "a");
    html_.page.resize(1);
    EXPECT_EQ(chosen(""), "HTML: Could not find any TABLE");
}

TEST_F(HtmlSelectionSteps, AnIdIsThatOfATableOrOfSomethingAroundOne) {
    EXPECT_EQ(chosen("ID first"), "a");
    EXPECT_EQ(chosen("ID results"), "a");
    EXPECT_EQ(chosen("ID prices"), "b");
    EXPECT_EQ(chosen("ID empty"), "HTML: Could not find any TABLE under ID \"empty\"");
    EXPECT_EQ(chosen("ID nothing"), "HTML: Could not find any TABLE under ID \"nothing\"");
    EXPECT_EQ(chosen("ID First"), "HTML: Could not find any TABLE under ID \"First\"");
}

TEST_F(HtmlSelectionSteps, AClassIsTheWholeAttributeOfTheFirstElementThatHasIt) {
    EXPECT_EQ(chosen("CLASS wide"), "a");
    EXPECT_EQ(chosen("CLASS wide new"), "b");
    EXPECT_EQ(chosen("CLASS new"), "HTML: Could not find any TABLE under CLASS \"new\"");
    EXPECT_EQ(chosen("CLASS aside"), "HTML: Could not find any TABLE under CLASS \"aside\"");
}

TEST_F(HtmlSelectionSteps, AClassOfATableMeansATableInsideFirstThenItself) {
    EXPECT_EQ(chosen("CLASS b"), "b");
    EXPECT_EQ(chosen("CLASS grid"), "a");
    html_.page.insert(html_.page.begin() + 3, {.name = "inner", .parent = 2, .isTable = true});
    for (size_t place = 4; place < html_.page.size(); ++place) {
        html_.page[place].parent += html_.page[place].parent > 2 ? 1 : 0;
    }
    EXPECT_EQ(chosen("CLASS grid"), "inner");
}

TEST_F(HtmlSelectionSteps, ATextIsSearchedInDocumentOrderAndTheTableFromItUpwards) {
    request_.sheet = "TEXT Closing prices";
    EXPECT_TRUE(read());
    EXPECT_EQ(html_.calls().substr(0, html_.calls().find("rowCount")),
              "open page.html\n"
              "findElement\n"
              "innerTextEquals body Closing prices\n"
              "innerTextEquals div Closing prices\n"
              "innerTextEquals a Closing prices\n"
              "innerTextEquals p Closing prices\n"
              "innerTextEquals section Closing prices\n"
              "innerTextEquals h2 Closing prices\n"
              "parent h2\n"
              "firstTable section\n"
              "table b\n");
}

TEST_F(HtmlSelectionSteps, ATextClimbsUntilAnAncestorHasATable) {
    EXPECT_EQ(chosen("TEXT Closing prices 2024"), "a");
    EXPECT_EQ(chosen("TEXT Results"), "a");
    EXPECT_EQ(chosen("TEXT all of it"),
              "HTML: Could not find any TABLE close to text \"all of it\"");
    EXPECT_EQ(chosen("TEXT Closing"), "HTML: Could not find any TABLE close to text \"Closing\"");
}

TEST_F(HtmlSelectionSteps, KindWordsAreComparedExactly) {
    EXPECT_EQ(chosen("id first"), "HTML: Could not find any TABLE close to text \"first\"");
    EXPECT_EQ(chosen("Id first"), "HTML: Could not find any TABLE close to text \"first\"");
    EXPECT_EQ(chosen("CLASSES wide"), "HTML: Could not find any TABLE close to text \"wide\"");
    EXPECT_EQ(chosen("anything Closing prices"), "b");
    EXPECT_EQ(chosen("Results"), "HTML: Could not find any TABLE close to text \"\"");
}

TEST_F(HtmlSelectionSteps, TheTextRunsToTheEndOfTheLineWithItsInnerBlanks) {
    html_.page[5].text = "Closing   prices \t";
    EXPECT_EQ(chosen("  TEXT \t Closing   prices \t\nmore"), "b");
    EXPECT_EQ(chosen("TEXT Closing prices"),
              "HTML: Could not find any TABLE close to text \"Closing prices\"");
    EXPECT_EQ(chosen("ID\v\f\tfirst"), "a");
    EXPECT_EQ(chosen("ID\nfirst"), "HTML: Could not find any TABLE under ID \"\"");
}

TEST_F(HtmlSelectionSteps, ALineMayEndAsTheSystemsDo) {
    EXPECT_EQ(chosen("ID first\n"), "a");
    EXPECT_EQ(chosen("ID first\r\n"), "a");
    EXPECT_EQ(chosen("ID first\r"), "a");
    EXPECT_EQ(chosen("TEXT Closing prices\r\nmore"), "b");
    EXPECT_EQ(chosen("ID\r\n"), "HTML: Could not find any TABLE under ID \"\"");
    EXPECT_EQ(chosen("\r\n"), "a");
}

TEST_F(HtmlSelectionSteps, ASelectorIsTakenInTheEncodingOfTheRequest) {
    html_.page[2].id = "r\xC3\xA9sultats";
    request_.encoding = 2;
    EXPECT_EQ(chosen("ID r\xE9sultats"), "a");
    EXPECT_EQ(chosen("ID \xE9"), "HTML: Could not find any TABLE under ID \"\xE9\"");
}

TEST_F(HtmlSelectionSteps, ASourceThatDoesNotOpenFailsAndTheLogSaysWhy) {
    const TempWorkingDirectory directory;
    logger_.setLevel(LOG_ERROR);
    html_.unreachable = "The server answered with status 404";
    EXPECT_EQ(chosen("ID first"), "HTML: Failed to open URL \"page.html\"");
    EXPECT_EQ(html_.calls(), "open page.html\n");
    std::ifstream log("2026-03-05-0907-Intake.log");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(log), {}),
              "5/3 9:7 ERROR: \t\t\tHTML: The server answered with status 404\n");
}

TEST_F(HtmlSelectionSteps, AFailureFollowsWhatTheErrorAlreadySays) {
    error_ = "before\n";
    request_.sheet = "ID nothing";
    EXPECT_FALSE(read());
    request_.sheet = "";
    request_.key = "nothing";
    EXPECT_FALSE(read());
    html_.unreachable = "reason";
    EXPECT_FALSE(read());
    EXPECT_EQ(error_,
              "before\n"
              "HTML: Could not find any TABLE under ID \"nothing\""
              "HTML: Could not find KEY \"nothing\" in the first row of the table"
              "HTML: Failed to open URL \"page.html\"");
}

/// A locale in which an underline is white space too.
class UnderlineIsBlank : public std::ctype<char> {
public:
    UnderlineIsBlank() : std::ctype<char>(table()) {}

private:
    static const mask* table() {
        static const std::vector<mask> masks = [] {
            std::vector<mask> all(classic_table(), classic_table() + table_size);
            all['_'] = space;
            return all;
        }();
        return masks.data();
    }
};

TEST_F(HtmlSelectionSteps, WhiteSpaceDoesNotDependOnTheLocaleOfTheHost) {
    const std::locale before =
        std::locale::global(std::locale(std::locale::classic(), new UnderlineIsBlank));
    EXPECT_EQ(chosen("ID_x Closing prices"), "b");
    std::locale::global(before);
}

TEST_F(HtmlSelectionSteps, EverythingIsReleasedWhereverACallFails) {
    request_.sheet = "TEXT Closing prices";
    for (const char* call : {"open", "findElement", "innerTextEquals", "parent", "firstTable",
                             "table", "rowCount", "appendCellText", "appendCellKey"}) {
        FakeHtml html;
        html.unreachable.clear();
        html.page = html_.page;
        html.rows = html_.rows;
        html.failAt(call);
        HTMLHandler handler(logger_, html, connections_, endMark_);
        EXPECT_THROW(handler.Read(request_, script_, error_), PlatformError) << call;
        const auto count = [&](const std::string& line) {
            return html.calls().find(line) != std::string::npos;
        };
        EXPECT_EQ(count("release document\n"), std::string(call) != "open") << call;
        EXPECT_EQ(count("release table\n"), count("rowCount\n")) << call;
    }
}

}  // namespace
}  // namespace intake
