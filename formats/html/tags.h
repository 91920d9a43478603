#pragma once

// The elements that the parser treats in a way of their own.

#include <cstdint>
#include <string_view>

namespace intake::html {

/// What the parser and the inner text must know of an element. The first six are the HTML
/// standard's own categories.
enum TagTrait : uint32_t {
    SPECIAL = 1 << 0,
    FORMATTING = 1 << 1,
    VOID = 1 << 2,
    IMPLIED_END = 1 << 3,
    IMPLIED_END_THOROUGH = 1 << 4,
    SCOPE = 1 << 5,     // ends every search for an element in scope
    BREAKOUT = 1 << 6,  // ends foreign content
    HEADING = 1 << 7,
    TABLE_PART = 1 << 8,  // foster-parents what may not stand in it
    BLOCK = 1 << 9,       // stands on lines of its own
    HIDDEN = 1 << 10,     // is not rendered
    CONTAINER = 1 << 11,  // its start tag ends a paragraph, its end tag whatever is open inside
    METADATA = 1 << 12,   // belongs into the head, wherever it stands
    TABLE_STRUCTURE = 1 << 13,  // and other tags that count only in a place of their own
};

// NAME, the name as it is written, traits
#define INTAKE_HTML_TAGS(TAG)                                                                 \
    TAG(A, "a", FORMATTING)                                                                   \
    TAG(ADDRESS, "address", SPECIAL | BLOCK | CONTAINER)                                      \
    TAG(APPLET, "applet", SPECIAL | SCOPE)                                                    \
    TAG(AREA, "area", SPECIAL | VOID)                                                         \
    TAG(ARTICLE, "article", SPECIAL | BLOCK | CONTAINER)                                      \
    TAG(ASIDE, "aside", SPECIAL | BLOCK | CONTAINER)                                          \
    TAG(AUDIO, "audio", HIDDEN)                                                               \
    TAG(B, "b", FORMATTING | BREAKOUT)                                                        \
    TAG(BASE, "base", SPECIAL | VOID | METADATA)                                              \
    TAG(BASEFONT, "basefont", SPECIAL | VOID | METADATA)                                      \
    TAG(BGSOUND, "bgsound", SPECIAL | VOID | METADATA)                                        \
    TAG(BIG, "big", FORMATTING | BREAKOUT)                                                    \
    TAG(BLOCKQUOTE, "blockquote", SPECIAL | BREAKOUT | BLOCK | CONTAINER)                     \
    TAG(BODY, "body", SPECIAL | BREAKOUT | BLOCK)                                             \
    TAG(BR, "br", SPECIAL | VOID | BREAKOUT)                                                  \
    TAG(BUTTON, "button", SPECIAL)                                                            \
    TAG(CANVAS, "canvas", HIDDEN)                                                             \
    TAG(CAPTION, "caption", SPECIAL | SCOPE | IMPLIED_END_THOROUGH | BLOCK | TABLE_STRUCTURE) \
    TAG(CENTER, "center", SPECIAL | BREAKOUT | BLOCK | CONTAINER)                             \
    TAG(CODE, "code", FORMATTING | BREAKOUT)                                                  \
    TAG(COL, "col", SPECIAL | VOID | TABLE_STRUCTURE)                                         \
    TAG(COLGROUP, "colgroup", SPECIAL | IMPLIED_END_THOROUGH | TABLE_STRUCTURE)               \
    TAG(DATALIST, "datalist", HIDDEN)                                                         \
    TAG(DD, "dd", SPECIAL | IMPLIED_END | IMPLIED_END_THOROUGH | BREAKOUT | BLOCK)            \
    TAG(DETAILS, "details", SPECIAL | BLOCK | CONTAINER)                                      \
    TAG(DIALOG, "dialog", SPECIAL | BLOCK | CONTAINER)                                        \
    TAG(DIR, "dir", SPECIAL | BLOCK | CONTAINER)                                              \
    TAG(DIV, "div", SPECIAL | BREAKOUT | BLOCK | CONTAINER)                                   \
    TAG(DL, "dl", SPECIAL | BREAKOUT | BLOCK | CONTAINER)                                     \
    TAG(DT, "dt", SPECIAL | IMPLIED_END | IMPLIED_END_THOROUGH | BREAKOUT | BLOCK)            \
    TAG(EM, "em", FORMATTING | BREAKOUT)                                                      \
    TAG(EMBED, "embed", SPECIAL | VOID | BREAKOUT)                                            \
    TAG(FIELDSET, "fieldset", SPECIAL | BLOCK | CONTAINER)                                    \
    TAG(FIGCAPTION, "figcaption", SPECIAL | BLOCK | CONTAINER)                                \
    TAG(FIGURE, "figure", SPECIAL | BLOCK | CONTAINER)                                        \
    TAG(FONT, "font", FORMATTING)                                                             \
    TAG(FOOTER, "footer", SPECIAL | BLOCK | CONTAINER)                                        \
    TAG(FORM, "form", SPECIAL | BLOCK)                                                        \
    TAG(FRAME, "frame", SPECIAL | TABLE_STRUCTURE)                                            \
    TAG(FRAMESET, "frameset", SPECIAL | BLOCK)                                                \
    TAG(H1, "h1", SPECIAL | BREAKOUT | HEADING | BLOCK)                                       \
    TAG(H2, "h2", SPECIAL | BREAKOUT | HEADING | BLOCK)                                       \
    TAG(H3, "h3", SPECIAL | BREAKOUT | HEADING | BLOCK)                                       \
    TAG(H4, "h4", SPECIAL | BREAKOUT | HEADING | BLOCK)                                       \
    TAG(H5, "h5", SPECIAL | BREAKOUT | HEADING | BLOCK)                                       \
    TAG(H6, "h6", SPECIAL | BREAKOUT | HEADING | BLOCK)                                       \
    TAG(HEAD, "head", SPECIAL | BREAKOUT | HIDDEN | TABLE_STRUCTURE)                          \
    TAG(HEADER, "header", SPECIAL | BLOCK | CONTAINER)                                        \
    TAG(HGROUP, "hgroup", SPECIAL | BLOCK | CONTAINER)                                        \
    TAG(HR, "hr", SPECIAL | VOID | BREAKOUT | BLOCK)                                          \
    TAG(HTML, "html", SPECIAL | SCOPE | BLOCK)                                                \
    TAG(I, "i", FORMATTING | BREAKOUT)                                                        \
    TAG(IFRAME, "iframe", SPECIAL | HIDDEN)                                                   \
    TAG(IMAGE, "image", 0)                                                                    \
    TAG(IMG, "img", SPECIAL | VOID | BREAKOUT)                                                \
    TAG(INPUT, "input", SPECIAL | VOID)                                                       \
    TAG(KEYGEN, "keygen", SPECIAL | VOID)                                                     \
    TAG(LEGEND, "legend", BLOCK)                                                              \
    TAG(LI, "li", SPECIAL | IMPLIED_END | IMPLIED_END_THOROUGH | BREAKOUT | BLOCK)            \
    TAG(LINK, "link", SPECIAL | VOID | METADATA)                                              \
    TAG(LISTING, "listing", SPECIAL | BREAKOUT | BLOCK)                                       \
    TAG(MAIN, "main", SPECIAL | BLOCK | CONTAINER)                                            \
    TAG(MARQUEE, "marquee", SPECIAL | SCOPE)                                                  \
    TAG(MATH, "math", 0)                                                                      \
    TAG(MENU, "menu", SPECIAL | BREAKOUT | BLOCK | CONTAINER)                                 \
    TAG(META, "meta", SPECIAL | VOID | BREAKOUT | METADATA)                                   \
    TAG(METER, "meter", HIDDEN)                                                               \
    TAG(NAV, "nav", SPECIAL | BLOCK | CONTAINER)                                              \
    TAG(NOBR, "nobr", FORMATTING | BREAKOUT)                                                  \
    TAG(NOEMBED, "noembed", SPECIAL | HIDDEN)                                                 \
    TAG(NOFRAMES, "noframes", SPECIAL | HIDDEN | METADATA)                                    \
    TAG(NOSCRIPT, "noscript", SPECIAL)                                                        \
    TAG(OBJECT, "object", SPECIAL | SCOPE | HIDDEN)                                           \
    TAG(OL, "ol", SPECIAL | BREAKOUT | BLOCK | CONTAINER)                                     \
    TAG(OPTGROUP, "optgroup", IMPLIED_END | IMPLIED_END_THOROUGH | BLOCK)                     \
    TAG(OPTION, "option", IMPLIED_END | IMPLIED_END_THOROUGH | BLOCK)                         \
    TAG(P, "p", SPECIAL | IMPLIED_END | IMPLIED_END_THOROUGH | BREAKOUT | BLOCK)              \
    TAG(PARAM, "param", SPECIAL | VOID)                                                       \
    TAG(PLAINTEXT, "plaintext", SPECIAL | BLOCK)                                              \
    TAG(PRE, "pre", SPECIAL | BREAKOUT | BLOCK)                                               \
    TAG(PROGRESS, "progress", HIDDEN)                                                         \
    TAG(RB, "rb", IMPLIED_END | IMPLIED_END_THOROUGH)                                         \
    TAG(RP, "rp", IMPLIED_END | IMPLIED_END_THOROUGH | HIDDEN)                                \
    TAG(RT, "rt", IMPLIED_END | IMPLIED_END_THOROUGH)                                         \
    TAG(RTC, "rtc", IMPLIED_END | IMPLIED_END_THOROUGH)                                       \
    TAG(RUBY, "ruby", BREAKOUT)                                                               \
    TAG(S, "s", FORMATTING | BREAKOUT)                                                        \
    TAG(SCRIPT, "script", SPECIAL | HIDDEN | METADATA)                                        \
    TAG(SEARCH, "search", SPECIAL | BLOCK | CONTAINER)                                        \
    TAG(SECTION, "section", SPECIAL | BLOCK | CONTAINER)                                      \
    TAG(SELECT, "select", SPECIAL | SCOPE)                                                    \
    TAG(SMALL, "small", FORMATTING | BREAKOUT)                                                \
    TAG(SOURCE, "source", SPECIAL | VOID)                                                     \
    TAG(SPAN, "span", BREAKOUT)                                                               \
    TAG(STRIKE, "strike", FORMATTING | BREAKOUT)                                              \
    TAG(STRONG, "strong", FORMATTING | BREAKOUT)                                              \
    TAG(STYLE, "style", SPECIAL | HIDDEN | METADATA)                                          \
    TAG(SUB, "sub", BREAKOUT)                                                                 \
    TAG(SUMMARY, "summary", SPECIAL | BLOCK | CONTAINER)                                      \
    TAG(SUP, "sup", BREAKOUT)                                                                 \
    TAG(SVG, "svg", 0)                                                                        \
    TAG(TABLE, "table", SPECIAL | SCOPE | BREAKOUT | TABLE_PART | BLOCK)                      \
    TAG(TBODY, "tbody", SPECIAL | IMPLIED_END_THOROUGH | TABLE_PART | TABLE_STRUCTURE)        \
    TAG(TD, "td", SPECIAL | SCOPE | IMPLIED_END_THOROUGH | TABLE_STRUCTURE)                   \
    TAG(TEMPLATE, "template", SPECIAL | SCOPE | HIDDEN | METADATA)                            \
    TAG(TEXTAREA, "textarea", SPECIAL | HIDDEN)                                               \
    TAG(TFOOT, "tfoot", SPECIAL | IMPLIED_END_THOROUGH | TABLE_PART | TABLE_STRUCTURE)        \
    TAG(TH, "th", SPECIAL | SCOPE | IMPLIED_END_THOROUGH | TABLE_STRUCTURE)                   \
    TAG(THEAD, "thead", SPECIAL | IMPLIED_END_THOROUGH | TABLE_PART | TABLE_STRUCTURE)        \
    TAG(TITLE, "title", SPECIAL | HIDDEN | METADATA)                                          \
    TAG(TR, "tr", SPECIAL | IMPLIED_END_THOROUGH | TABLE_PART | TABLE_STRUCTURE)              \
    TAG(TRACK, "track", SPECIAL | VOID)                                                       \
    TAG(TT, "tt", FORMATTING | BREAKOUT)                                                      \
    TAG(U, "u", FORMATTING | BREAKOUT)                                                        \
    TAG(UL, "ul", SPECIAL | BREAKOUT | BLOCK | CONTAINER)                                     \
    TAG(VAR, "var", BREAKOUT)                                                                 \
    TAG(VIDEO, "video", HIDDEN)                                                               \
    TAG(WBR, "wbr", SPECIAL | VOID)                                                           \
    TAG(XMP, "xmp", SPECIAL | BLOCK)                                                          \
    TAG(ANNOTATION_XML, "annotation-xml", 0)                                                  \
    TAG(DESC, "desc", 0)                                                                      \
    TAG(FOREIGN_OBJECT, "foreignobject", 0)                                                   \
    TAG(MALIGNMARK, "malignmark", 0)                                                          \
    TAG(MGLYPH, "mglyph", 0)                                                                  \
    TAG(MI, "mi", 0)                                                                          \
    TAG(MN, "mn", 0)                                                                          \
    TAG(MO, "mo", 0)                                                                          \
    TAG(MS, "ms", 0)                                                                          \
    TAG(MTEXT, "mtext", 0)

enum class Tag : uint8_t {
    OTHER,
#define INTAKE_HTML_TAG(name, text, traits) name,
    INTAKE_HTML_TAGS(INTAKE_HTML_TAG)
#undef INTAKE_HTML_TAG
        COUNT
};

constexpr size_t TAG_COUNT = static_cast<size_t>(Tag::COUNT);

/// The tag of a name in lower case.
Tag tagOf(std::string_view name);

std::string_view nameOf(Tag tag);
uint32_t traitsOf(Tag tag);

inline bool has(Tag tag, uint32_t traits) {
    return (traitsOf(tag) & traits) != 0;
}

template <class... Tags>
bool isOneOf(Tag tag, Tags... tags) {
    return ((tag == tags) || ...);
}

}  // namespace intake::html
