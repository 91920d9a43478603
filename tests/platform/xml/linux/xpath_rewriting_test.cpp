// Expressions in the form in which they are evaluated: what they find stays the same.

#include "formats/xml/xpath_rewriting.h"

#include <gtest/gtest.h>
#include <libxml/xpath.h>

#include <algorithm>
#include <random>
#include <vector>

#include "formats/xml/xml_load.h"
#include "platform/Platform.h"
#include "platform/PlatformError.h"
#include "platform/linux/xml/LibxmlXPath.h"

namespace intake {

namespace {

std::string rewritten(std::string_view expression) {
    std::vector<std::string> steps;
    return rewrittenXPath(expression, steps);
}

TEST(XPathRewriting, LeavesPlainExpressionsAsTheyAre) {
    for (const char* const plain : {"/r/a", "//a|//b", "a//b/.", "*", "///", "a|", ""}) {
        EXPECT_EQ(rewritten(plain), plain);
    }
}

TEST(XPathRewriting, CallsAFunctionForAUnion) {
    EXPECT_EQ(rewritten("//a[1]|//b"), " _union( _parents(/)/a[1],//b)");
    EXPECT_EQ(rewritten("(a|b | c)[2]/@d"), "( _union(a,b , c))[2]/@d");
    EXPECT_EQ(rewritten("count(a|b) - 1 or a|@b = c|d"),
              "count( _union(a,b)) - 1 or _union( a,@b )= _union( c,d)");
}

TEST(XPathRewriting, CallsAFunctionForTwoSlashesWithinAPath) {
    EXPECT_EQ(rewritten("a//b[1]//@c"), " _elements( _parents(a)/b[1])/@c");
    EXPECT_EQ(rewritten("a[x]//b|//c"), " _union( _parents(a[x])/b,//c)");
    EXPECT_EQ(rewritten("(//a)//text()"), " _parents((//a))/text()");
    EXPECT_EQ(rewritten("a[1]//* // ."), " _descendants( _parents(a[1])/* )/ .");
    EXPECT_EQ(rewritten("a//self::b"), " _descendants(a)/self::b");
    EXPECT_EQ(rewritten("a//self :: b"), " _descendants(a)/self :: b");
}

TEST(XPathRewriting, LeavesTwoSlashesToTheLibraryBehindWhatIsOneNode) {
    for (const char* const one : {"(//a)[1]", "/r//a/@x", "//a/b[1]", "..//a[1]", " . //@x", "//a(",
                                  "//text()[1]", "//.[1]"}) {
        EXPECT_EQ(rewritten(one), one);
    }
    EXPECT_EQ(rewritten("/r/s//a[1]"), " _parents(/r/s)/a[1]");
    EXPECT_EQ(rewritten("/descendant::r//a"), " _parents(/descendant::r)/a");
    EXPECT_EQ(rewritten("/descendant::r/following::a"), R"( _each(/descendant::r,"following::a"))");
}

TEST(XPathRewriting, CallsAFunctionForTwoSlashesThatWouldCollectAllNodes) {
    EXPECT_EQ(rewritten("//a[1]"), " _parents(/)/a[1]");
    EXPECT_EQ(rewritten(" // n:* [x]/b"), " _parents(/)/ n:* [x]/b");
    EXPECT_EQ(rewritten("/*//a[1]"), " _parents(/*)/a[1]");
    EXPECT_EQ(rewritten("//@x"), " _elements(/)/@x");
    EXPECT_EQ(rewritten("/r//@x"), " _elements(/r)/@x");
    EXPECT_EQ(rewritten("1+//*[//@x]"), "1+ _parents(/)/*[ _elements(/)/@x]");
}

TEST(XPathRewriting, CallsAFunctionForAStepFromManyNodesToWhatTheyHaveInCommon) {
    EXPECT_EQ(rewritten("//a/.."), R"( _each(//a,".."))");
    EXPECT_EQ(rewritten("a[1]// .. /b"), R"( _each( _descendants(a[1]),".. ")/b)");
    for (const std::string axis :
         {"parent", "ancestor", "ancestor-or-self", "descendant", "descendant-or-self"}) {
        EXPECT_EQ(rewritten("a/" + axis + "::b"), " _each(a,\"" + axis + "::b\")");
    }
}

TEST(XPathRewriting, CallsAFunctionForAStepFromManyNodesToMost) {
    EXPECT_EQ(rewritten("//a/following::b"), R"( _each(//a,"following::b"))");
    EXPECT_EQ(rewritten("a/b/preceding-sibling :: *[2][@x='1']/c"),
              R"( _each(a/b,"preceding-sibling :: *[2][@x='1']")/c)");
    EXPECT_EQ(rewritten("count(//a/preceding::node() )"),
              R"(count( _each(//a,"preceding::node() ")))");
    EXPECT_EQ(rewritten("//following-sibling::a[b/c//@d]"),
              R"( _each(/descendant-or-self::node(),"following-sibling::a[ _elements(b/c)/@d]"))");
    EXPECT_EQ(rewritten("a[1]//following::b[. = \"x\"]"),
              R"( _each( _descendants(a[1]),'following::b[. = "x"]'))");
}

TEST(XPathRewriting, LeavesSuchAStepFromOneNodeOrWithBothQuotesToTheLibrary) {
    for (const char* const left :
         {"following::b", "./following::b", "/a/preceding::b", "a[following-sibling::b]",
          R"(//a/following::b[. = "x" or . = 'y'])", "//following/a", "//a/following", "..",
          "../..", "/a/..", "a[../b]", "../@x"}) {
        EXPECT_EQ(rewritten(left), left);
    }
}

TEST(XPathRewriting, TakesEachOfManyNestedStepsOnce) {
    std::string expression = "x";
    std::string text = "x";
    for (int depth = 0; depth < 16; ++depth) {
        expression.insert(0, "a/following::b[").append("]");
        const std::string step = "following::b[" + text + "]";
        text = depth == 0   ? " _each(a,\"" + step + "\")"
               : depth == 1 ? " _each(a,'" + step + "')"
                            : "a/" + step;
    }
    std::vector<std::string> steps;
    EXPECT_EQ(rewrittenXPath(expression, steps), text);
    EXPECT_EQ(steps.size(), 2U);
}

TEST(XPathRewriting, KnowsOperatorsFromNames) {
    EXPECT_EQ(rewritten("and[or|div]"), "and[ _union(or,div)]");
    EXPECT_EQ(rewritten("a[b * c|d mod e-f|g]"), "a[b * _union( c,d )mod _union( e-f,g)]");
    EXPECT_EQ(rewritten("*[* * *|*]"), "*[* * _union( *,*)]");
    EXPECT_EQ(rewritten("n:*[1]|@n:a|child::b"), " _union(n:*[1],@n:a,child::b)");
}

TEST(XPathRewriting, LeavesTextsAlone) {
    EXPECT_EQ(rewritten("a['x|y//z']|b[. = \"]|[\"]"), " _union(a['x|y//z'],b[. = \"]|[\"])");
}

TEST(XPathRewriting, WritesTheAxisBeforeNamesBeyondAscii) {
    EXPECT_EQ(rewritten("/é/b[1]"), "/child::é/b[1]");
    EXPECT_EQ(rewritten("/a[x = '/é']"), "/a[x = '/é']");
}

TEST(XPathRewriting, LeavesWhatIsWrongWrong) {
    const EndMark endMark;
    const auto quiet =
        systemPlatform().xml.createDocument(TextEncoding::UTF8, XmlSource::LOCAL_FILE, endMark);
    LibxmlXPath xpath(endMark);
    for (const char* const wrong : {"a[1]|",
                                    "|a[1]",
                                    "a[1]||b",
                                    "a[",
                                    "a]",
                                    "(a",
                                    "a)",
                                    "a[1]///b",
                                    "a[1]//",
                                    "a['",
                                    "(a]",
                                    "()",
                                    "a[]",
                                    "f(a,)",
                                    "a[1]|*|",
                                    "a[(]",
                                    "//a/following::",
                                    "//a/@//following::b",
                                    "child:://following::b",
                                    "//a/..[1]",
                                    "//a/...",
                                    "//a/following::b[",
                                    "//a/preceding::b[]",
                                    "//a[b/following::c[(]]"}) {
        EXPECT_THROW(xpath.compile(wrong), PlatformError) << wrong;
    }
}

/// Makes documents and expressions by chance.
class Chance {
public:
    explicit Chance(unsigned seed) : engine_(seed) {}

