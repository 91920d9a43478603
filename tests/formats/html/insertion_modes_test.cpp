// The trees of pages that take the less travelled ways through the standard's insertion modes.

#include <gtest/gtest.h>

#include <sstream>

#include "formats/html/Page.h"
#include "tests/conformance/tree_dump.h"

namespace intake::html {
namespace {

struct Case {
    const char* name;
    const char* page;
    const char* tree;
};

/// One line of a dump without its indentation, and its depth.
struct Line {
    size_t depth;
    std::string text;
};

Line lineOf(const std::string& line) {
    const size_t start = line.find_first_not_of(' ', 1);
    std::string text = line.substr(start);
    if (text.front() == '<' && text.back() == '>' && text[1] != '!') {
        text = text.substr(1, text.size() - 2);
    }
    return {(start - 2) / 2, text};
}

/// The tree in one line: html(head body(p("text"))).
std::string outline(const std::string& page) {
    const EndMark endMark;
    std::istringstream dump(dumpTree(*parsePage(page, endMark)));
    std::string result;
    size_t depth = 0;
    for (std::string line; std::getline(dump, line);) {
        const Line next = lineOf(line);
        if (next.depth > depth) {
            result += '(';
        } else {
            result += std::string(depth - next.depth, ')') + (result.empty() ? "" : " ");
        }
        result += next.text;
        depth = next.depth;
    }
    return result + std::string(depth, ')');
}

class InsertionMode : public testing::TestWithParam<Case> {};

TEST_P(InsertionMode, BuildsTheTree) {
    EXPECT_EQ(outline(GetParam().page), GetParam().tree);
}

const Case UP_TO_THE_BODY[] = {
    {"Nothing", "", "html(head body)"},
    {"Blanks", " \n ", "html(head body)"},
    {"CommentsEverywhere", "<!--a--><html><!--b--><head><!--c--></head><!--d--><body><!--e-->",
     "<!-- a --> html(<!-- b --> head(<!-- c -->) <!-- d --> body(<!-- e -->))"},
    {"BlanksEverywhere", " <html> <head> </head> <body>x", "html(head(\" \") \" \" body(\"x\"))"},
    {"DoctypesTooLate", "<html><!doctype a><head><!doctype a></head><!doctype a><body><!doctype a>",
     "html(head body)"},
    {"DoctypeTwice", "<!doctype html><!doctype a>", "<!DOCTYPE html> html(head body)"},
    {"EndTagsTooEarly", "</p></title><html></p><head></p></head></p><body>", "html(head body)"},
    {"EndOfBodyFirst", "</body>x", "html(head body(\"x\"))"},
    {"BreakByItsEndTag", "</br>", "html(head body(br))"},
    {"HeadEndsByText", "<head>x", "html(head body(\"x\"))"},
    {"HeadTwice", "<head><head></head><head>x", "html(head body(\"x\"))"},
    {"HtmlTwice", "<html a=1><html b=2><head><html c=3></head><html d=4>",
     "html(a=\"1\" b=\"2\" c=\"3\" d=\"4\" head body)"},
    {"MetadataBehindTheHead", "</head><link><title>t</title><p>",
     "html(head(link title(\"t\")) body(p))"},
    {"VoidElementsInTheHead", "<base><basefont><bgsound><link><meta>",
     "html(head(base basefont bgsound link meta) body)"},
    {"TitleKeepsMarkup", "<title>a<b>&amp;</title>", "html(head(title(\"a<b>&\")) body)"},
    {"NoframesKeepsMarkup", "<noframes><p></noframes>", "html(head(noframes(\"<p>\")) body)"},
    {"NoscriptInTheHead", "<head><noscript><link><style>a</style></noscript><meta>",
     "html(head(noscript(link style(\"a\")) meta) body)"},
    {"NoscriptEndsByText", "<head><noscript><!--c--> <link>x",
     "html(head(noscript(<!-- c --> \" \" link)) body(\"x\"))"},
    {"NoscriptEndsByAnElement", "<head><noscript><p>x", "html(head(noscript) body(p(\"x\")))"},
    {"NoscriptIgnores", "<head><noscript><!doctype a><head><noscript></p></noscript><meta>",
     "html(head(noscript meta) body)"},
    {"NoscriptEndsByABreak", "<head><noscript></br>", "html(head(noscript) body(br))"},
};

const Case IN_THE_BODY[] = {
    {"BodyTwice", "<body a=1><body a=2 b=3>", "html(head body(a=\"1\" b=\"3\"))"},
    {"TableStructureOutside", "<tr><td>x</td></tr>", "html(head body(\"x\"))"},
    {"HeadingInAHeading", "<h1>a<h2>b</h3>c", "html(head body(h1(\"a\") h2(\"b\") \"c\"))"},
    {"PreDropsALineFeed", "<pre>\nx</pre>", "html(head body(pre(\"x\")))"},
    {"FormInAForm", "<form><form><p></form>x", "html(head body(form(p) \"x\"))"},
    {"FormThatIsNotOpen", "</form>x", "html(head body(\"x\"))"},
    {"ListItems", "<ul><li>a<li>b</ul><dl><dt>c<dd>d</dl>",
     "html(head body(ul(li(\"a\") li(\"b\")) dl(dt(\"c\") dd(\"d\"))))"},
    {"ListItemInABlock", "<li><blockquote><li>a</li></blockquote></li></dd>",
     "html(head body(li(blockquote(li(\"a\")))))"},
    {"PlaintextToTheEnd", "<plaintext><p></plaintext>",
     "html(head body(plaintext(\"<p></plaintext>\")))"},
    {"LinkInALink", "<a>1<a>2", "html(head body(a(\"1\") a(\"2\")))"},
    {"LinkInALinkInATable", "<a><table><a>1", "html(head body(a(a(\"1\") table)))"},
    {"NobrInANobr", "<nobr>1<nobr>2", "html(head body(nobr(\"1\") nobr(\"2\")))"},
    {"ObjectBoundsFormatting", "<b><object>x</b></object>y",
     "html(head body(b(object(\"x\") \"y\")))"},
    {"ObjectThatIsClosedBoundsNothing", "<p><b><object></object></p>x",
     "html(head body(p(b(object)) b(\"x\")))"},
    {"ObjectThatIsNotOpen", "</object>x", "html(head body(\"x\"))"},
    {"FormattingThatIsAlikeThreeTimesAtMost", "<p><b><b><b><b></p>x",
     "html(head body(p(b(b(b(b)))) b(b(b(\"x\")))))"},
    {"ImageIsImg", "<image>", "html(head body(img))"},
    {"VoidElements", "<p><param><source><track><hr>", "html(head body(p(param source track) hr))"},
    {"ButtonInAButton", "<button>1<button>2", "html(head body(button(\"1\") button(\"2\")))"},
    {"InputEndsASelect", "<select><option>1<input>",
     "html(head body(select(option(\"1\")) input))"},
    {"RawTexts", "<p><xmp><b></xmp><iframe><b></iframe><noembed><b></noembed>",
     "html(head body(p xmp(\"<b>\") iframe(\"<b>\") noembed(\"<b>\")))"},
    {"SelectInASelect", "<select><option>1<select>2",
     "html(head body(select(option(\"1\")) \"2\"))"},
    {"OptionsOutside", "<option>1<option>2<optgroup>",
     "html(head body(option(\"1\") option(\"2\") optgroup))"},
    {"OptionsInGroups", "<select><optgroup><option>1<option>2<optgroup><option>3<hr></select>",
     "html(head body(select(optgroup(option(\"1\") option(\"2\")) optgroup(option(\"3\")) hr)))"},
    {"Ruby", "<ruby>a<rb>b<rt>c<rp>d<rtc>e<rt>f</ruby>",
     "html(head body(ruby(\"a\" rb(\"b\") rt(\"c\") rp(\"d\") rtc(\"e\" rt(\"f\")))))"},
    {"ParagraphByItsEndTag", "<body></p>x", "html(head body(p \"x\"))"},
    {"BlockThatIsNotOpen", "</div>x", "html(head body(\"x\"))"},
    {"UnknownElementEndsAcrossOthers", "<x><i>a</x>b", "html(head body(x(i(\"a\")) i(\"b\")))"},
    {"UnknownEndTagStopsAtABlock", "<x><div></x>a", "html(head body(x(div(\"a\"))))"},
    {"TextBehindTheBody", "<body>a</body> b<!--c-->", "html(head body(\"a b\" <!-- c -->))"},
    {"CommentBehindTheBody", "</body><!--c--></html><!--d-->",
     "html(head body <!-- c -->) <!-- d -->"},
    {"BehindTheHtml", "</html><!doctype a> <html a=1>b", "html(a=\"1\" head body(\" b\"))"},
    {"HtmlBehindTheBody", "</body><!doctype a><html a=1></html><p>", "html(a=\"1\" head body(p))"},
};

const Case IN_TEMPLATES[] = {
    {"InTheHead", "<head><template><p>a</template><meta>",
     "html(head(template(content(p(\"a\"))) meta) body)"},
    {"BehindTheHead", "</head><template>a</template><p>",
     "html(head(template(content(\"a\"))) body(p))"},
    {"WithRows", "<body><template><tr><td>a</template>",
     "html(head body(template(content(tr(td(\"a\"))))))"},
    {"WithCells", "<body><template><td>a<th>b</template>",
     "html(head body(template(content(td(\"a\") th(\"b\")))))"},
    {"WithColumns", "<body><template><col><col></template>",
     "html(head body(template(content(col col))))"},
    {"WithTableParts", "<body><template><caption>a</caption><tbody><tr></template>",
     "html(head body(template(content(caption(\"a\") tbody(tr)))))"},
    {"InATableHoldsItsTexts", "<table><template><tr>a</template>",
     "html(head body(table(template(content(tr \"a\")))))"},
    {"WithMetadata", "<body><template><link></b><div></template>",
     "html(head body(template(content(link div))))"},
    {"ThatIsNotClosed", "<body><template><b>a", "html(head body(template(content(b(\"a\")))))"},
    {"ThatIsNotOpen", "</template></head></template><body></template>a", "html(head body(\"a\"))"},
    {"ThatHidesThePage", "<body><template><html a=1><body b=2><frameset></template>",
     "html(head body(template(content)))"},
    {"WithAForm", "<form><template><form>a</template>",
     "html(head body(form(template(content(form(\"a\"))))))"},
};

const Case IN_FRAMESETS[] = {
    {"Frames", "<frameset> <frame>x<frameset><frame></frameset></frameset>",
     "html(head frameset(\" \" frame frameset(frame)))"},
    {"CommentsAndNoframes",
     "<frameset><!--a--><noframes>b</noframes></frameset><noframes>c</noframes>",
     "html(head frameset(<!-- a --> noframes(\"b\")) noframes(\"c\"))"},
    {"Behind", "<frameset></frameset> x<!--a--><html b=1></html><!--c--> <noframes>d</noframes>",
     "html(b=\"1\" head frameset \" \" <!-- a --> \" \" noframes(\"d\")) <!-- c -->"},
    {"HtmlInside", "<frameset><html a=1><p></frameset>", "html(a=\"1\" head frameset)"},
    {"InsteadOfABody", "<p><frameset><frame>", "html(head frameset(frame))"},
    {"NotInsteadOfText", "x<frameset>", "html(head body(\"x\"))"},
    {"InsteadOfAHiddenInput", "<input type=hidden><frameset>", "html(head frameset)"},
    {"NotInsteadOfAnInput", "<input type=text><frameset>", "html(head body(input(type=\"text\")))"},
};

const Case IN_TABLES[] = {
    {"Everything",
     "<table><caption>a</caption><colgroup><col></colgroup><thead><tr><th>b</thead><tbody><tr><td>c"
     "</tbody><tfoot><tr><td>d</table>",
     "html(head body(table(caption(\"a\") colgroup(col) thead(tr(th(\"b\"))) tbody(tr(td(\"c\")))"
     " tfoot(tr(td(\"d\"))))))"},
    {"ColumnsWithoutAGroup", "<table><col><tr>", "html(head body(table(colgroup(col) tbody(tr))))"},
    {"ColumnGroupEndsByText", "<table><colgroup>x<col>",
     "html(head body(\"x\" table(colgroup colgroup(col))))"},
    {"ColumnGroupHolds", "<table><colgroup> <!--a--><template></template><!doctype b></col><col>",
     "html(head body(table(colgroup(\" \" <!-- a --> template(content) col))))"},
    {"TableInATable", "<table><table>", "html(head body(table table))"},
    {"CaptionEndsByARow", "<table><caption>a<tr><td>b",
     "html(head body(table(caption(\"a\") tbody(tr(td(\"b\"))))))"},
    {"CaptionEndsByTheTable", "<table><caption>a</table>b",
     "html(head body(table(caption(\"a\")) \"b\"))"},
    {"CaptionIgnores", "<table><caption>a</td></body>b", "html(head body(table(caption(\"ab\"))))"},
    {"HiddenInput", "<table><input type=hidden><input>",
     "html(head body(input table(input(type=\"hidden\"))))"},
    {"FormIsEmpty", "<table><form><tr><td>a</form>b",
     "html(head body(table(form tbody(tr(td(\"ab\"))))))"},
    {"Metadata", "<table><style>a</style><script>b</script>",
     "html(head body(table(style(\"a\") script(\"b\"))))"},
    {"ElementsInFront", "<table><b>a<tr>c", "html(head body(b(\"a\") b(\"c\") table(tbody(tr))))"},
    {"EndTagsThatMeanNothing", "<table></td></p><tr></body></caption><td></col>a",
     "html(head body(p table(tbody(tr(td(\"a\"))))))"},
    {"CellEndsByAnotherPart", "<table><td>a<tbody><td>b</tfoot>c</tr>",
     "html(head body(table(tbody(tr(td(\"a\"))) tbody(tr(td(\"bc\"))))))"},
    {"RowsEndTheirParts", "<table><tr><td>a</tr><tr><td>b</tbody><tbody></table>",
     "html(head body(table(tbody(tr(td(\"a\")) tr(td(\"b\"))) tbody)))"},
    {"BlanksStay", "<table> <tr> <td>a",
     "html(head body(table(\" \" tbody(tr(\" \" td(\"a\"))))))"},
};

const Case IN_FOREIGN_CONTENT[] = {
    {"NamesAndAttributes", "<svg viewbox=1><lineargradient/><foreignobject><p>a",
     "html(head body(svg svg(viewBox=\"1\" svg linearGradient svg foreignObject(p(\"a\")))))"},
    {"SlashWithinATag", "<svg><g / a=1>b", "html(head body(svg svg(svg g(a=\"1\" \"b\"))))"},
    {"HtmlInAnnotations",
     "<math><annotation-xml encoding=text/html><p>a</p></annotation-xml><mi><b>c",
     "html(head body(math math(math annotation-xml(encoding=\"text/html\" p(\"a\")) math "
     "mi(b(\"c\")))))"},
    {"EndsByAnHtmlElement", "<svg><g><div>a", "html(head body(svg svg(svg g) div(\"a\")))"},
    {"FontWithAColour", "<svg><font>a<font color=b>c",
     "html(head body(svg svg(svg font(\"a\")) font(color=\"b\" \"c\")))"},
    {"ScriptsAndSections", "<svg><script/><![CDATA[a<b]]><!--c--><!doctype d>",
     "html(head body(svg svg(svg script \"a<b\" <!-- c -->)))"},
    {"EndTagsInAnyCase", "<svg><g></G>a</svg>b", "html(head body(svg svg(svg g \"a\") \"b\"))"},
};

std::string caseName(const testing::TestParamInfo<Case>& each) {
    return each.param.name;
}

INSTANTIATE_TEST_SUITE_P(UpToTheBody, InsertionMode, testing::ValuesIn(UP_TO_THE_BODY), caseName);
INSTANTIATE_TEST_SUITE_P(InTheBody, InsertionMode, testing::ValuesIn(IN_THE_BODY), caseName);
INSTANTIATE_TEST_SUITE_P(InTemplates, InsertionMode, testing::ValuesIn(IN_TEMPLATES), caseName);
INSTANTIATE_TEST_SUITE_P(InFramesets, InsertionMode, testing::ValuesIn(IN_FRAMESETS), caseName);
INSTANTIATE_TEST_SUITE_P(InTables, InsertionMode, testing::ValuesIn(IN_TABLES), caseName);
INSTANTIATE_TEST_SUITE_P(InForeignContent, InsertionMode, testing::ValuesIn(IN_FOREIGN_CONTENT),
                         caseName);

}  // namespace
}  // namespace intake::html
