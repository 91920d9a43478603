// Pages that are made to bring a reader down, or are no pages at all. Each of these is over in far
// less than a second unless something is wrong.

#include <filesystem>

#include "tests/platform/html/HtmlTest.h"

namespace intake {
namespace {

std::string repeated(const std::string& text, size_t times) {
    std::string all;
    all.reserve(text.size() * times);
    for (size_t time = 0; time < times; ++time) {
        all += text;
    }
    return all;
}

constexpr auto TABLE = "<table><tr><td>x</table>";

class HostilePage : public HtmlTest {
protected:
    /// What the refusal of a page says; empty when it is not refused.
    std::string refusalOf(const std::string& page) {
        try {
            load(page);
        } catch (const PlatformError& error) {
            return error.description();
        }
        return "";
    }

    /// Loads a page that has one table of one cell, and expects it to be found by all means.
    void expectCell(const std::string& page) {
        load(page);
        EXPECT_EQ(cell(), "x");
        EXPECT_EQ(document_->findElement(
                      [&](Element each) { return document_->innerTextEquals(each, "not there"); }),
                  nullptr);
    }
};

TEST_F(HostilePage, MayBeNestedDeeply) {
    expectCell(repeated("<div>", 1500) + TABLE);
    expectCell(repeated("<b>", 1500) + TABLE);
}

TEST_F(HostilePage, IsRefusedWhenItIsNestedFarTooDeep) {
    for (const char* tag : {"<div>", "<b>", "<span>", "<table><tr><td>", "<svg>", "<ul><li>",
                            "<template>", "<font size=1><div>"}) {
        EXPECT_EQ(refusalOf(repeated(tag, 100000)), "The page is nested deeper than 2000 elements")
            << tag;
    }
}

TEST_F(HostilePage, MayBeNestedToTheLimitAndNotBeyond) {
    constexpr int AROUND = 2;  // html and body
    load(repeated("<div>", 2000 - AROUND));
    EXPECT_EQ(refusalOf(repeated("<div>", 2001 - AROUND)),
              "The page is nested deeper than 2000 elements");
}

TEST_F(HostilePage, MayLeaveManyTagsUnclosedThatHtmlCloses) {
    for (const char* tags : {"<p>y", "<li>y", "<dt>y<dd>y", "<option>y", "<h1>y<h2>y", "<br>y"}) {
        expectCell(repeated(tags, 50000) + TABLE);
    }
    expectCell("<div>" + repeated("<a name=x>", 50000) + "</div>" + TABLE);
}

TEST_F(HostilePage, MayHaveManyEndTagsOfNothing) {
    expectCell(repeated("</b></p></div></nothing></>", 100000) + TABLE);
}

TEST_F(HostilePage, IsRefusedWhenFormattingElementsMultiply) {
    std::string page;
    for (int number = 0; number < 1000; ++number) {
        page += "<b id=" + std::to_string(number) + ">";
    }
    const auto refusalWithParagraphs = [&](size_t count) {
        return refusalOf("<div>" + page + "</div>" + repeated("<p>x</p>", count));
    };
    EXPECT_EQ(refusalWithParagraphs(19), "");  // 20,000 elements
    EXPECT_EQ(refusalWithParagraphs(20), "The page leaves too many formatting elements open");
    EXPECT_EQ(refusalWithParagraphs(10000), "The page leaves too many formatting elements open");
}

TEST_F(HostilePage, IsRefusedWhenItIsNestedDeeplyAllThrough) {
    EXPECT_EQ(refusalOf(repeated("<span>", 1950) + repeated("<wbr></x>", 500000)), "");
    EXPECT_EQ(refusalOf(repeated("<span>", 1950) + repeated("<wbr></x>", 530000)),
              "The page is nested too deeply for its length");
}

TEST_F(HostilePage, MayHaveManyFormattingElementsOfManyAttributes) {
    std::string attributes;
    for (int number = 0; number < 998; ++number) {
        attributes += " a" + std::to_string(number);
    }
    std::string page;
    for (int number = 0; number < 1900; ++number) {
        page += "<b z=" + std::to_string(number) + attributes + ">";
    }
    expectCell(page + TABLE);
}

TEST_F(HostilePage, MayLeaveManyMarkersBehindThatBoundFormattingElements) {
    expectCell(repeated("<template><tr><td></template>", 200000) +
               repeated("<b>" + repeated("<i></i><x>", 500) + "<p></b></p>", 1000) + TABLE);
}

TEST_F(HostilePage, MayHaveManyAttributes) {
    std::string tag = "<p";
    for (int number = 0; number < 100000; ++number) {
        tag += " a" + std::to_string(number) + "=1";
    }
    expectCell(tag + ">" + TABLE);
    expectCell(repeated("<html a=1 b=2><body c=3>", 50000) + TABLE);
}

TEST_F(HostilePage, MayHaveManyRowsAndCells) {
    load("<table>" + repeated("<tr><td>x<td>y", 200000) + "</table>");
    const auto table = document_->table(document_->firstTable(nullptr));
    ASSERT_EQ(table->rowCount(), 200000U);
    std::string text;
    for (size_t row = table->rowCount(); row > 0; --row) {
        table->appendCellText(row - 1, 1, text);
    }
    EXPECT_EQ(text, repeated("y", 200000));
    load("<table><tr>" + repeated("<td>x", 200000) + "</table>");
    EXPECT_EQ(document_->table(document_->firstTable(nullptr))->cellCount(0), 200000U);
}

/// Elements inside of each other, each with a long style.
std::string styledAround(const std::string& inside) {
    const std::string style = repeated("color:red;", 1000);
    return repeated("<div style='" + style + "'>", 300) + inside;
}

TEST_F(HostilePage, MayStyleAllThatIsAroundATable) {
    load(styledAround("<table>" + repeated("<tr><td>x<td>y", 100000) + "</table>"));
    const auto table = document_->table(document_->firstTable(nullptr));
    std::string text;
    for (size_t row = 0; row < table->rowCount(); ++row) {
        table->appendCellText(row, 1, text);
    }
    EXPECT_EQ(text, repeated("y", 100000));
}

TEST_F(HostilePage, MayHaveTextThatBelongsInFrontOfATable) {
    load("<table>" + repeated("x<tr><td>", 100000));
    EXPECT_EQ(document_->table(document_->firstTable(nullptr))->rowCount(), 100000U);
}

TEST_F(HostilePage, MayBeCutOffAnywhere) {
    const std::string page =
        "<!DOCTYPE html PUBLIC \"a\" 'b'><html><head><title>a&amp;b</title><script><!-- <script> "
        "--></script><body class='x' a=b><!-- c --><table id=\"t\"><tr><td>&notin;x&#x41;"
        "<svg><![CDATA[x]]></svg><textarea>y</textarea></table></body></html>";
    for (size_t length = 0; length <= page.size(); ++length) {
        load(page.substr(0, length));
    }
}

TEST_F(HostilePage, MayBeNoPageAtAll) {
    std::string bytes = "\x89PNG\r\n\x1A\n";
    uint32_t state = 1;
    for (int number = 0; number < 1000000; ++number) {
        state = state * 1664525 + 1013904223;
        bytes += static_cast<char>(state >> 24);
    }
    load(bytes);
    EXPECT_EQ(document_->firstTable(nullptr), nullptr);
    load(std::string(1000000, '\0'));
    EXPECT_EQ(document_->firstTable(nullptr), nullptr);
    load(std::string(1000000, '<'));
    EXPECT_EQ(document_->firstTable(nullptr), nullptr);
    load(std::string(1000000, '&'));
    EXPECT_EQ(document_->firstTable(nullptr), nullptr);
}

class HostileSearch : public HostilePage {
protected:
    /// Whether the first element of that inner text is the one of that id.
    bool isFound(const std::string& text, const std::string& id) {
        const Element element = document_->findElement(
            [&](Element each) { return document_->innerTextEquals(each, text); });
        return element != nullptr && element == document_->elementById(id);
    }