    std::string document() { return "<a>" + content(3) + "</a>"; }

    std::string expression(int depth = 1) {
        switch (upTo(depth > 0 ? 5 : 1)) {
            case 0:
            case 1:
                return path(depth);
            case 2:
                return path(depth) + "|" + path(depth);
            case 3:
                return "(" + expression(depth - 1) + ")" + pick({"", "[2]", "[last()]", "/b"});
            default:
                return path(depth) + "//" + step(depth);
        }
    }

private:
    size_t upTo(int count) { return engine_() % static_cast<unsigned>(count); }

    std::string pick(const std::vector<std::string>& all) {
        return all[upTo(static_cast<int>(all.size()))];
    }

    std::string content(int depth) {
        std::string text;
        for (size_t count = upTo(5); depth > 0 && count > 0; --count) {
            const std::string name = pick({"a", "b", "c"});
            text += pick({"", "t", "<!--c-->", "<?p i?>"}) + "<" + name +
                    pick({"", " x='1'", " x='2'"}) + ">" + content(depth - 1) + "</" + name + ">" +
                    pick({"", "u", "<![CDATA[v]]>"});
        }
        return text;
    }

    std::string step(int depth) {
        const std::string test = pick({"a", "b", "*", "node()", "text()", "@x", "..", ".",
                                       "following-sibling::*", "preceding-sibling::node()",
                                       "descendant::b", "ancestor::*", "preceding::text()"});
        const bool takesPredicate = depth > 0 && test != "." && test != "..";
        return test + (takesPredicate ? predicate(depth - 1) : "");
    }

