// Finding elements.

#include "tests/platform/html/HtmlTest.h"

namespace intake {
namespace {

class HtmlSearch : public HtmlTest {
protected:
    /// The ids of all elements that have one, in the order of the walk.
    std::string order() {
        std::string ids;
        document_->findElement([&](Element each) {
            for (const char* id : {"a", "b", "c", "d", "e", "f"}) {
                if (document_->elementById(id) == each) {
                    ids += id;
                }
            }
            return false;
        });
        return ids;
    }
};

TEST_F(HtmlSearch, VisitsAnElementBeforeItsChildrenAndTheseBeforeItsSiblings) {
    load("<body id=a><div id=b><p id=c>x</p><p id=d>y</p></div><div id=e></div></body>");
    EXPECT_EQ(order(), "abcde");
}

TEST_F(HtmlSearch, EndsAtTheFirstMatch) {
    load("<p class=x id=a><p class=x id=b>");
    int visited = 0;
    const Element found = document_->findElement([&](Element each) {
        ++visited;
        return document_->classNameEquals(each, "x");
    });
    EXPECT_EQ(found, document_->elementById("a"));
    EXPECT_EQ(visited, 4);  // html, head, body, p
}

TEST_F(HtmlSearch, FindsNothingWhereNothingMatches) {
    load("<p>");
    EXPECT_EQ(document_->findElement([](Element) { return false; }), nullptr);
}

TEST_F(HtmlSearch, FindsTheFirstElementOfAnId) {
    load("<p id=''>0<p id=a>1<table id=a><tr><td>2</table><p ID='B b'>");
    EXPECT_FALSE(document_->isTable(document_->elementById("a")));
    EXPECT_NE(document_->elementById("B b"), nullptr);
    for (const char* none : {"", "A", "b", "B", "a "}) {
        EXPECT_EQ(document_->elementById(none), nullptr) << none;
    }
}

TEST_F(HtmlSearch, ComparesTheWholeClassAttribute) {
    load("<meta charset=utf-8><p id=a class=' x  y '><p id=b><p id=c class='r\xC3\xA9sultats'>");
    const Element a = document_->elementById("a");
    EXPECT_TRUE(document_->classNameEquals(a, " x  y "));
    for (const char* other : {"x", "x y", "x  y", " X  Y ", ""}) {
        EXPECT_FALSE(document_->classNameEquals(a, other)) << other;
    }
    EXPECT_TRUE(document_->classNameEquals(document_->elementById("b"), ""));
    EXPECT_TRUE(document_->classNameEquals(document_->elementById("c"), "r\xC3\xA9sultats"));
}

TEST_F(HtmlSearch, FindsTheFirstTableOfTheDocumentOrInsideAnElement) {
    load("<div id=a></div><div id=b><table id=c><tr><td><table id=d></table></table></div>");
    EXPECT_EQ(document_->firstTable(nullptr), document_->elementById("c"));
    EXPECT_EQ(document_->firstTable(document_->elementById("b")), document_->elementById("c"));
    EXPECT_EQ(document_->firstTable(document_->elementById("c")), document_->elementById("d"));
    EXPECT_EQ(document_->firstTable(document_->elementById("d")), nullptr);
    EXPECT_EQ(document_->firstTable(document_->elementById("a")), nullptr);
}

TEST_F(HtmlSearch, ClimbsUpToTheRoot) {
    load("<p id=a>x</p>");
    const Element body = document_->parent(document_->elementById("a"));
    const Element html = document_->parent(body);
    EXPECT_EQ(document_->findElement([](Element) { return true; }), html);
    EXPECT_EQ(document_->parent(html), nullptr);
}

TEST_F(HtmlSearch, SeesNothingInsideTemplatesAndScripts) {
    load(
        "<template><table id=a></table></template><script>'<table id=b></table>'</script>"
        "<!-- <table id=c></table> --><textarea><table id=d></table></textarea>");
    EXPECT_EQ(document_->firstTable(nullptr), nullptr);
    EXPECT_EQ(order(), "");
}

TEST_F(HtmlSearch, SeesATableThatWasMovedOutOfAnotherWhereBrowsersPutIt) {
    load("<table id=a><p id=b>x</p><tr><td id=c></table>");
    EXPECT_EQ(order(), "bac");
}

TEST_F(HtmlSearch, FindsTheOutermostElementOfATextAndFindsItAgain) {
    load("<body><div id=a><wbr><div id=b><i id=c>x</i></div></div><p id=d>x y</p><p id=e>y</p>");
    const auto find = [this](const std::string& text) {
        return document_->findElement(
            [&](Element each) { return document_->innerTextEquals(each, text); });
    };
    for (const char* time : {"once", "twice"}) {
        EXPECT_EQ(find("x"), document_->elementById("a")) << time;
        EXPECT_EQ(find("y"), document_->elementById("e")) << time;
        EXPECT_EQ(find("x y"), document_->elementById("d")) << time;
        EXPECT_EQ(find("z"), nullptr) << time;
    }
    EXPECT_TRUE(document_->innerTextEquals(document_->elementById("c"), "x"));
}

TEST_F(HtmlSearch, FindsTheTableOfAnAncestorWhenThatOfAnElementInsideWasNotFound) {
    load("<div id=a><div id=b><p id=c></p></div><table id=d></table></div>");
    for (const char* id : {"c", "b"}) {
        EXPECT_EQ(document_->firstTable(document_->elementById(id)), nullptr);
    }
    EXPECT_EQ(document_->firstTable(document_->elementById("a")), document_->elementById("d"));
    EXPECT_EQ(document_->firstTable(document_->elementById("d")), nullptr);
    EXPECT_EQ(document_->firstTable(document_->elementById("a")), document_->elementById("d"));
}

TEST_F(HtmlSearch, GivesUpOnceNobodyWaits) {
    load("<p><p>");
    int visited = 0;
    try {
        document_->findElement([&](Element) {
            endMark_.set();
            ++visited;
            return false;
        });
        ADD_FAILURE() << "it went on";
    } catch (const PlatformError& error) {
        EXPECT_EQ(error.description(), "The load was given up.");
    }
    EXPECT_EQ(visited, 1);
    EXPECT_THROW(document_->firstTable(nullptr), PlatformError);
}

TEST_F(HtmlSearch, LeavesATableThatGivesUpOnceNobodyWaits) {
    load("<table><tr><td>x</table>");
    const auto table = document_->table(document_->firstTable(nullptr));
    EXPECT_EQ(table->cellCount(0), 1U);
    endMark_.set();
    EXPECT_THROW(table->cellCount(0), PlatformError);
}

TEST_F(HtmlSearch, OfAnEmptyPageFindsOnlyWhatEveryPageHas) {
    for (const char* page : {"", " ", "x", "<!-- x -->", "\xEF\xBB\xBF"}) {
        load(page);
        int elements = 0;
        document_->findElement([&](Element) {
            ++elements;
            return false;
        });
        EXPECT_EQ(elements, 3) << page;
        EXPECT_EQ(document_->firstTable(nullptr), nullptr);
    }
}

}  // namespace
}  // namespace intake