    const std::string deep_ = repeated("<div>", 1900);
};

TEST_F(HostileSearch, MayBeOfAPageWithoutText) {
    load(deep_ + repeated("<wbr>", 1000000));
    EXPECT_FALSE(isFound("x", ""));
    EXPECT_TRUE(document_->findElement(
                    [&](Element each) { return document_->innerTextEquals(each, ""); }) != nullptr);
}

TEST_F(HostileSearch, MayBeOfAPageOfBlanks) {
    load(deep_ + std::string(50'000'000, ' ') + "<p id=a>x");
    EXPECT_FALSE(isFound("y", ""));
}

TEST_F(HostileSearch, MayBeForATextThatAllSeemToBeginWith) {
    load(deep_ + "<i>x</i>" + repeated("<wbr>", 900000) + repeated("</div>", 900) + "z<p id=a>x y");
    EXPECT_TRUE(isFound("x y", "a"));
}

TEST_F(HostileSearch, MayBeForATextThatEndsDeepInside) {
    load("x" + deep_ + repeated("<wbr>", 900000) + "<p id=a>y</p>" + "x");
    EXPECT_TRUE(isFound("y", "a"));
}

TEST_F(HostileSearch, MayBeOfAPageThatStylesAllAroundItsTexts) {
    load(styledAround(repeated("<p>x", 100000) + "<p id=a>y"));
    EXPECT_TRUE(isFound("y", "a"));
}

TEST_F(HostileSearch, MayClimbOutOfADeepPageWithoutATable) {
    load(deep_ + repeated("<wbr>", 1000000) + "<p id=a>");
    for (Element each = document_->elementById("a"); each != nullptr;
         each = document_->parent(each)) {
        EXPECT_EQ(document_->firstTable(each), nullptr);
    }
}

TEST_F(HostilePage, IsRefusedWhenItIsTooLarge) {
    const std::string path = directory_.write("page.html", TABLE);
    std::filesystem::resize_file(path, 100'000'000);
    open(path);
    EXPECT_EQ(cell(), "x");
    std::filesystem::resize_file(path, 100'000'001);
    try {
        open(path);
        ADD_FAILURE() << "it was not refused";
    } catch (const PlatformError& error) {
        EXPECT_EQ(error.description(), "The page is larger than 100 MB");
    }
}

TEST_F(HostilePage, IsRefusedWhenItBecomesTooLargeInUtf8) {
    EXPECT_EQ(refusalOf(std::string(34'000'000, '\x80')), "The page is larger than 100 MB");
}

}  // namespace
}  // namespace intake
