// What ends the evaluation of an expression.

#include <gtest/gtest.h>

#include <thread>

#include "formats/xml/xml_load.h"
#include "platform/Platform.h"
#include "platform/PlatformError.h"
#include "platform/linux/xml/LibxmlXPath.h"

namespace intake {

namespace {

constexpr const char* EXPLODING = "//e[count(//e[count(//e) > 0]) > 0]";

class XPathLimits : public testing::Test {
protected:
    /// Why an expression finds nothing; empty when it does.
    std::string failureOf(LibxmlXPath& xpath, const std::string& expression) {
        xmlDoc* const document = document_.document.get();
        const XPathExpression compiled = xpath.compile(expression);
        try {
            xpath.select(compiled, document, reinterpret_cast<xmlNode*>(document));
            return "";
        } catch (const PlatformError& error) {
            return error.description();
        }
    }

    static std::string manyElements() {
        std::string text = "<r>";
        for (int i = 0; i < 3000; ++i) {
            text += "<e/>";
        }
        return text + "</r>";
    }

    EndMark endMark_;
    const std::unique_ptr<XmlDocument> keepsLibraryQuiet_ =
        systemPlatform().xml.createDocument(TextEncoding::UTF8, XmlSource::LOCAL_FILE, endMark_);
    const std::string text_ = manyElements();
    const LoadedXml document_ = loadXml(TextSource(text_), endMark_);
};

TEST_F(XPathLimits, TooMuchTimeIsAnErrorThatNamesTheExpression) {
    LibxmlXPath xpath(endMark_, std::chrono::milliseconds(100));

    EXPECT_EQ(failureOf(xpath, EXPLODING),
              "Looking for nodes takes more than 0 seconds of the processor's time: " +
                  std::string(EXPLODING));
}

TEST_F(XPathLimits, AllEvaluationsTogetherHaveOneTime) {
    LibxmlXPath xpath(endMark_, std::chrono::milliseconds(200));
    const std::string expression = "//e[position() mod 100 = 0][count(//e) > 0]";
    int evaluations = 0;
    while (failureOf(xpath, expression).empty() && evaluations < 1000) {
        ++evaluations;
    }
    EXPECT_GT(evaluations, 0);
    EXPECT_LT(evaluations, 1000);
    EXPECT_NE(failureOf(xpath, "/r"), "");
}

TEST_F(XPathLimits, TimeBetweenEvaluationsDoesNotCount) {
    LibxmlXPath xpath(endMark_, std::chrono::milliseconds(100));
    EXPECT_EQ(failureOf(xpath, "/r"), "");
    volatile unsigned work = 0;
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(300);
    while (std::chrono::steady_clock::now() < end) {
        work = work + 1;
    }
    EXPECT_EQ(failureOf(xpath, "/r"), "");
}

TEST_F(XPathLimits, NobodyWaitsForAnEvaluationThatWasGivenUp) {
    LibxmlXPath xpath(endMark_);
    std::thread host([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        endMark_.set();
    });

    EXPECT_EQ(failureOf(xpath, EXPLODING), "The load was given up.");
    host.join();
}

TEST_F(XPathLimits, StepsFromManyNodesToMostOthersAreSeen) {
    std::string text = "<r>";
    for (int i = 0; i < 250'000; ++i) {
        text += "<a/>";
    }
    const LoadedXml large = loadXml(TextSource(text + "</r>"), endMark_);
    auto* const root = reinterpret_cast<xmlNode*>(large.document.get());
    for (const std::string expression :
         {"//a/following::a", "/r/a/preceding-sibling::*", "//a/following-sibling::a[. = '']",
          "//a/preceding::node()[position() mod 2 = 0]"}) {
        LibxmlXPath xpath(endMark_, std::chrono::milliseconds(500));
        const XPathExpression compiled = xpath.compile(expression);
        try {
            xpath.select(compiled, large.document.get(), root);
            ADD_FAILURE() << expression;
        } catch (const PlatformError& error) {
            EXPECT_EQ(error.description(),
                      "Looking for nodes takes more than 0 seconds of the processor's time: " +
                          expression);
        }
    }
}

TEST_F(XPathLimits, AFunctionOfOurOwnRefusesWhatOnlyAUserWouldGiveIt) {
    LibxmlXPath xpath(endMark_);
    for (const char* const wrong :
         {"_each()", "_each(/r)", "_each('a','b')", "_each(/r,'a[')", "_each(/r,'a','b')",
          "_each(/r,'1')", "_union()", "_parents()"}) {
        EXPECT_NE(failureOf(xpath, wrong), "") << wrong;
    }
}

TEST_F(XPathLimits, MoreNodesThanTheLibraryTakesAreAnError) {
    std::string text = "<r><b/>";
    for (int i = 0; i < 10'485'760; ++i) {
        text += "<a/>";
    }
    text += "</r>";
    const LoadedXml large = loadXml(TextSource(text), endMark_);
    LibxmlXPath xpath(endMark_);
    EXPECT_EQ(xpath
                  .select(xpath.compile("/r/a"), large.document.get(),
                          reinterpret_cast<xmlNode*>(large.document.get()))
                  ->nodesetval->nodeNr,
              10'485'760);
    const XPathExpression compiled = xpath.compile("/r/*");
    try {
        xpath.select(compiled, large.document.get(),
                     reinterpret_cast<xmlNode*>(large.document.get()));
        FAIL();
    } catch (const PlatformError& error) {
        EXPECT_EQ(error.description(), "There are more than 10485760 nodes to be found: /r/*");
    }
    EXPECT_EQ(xpath
                  .select(xpath.compile("/r/b"), large.document.get(),
                          reinterpret_cast<xmlNode*>(large.document.get()))
                  ->nodesetval->nodeNr,
              1);
}

TEST(XPathNodes, MayBeAsManyAsTheDocumentIsAllowed) {
    const EndMark endMark;
    const std::string text = "<a x='1'>t<!--c--><b/><?p i?><![CDATA[d]]></a>";
    constexpr uint64_t NODES = 8;  // with an attribute and its text

    EXPECT_NE(loadXml(TextSource(text), endMark, "", NODES).document, nullptr);
    for (uint64_t fewer = 0; fewer < NODES; ++fewer) {
        EXPECT_THROW(loadXml(TextSource(text), endMark, "", fewer), TooManyNodes) << fewer;
    }
}

TEST(XPathNodes, OfWhichThereAreTooManyAreNotMadeOfWhatTheParserHasLetGo) {
    const EndMark endMark;
    const std::string text = "<r><a x='" + std::string(10'000'000, 'x') + "'/></r>";

    EXPECT_THROW(loadXml(TextSource(text), endMark, "", 1), TooManyNodes);
}

}  // namespace

}  // namespace intake