    std::string predicate(int depth) {
        switch (upTo(7)) {
            case 0:
                return pick({"[1]", "[last()]", "[position() < 3]", "[@x]", "[@x='1' or b]"});
            case 1:
                return "[" + path(depth) + "|" + path(depth) + "]";
            case 2:
                return "[" + path(depth) + "//" + step(0) + " and " + path(0) + "|@x or b//c]";
            case 3:
                return "[count(" + path(depth) + "//" + step(depth) + ") > 1]";
            default:
                return "";
        }
    }

    std::string path(int depth) {
        std::string text = pick({"/", "//", ".//", "/a/"}) + step(depth);
        for (size_t count = upTo(3); count > 0; --count) {
            text += pick({"/", "//"}) + step(depth);
        }
        return text;
    }

    std::mt19937 engine_;
};

/// All nodes, in the document's order.
void appendNodes(xmlNode* node, std::vector<const xmlNode*>& all) {
    all.push_back(node);
    if (node->type == XML_ELEMENT_NODE) {
        for (xmlAttr* each = node->properties; each != nullptr; each = each->next) {
            all.push_back(reinterpret_cast<const xmlNode*>(each));
        }
    }
    if (node->type == XML_ELEMENT_NODE || node->type == XML_DOCUMENT_NODE) {
        for (xmlNode* child = node->children; child != nullptr; child = child->next) {
            appendNodes(child, all);
        }
    }
}

/// The positions of what was found.
std::vector<size_t> positions(const xmlXPathObject* found, const std::vector<const xmlNode*>& all) {
    std::vector<size_t> places;
    for (int i = 0; i < xmlXPathNodeSetGetLength(found->nodesetval); ++i) {
        const auto place = std::find(all.begin(), all.end(), found->nodesetval->nodeTab[i]);
        places.push_back(static_cast<size_t>(place - all.begin()));
    }
    return places;
}

/// What the library finds by itself, which may be in another order.
std::vector<size_t> expectedPositions(xmlDoc* document, const std::string& expression,
                                      const std::vector<const xmlNode*>& all) {
    xmlXPathContext* const context = xmlXPathNewContext(document);
    context->node = reinterpret_cast<xmlNode*>(document);
    XPathSelection found(
        xmlXPathEval(reinterpret_cast<const xmlChar*>(expression.c_str()), context));
    std::vector<size_t> places = positions(found.get(), all);
    std::sort(places.begin(), places.end());
    xmlXPathFreeContext(context);
    return places;
}

TEST(XPathRewriting, FindsWhatTheLibraryFindsInTheDocumentsOrder) {
    const EndMark endMark;
    for (unsigned seed = 0; seed < 1000; ++seed) {
        Chance chance(seed);
        const std::string text = chance.document();
        const std::string expression = chance.expression();
        const LoadedXml plain = loadXml(TextSource(text), endMark);
        const LoadedXml loaded = loadXml(TextSource(text), endMark);
        std::vector<const xmlNode*> plainNodes, nodes;
        appendNodes(reinterpret_cast<xmlNode*>(plain.document.get()), plainNodes);
        appendNodes(reinterpret_cast<xmlNode*>(loaded.document.get()), nodes);
        LibxmlXPath xpath(endMark);
        const XPathExpression compiled = xpath.compile(expression);

        xpath.prepareOrder(loaded.document.get(), expression);
        const XPathSelection found = xpath.select(
            compiled, loaded.document.get(), reinterpret_cast<xmlNode*>(loaded.document.get()));

        EXPECT_EQ(positions(found.get(), nodes),
                  expectedPositions(plain.document.get(), expression, plainNodes))
            << expression << "\n"
            << text;
    }
}

}  // namespace

}  // namespace intake
