// Which rows are handed out while a document is read, and when the whole document is needed.

#include <vector>

#include "tests/platform/xml/XmlTest.h"

namespace intake {

namespace {

constexpr const char* DOCUMENT =
    "<d><r id='1'><n>one</n></r><r id='2'><n>two</n><r id='3'/></r><!--c--></d>";

std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

class XmlRowsWhileLoading : public XmlTest {
protected:
    XmlRowsWhileLoading() {
        wanted_.expression = "/d/r";
        wanted_.end = 1000;
    }

    /// The rows that are taken from a text, or why there are none.
    std::string taken(const std::string& text = DOCUMENT) {
        taken_.clear();
        wanted_.needsMarkup = true;
        document_->takeRowsWhileLoading(
            wanted_, {[this](Node row) { take(row); }, [this] { taken_ = "forgotten"; }});
        document_->loadText(text);
        return document_->rowsFound() ? taken_ : taken_ + " none";
    }

    std::string takenBy(const std::string& expression) {
        wanted_.expression = expression;
        return taken();
    }

    XmlRowsWanted wanted_;

private:
    void take(Node row) {
        document_->appendMarkup(row, taken_);
        if (wanted_.key) {
            taken_ += "=";
            document_->appendKeyText(row, taken_);
        }
        taken_ += "|";
    }

    std::string taken_;
};

TEST_F(XmlRowsWhileLoading, KnowHowLargeTheirDocumentIs) {
    std::vector<size_t> sizes;
    document_->takeRowsWhileLoading(
        wanted_, {[&](Node) { sizes.push_back(document_->sourceSize()); }, [] {}});
    document_->loadText(DOCUMENT);
    const size_t size = std::string_view(DOCUMENT).size();
    EXPECT_EQ(sizes, std::vector<size_t>(2, size));
    document_->loadText("<d/>");
    EXPECT_EQ(document_->sourceSize(), 4U);
}

TEST_F(XmlRowsWhileLoading, AreThoseOfPlainPaths) {
    EXPECT_EQ(takenBy("/d/r"),
              "<r id=\"1\"><n>one</n></r>|<r id=\"2\"><n>two</n><r id=\"3\"/></r>|");
    EXPECT_EQ(takenBy("//r[@id>1]"), "<r id=\"2\"><n>two</n><r id=\"3\"/></r>|<r id=\"3\"/>|");
    EXPECT_EQ(takenBy("d/*[n='two']"), "<r id=\"2\"><n>two</n><r id=\"3\"/></r>|");
    EXPECT_EQ(takenBy(" / d / r [ 1 ] / n "), "<n>one</n>|");
    EXPECT_EQ(takenBy("/d//r[position()<=1]/@id"), "id=\"1\"|id=\"3\"|");
    EXPECT_EQ(takenBy("//n/text()"), "one|two|");
    EXPECT_EQ(takenBy("//@*"), "id=\"1\"|id=\"2\"|id=\"3\"|");
    EXPECT_EQ(takenBy("/d/x"), "");
    EXPECT_EQ(document_->rowsFound(), 0U);
}

TEST_F(XmlRowsWhileLoading, MayLieThirtyOneStepsDeepAndNoDeeper) {
    const std::string document = repeated("<a>", 32) + "<b/>" + repeated("</a>", 32);
    for (const int steps : {30, 31, 32, 33}) {
        wanted_.expression = repeated("/a", steps);
        EXPECT_EQ(taken(document).ends_with(" none"), steps > 31) << steps;
        wanted_.expression = "/a";
        wanted_.key = repeated("a/", steps - 1) + "b";
        EXPECT_EQ(taken(document).ends_with(" none"), steps > 31) << steps;
        wanted_.key.reset();
    }
}

TEST_F(XmlRowsWhileLoading, AreNoneInADocumentThatIsNestedTooDeep) {
    const auto nested = [this](int depth) {
        return taken(repeated("<a>", depth) + repeated("</a>", depth));
    };
    wanted_.expression = "/a";
    EXPECT_FALSE(nested(250).ends_with(" none"));
    EXPECT_TRUE(nested(251).ends_with(" none"));
}

TEST_F(XmlRowsWhileLoading, AreComparedByAllTextsInsideOfAChild) {
    const std::string document =
        "<d><r><n>on<i>e</i></n></r><r><n>one</n></r><r><n>on</n></r><r><n>one1</n></r></d>";
    wanted_.expression = "/d/r[n='one']";
    EXPECT_EQ(taken(document), "<r><n>on<i>e</i></n></r>|<r><n>one</n></r>|");
    wanted_.expression = "/d/r[n!='one']";
    EXPECT_EQ(taken(document), "<r><n>on</n></r>|<r><n>one1</n></r>|");
    wanted_.expression = "/d/r[n='']";
    EXPECT_EQ(taken("<d><r><n/></r></d>"), "<r><n/></r>|");
}

TEST_F(XmlRowsWhileLoading, AreCountedBehindAConditionOnAChildAmongThoseOfOneParent) {
    const std::string document =
        "<d><g><r i='1'><n/></r><r i='2'/><r i='3'><n/></r></g><g><r i='4'><n/></r></g></d>";
    wanted_.expression = "//r[n][2]";
    EXPECT_EQ(taken(document), "<r i=\"3\"><n/></r>|");
    wanted_.expression = "/d/g/r[n][1]";
    EXPECT_EQ(taken(document), "<r i=\"1\"><n/></r>|<r i=\"4\"><n/></r>|");
}

TEST_F(XmlRowsWhileLoading, AreNoneWhereANumberIsTooLongToCompare) {
    wanted_.expression = "/d/r[n=1]";
    const auto withDigits = [this](size_t count) {
        return taken("<d><r><n>" + std::string(count - 1, '0') + "1</n></r></d>");
    };
    EXPECT_FALSE(withDigits(1000).ends_with(" none"));
    EXPECT_TRUE(withDigits(1001).ends_with(" none"));
}

TEST_F(XmlRowsWhileLoading, AreNoneWhereRowsWithinRowsAreGoneThroughTooOften) {
    wanted_.expression = "//a[a<5]";
    const std::string nested = repeated("<a>", 240) + repeated("</a>", 240);
    EXPECT_FALSE(taken("<a>" + nested + "</a>").ends_with(" none"));
    EXPECT_TRUE(taken("<a>" + repeated(nested, 7000) + "</a>").ends_with(" none"));
}

TEST_F(XmlRowsWhileLoading, AreNoneForALiteralThatTheLibraryRefuses) {
    EXPECT_EQ(takenBy("/d/r[@id='\x01']"), " none");
    EXPECT_EQ(takenBy("/d/r[@id='\t']"), "");
}

TEST_F(XmlRowsWhileLoading, AreNoneForANameThatIsVeryLong) {
    wanted_.expression = "/d/r";
    const auto withName = [this](size_t length) {
        return taken("<d><" + std::string(length, 'n') + "/><r/></d>");
    };
    EXPECT_EQ(withName(10'000), "<r/>|");
    EXPECT_TRUE(withName(10'001).ends_with(" none"));
}

TEST_F(XmlRowsWhileLoading, AreNoneForAnyOtherExpression) {
    for (const char* const expression : {"(/d/r)",
                                         "/d/r|/d/x",
                                         "/d/r[last()]",
                                         "/d/r/..",
                                         "/d/r[n='one']/n",
                                         "/d/r/n[.='one']",
                                         "/d/r[n and @id]",
                                         "count(//r)",
                                         "/d/following::r",
                                         "/d/r[",
                                         "",
                                         "/",
                                         "//",
                                         "/d/",
                                         "/d/p:r",
                                         "/d/r[@id='1]",
                                         "/d/r[@id<'1']",
                                         "/d/text()[1]",
                                         "/d/@id/x",
                                         "id('1')",
                                         ".",
                                         "/d/r[-1]",
                                         "/d/r[1.5]",
                                         "/d/r[n=1.5]",
                                         "/d/r[text()]",
                                         "/d/comment()",
                                         "/d/\xC3\xB6"}) {
        EXPECT_EQ(takenBy(expression), " none") << expression;
    }
}

TEST_F(XmlRowsWhileLoading, KnowTheirKeys) {
    wanted_.key = "n";
    EXPECT_EQ(taken(),
              "<r id=\"1\"><n>one</n></r>=one|"
              "<r id=\"2\"><n>two</n><r id=\"3\"/></r>=two|");
    wanted_.key = ".//@id";
    EXPECT_EQ(taken(), "<r id=\"1\"><n>one</n></r>=1|<r id=\"2\"><n>two</n><r id=\"3\"/></r>=2|");
    for (const char* const key : {"..", "n|x", "/d/r/n", "position()", "p:n", ""}) {
        wanted_.key = key;
        EXPECT_EQ(taken(), " none") << key;
    }
}

TEST_F(XmlRowsWhileLoading, AreThoseOfTheRange) {
    wanted_.expression = "//r";
    wanted_.first = 1;
    wanted_.end = 2;
    EXPECT_EQ(taken(), "<r id=\"2\"><n>two</n><r id=\"3\"/></r>|");
    EXPECT_EQ(document_->rowsFound(), 3U);
    wanted_.first = 2;
    wanted_.end = 3;
    EXPECT_EQ(taken(), "<r id=\"3\"/>|");
}

TEST_F(XmlRowsWhileLoading, AreForgottenWhenTheDocumentIsForTheParser) {
    EXPECT_EQ(taken("<d><r/></d"), "forgotten none");
    EXPECT_EQ(document_->parseErrorReason(), "expected '>' (line 1, column 11)");
    EXPECT_EQ(taken("<d><r/>\xC3\xB6<\xC3\xB6/></d>"), "forgotten none");
    EXPECT_EQ(count("/d/r"), 1U);
}

TEST_F(XmlRowsWhileLoading, LeaveNoDocument) {
    EXPECT_EQ(takenBy("/d/x"), "");
    EXPECT_EQ(document_->rootElement(), nullptr);
    EXPECT_EQ(count("//node()"), 0U);
}

TEST_F(XmlRowsWhileLoading, HaveTheNamespacesOfTheDeclarations) {
    wanted_.namespaces = "xmlns:q='urn:p'";
    wanted_.expression = "//q:r";
    EXPECT_EQ(taken("<d xmlns:p='urn:p'><p:r p:a='1'/><r/></d>"),
              "<p:r xmlns:p=\"urn:p\" p:a=\"1\"/>|");
    wanted_.namespaces = "urn:p";
    EXPECT_EQ(taken(), " none");
}

/// As much as is read at a time is far less.
TEST_F(XmlRowsWhileLoading, AreWholeInALargeFile) {
    constexpr int ROWS = 100'000;
    std::string text = "<d>";
    std::string expected;
    for (int row = 0; row < ROWS; ++row) {
        const std::string markup = "<r><n>" + std::to_string(row) + "</n></r>";
        text += markup + "\r\n";
        expected += markup + "|";
    }
    wanted_.end = ROWS;
    EXPECT_TRUE(taken(text + "</d>") == expected);
}

TEST_F(XmlRowsWhileLoading, AreTakenOfADocumentOfMoreElementsThanASetHolds) {
    wanted_.end = 1;
    const std::string row = "<r>" + repeated("<c/>", 999) + "</r>";
    EXPECT_TRUE(taken("<d>" + repeated(row, 10'500) + "</d>") == row + "|");
    EXPECT_EQ(document_->rowsFound(), 10'500U);
}

}  // namespace

}  // namespace intake
