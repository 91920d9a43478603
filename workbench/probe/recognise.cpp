#include "workbench/probe/recognise.h"

#include <algorithm>
#include <array>
#include <span>

#include "formats/html/character_references.h"
#include "formats/text/ascii.h"
#include "formats/text/trim.h"
#include "workbench/probe/decoded_start.h"

namespace probe {

namespace {

using namespace std::string_view_literals;

struct Signature {
    std::string_view bytes;
    Kind kind;
};

constexpr std::array signatures{
    Signature{"SQLite format 3\0"sv, Kind::Sqlite},
    Signature{"\x1F\x8B"sv, Kind::Gzip},
    Signature{"PK\x03\x04"sv, Kind::Zip},
    Signature{"PK\x05\x06"sv, Kind::Zip},
    Signature{"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv, Kind::OldDocument},
    Signature{"%PDF-"sv, Kind::Pdf},
    Signature{"\x89PNG\r\n\x1A\n"sv, Kind::Image},
    Signature{"\xFF\xD8\xFF"sv, Kind::Image},
    Signature{"GIF87a"sv, Kind::Image},
    Signature{"GIF89a"sv, Kind::Image},
    Signature{"II*\0"sv, Kind::Image},
    Signature{"MM\0*"sv, Kind::Image},
};

constexpr std::string_view blanks = " \t\r\n\f";

// Elements that a page without <html> begins with.
constexpr std::array<std::string_view, 20> elementsOfPages{
    "html", "head", "body", "meta", "link", "script", "style", "div", "p",  "span",
    "br",   "b",    "h1",   "h2",   "h3",   "center", "ul",    "ol",  "hr", "noscript"};

// Others, which documents of other kinds begin with too: of a page when rows of a table follow.
constexpr std::array<std::string_view, 13> elementsOfBoth{
    "table", "title",  "base",   "form", "main", "section", "article",
    "nav",   "header", "footer", "img",  "font", "strong"};

// Each file of an archive has its name 30 bytes behind the signature of its header.
bool hasWorksheets(std::string_view archive) {
    constexpr std::size_t nameOffset = 30;
    for (auto at = archive.find("PK\x03\x04"sv); at != std::string_view::npos;
         at = archive.find("PK\x03\x04"sv, at + 1)) {
        if (archive.substr(std::min(at + nameOffset, archive.size())).starts_with("xl/"))
            return true;
    }
    return false;
}

std::string_view withoutBlanks(std::string_view text) {
    return intake::trimmedStart(text, blanks);
}

std::string_view behind(std::string_view text, std::string_view end) {
    const auto at = text.find(end);
    return at == std::string_view::npos ? std::string_view{} : text.substr(at + end.size());
}

// A doctype may hold declarations in brackets, which hold ">".
std::string_view behindDoctype(std::string_view text) {
    const auto end = text.find_first_of("[>");
    if (end == std::string_view::npos) return {};
    return text[end] == '>' ? text.substr(end + 1) : behind(behind(text, "]"), ">");
}

// What stands before the first element of a document.
struct Prolog {
    bool hasXmlDeclaration = false;
    bool hasHtmlDoctype = false;
    std::string_view rest;  // from the first element on
};

Prolog readProlog(std::string_view text) {
    Prolog prolog;
    while (true) {
        text = withoutBlanks(text);
        if (text.starts_with("<?")) {
            prolog.hasXmlDeclaration = prolog.hasXmlDeclaration || text.starts_with("<?xml");
            text = behind(text, "?>");
        } else if (text.starts_with("<!--")) {
            text = behind(text, "-->");
        } else if (intake::startsWithIgnoringCase(text, "<!doctype")) {
            const std::string_view name = withoutBlanks(text.substr("<!doctype"sv.size()));
            prolog.hasHtmlDoctype = intake::startsWithIgnoringCase(name, "html");
            text = behindDoctype(text);
        } else {
            prolog.rest = text;
            return prolog;
        }
    }
}

std::string_view elementName(std::string_view text) {
    return text.substr(1, text.find_first_of(" \t\r\n\f/>", 1) - 1);
}

bool hasTableRow(std::string_view text) {
    constexpr std::size_t enough = 4;  // the name, and the one character that ends it
    for (auto at = text.find('<'); at != std::string_view::npos; at = text.find('<', at + 1)) {
        if (intake::equalIgnoringCase(elementName(text.substr(at, enough)), "tr")) return true;
    }
    return false;
}

bool isOneOf(std::span<const std::string_view> names, std::string_view name) {
    return std::any_of(names.begin(), names.end(), [name](std::string_view each) {
        return intake::equalIgnoringCase(name, each);
    });
}

bool isOfPage(std::string_view name, std::string_view text) {
    return isOneOf(elementsOfPages, name) || (isOneOf(elementsOfBoth, name) && hasTableRow(text));
}

bool startsName(std::string_view text) {
    return !text.empty() && (intake::isLetter(text.front()) || text.front() == '_' ||
                             !intake::isAscii(text.front()));
}

Kind kindOfMarkup(std::string_view text) {
    const Prolog prolog = readProlog(text);
    const bool hasElement = prolog.rest.starts_with('<') && startsName(prolog.rest.substr(1));
    const std::string_view name = hasElement ? elementName(prolog.rest) : "";
    const bool isXhtml = intake::equalIgnoringCase(name, "html") || name.ends_with(":html");
    if (prolog.hasHtmlDoctype || isXhtml) return Kind::Html;
    if (prolog.hasXmlDeclaration) return Kind::Xml;
    if (!hasElement) return prolog.rest.empty() ? Kind::Xml : Kind::Text;
    return isOfPage(name, prolog.rest) ? Kind::Html : Kind::Xml;
}

// Documents of other programs begin with brackets too: {\rtf1, [section].
bool startsJson(std::string_view text) {
    const std::string_view next = withoutBlanks(text.substr(1));
    if (text.front() == '{') return !next.starts_with('\\');
    return next.empty() || "[{]\"-0123456789"sv.find(next.front()) != std::string_view::npos ||
           next.starts_with("true") || next.starts_with("false") || next.starts_with("null");
}

bool isText(std::string_view text) {
    return std::none_of(text.begin(), text.end(), [](char c) {
        return static_cast<unsigned char>(c) < ' ' && "\t\r\n\f\x1B"sv.find(c) == std::string::npos;
    });
}

Kind kindOfText(std::string_view text) {
    text = withoutBlanks(text);
    if (text.empty()) return Kind::Empty;
    if (text.front() == '<') return kindOfMarkup(text);
    const bool hasBracket = text.front() == '{' || text.front() == '[';
    if (hasBracket && startsJson(text)) return Kind::Json;
    return isText(text) ? Kind::Text : Kind::Unknown;
}

std::string inOneLine(std::string_view text) {
    std::string line;
    for (text = withoutBlanks(text); !text.empty(); text = withoutBlanks(text)) {
        const std::string_view word = text.substr(0, text.find_first_of(blanks));
        line.append(line.empty() ? "" : " ").append(word);
        text.remove_prefix(word.size());
    }
    return line;
}

}  // namespace

Kind recognise(std::string_view start) {
    constexpr std::size_t enough = 1 << 20;  // bytes of a text; the rest need not be copied
    const auto signature =
        std::find_if(signatures.begin(), signatures.end(),
                     [start](const Signature& each) { return start.starts_with(each.bytes); });
    if (signature == signatures.end()) return kindOfText(decodedStart(start.substr(0, enough)));
    return signature->kind == Kind::Zip && hasWorksheets(start) ? Kind::Workbook : signature->kind;
}

std::string titleOf(std::string_view page) {
    const std::string text = decodedStart(page);
    const std::string lower = intake::lowerCase(text);
    const auto opening = lower.find("<title");
    const auto begin = lower.find('>', opening);
    const auto end = lower.find("</title", begin);
    if (opening == std::string::npos || end == std::string::npos) return "";
    intake::html::Arena arena;
    const auto title = std::string_view(text).substr(begin + 1, end - begin - 1);
    return inOneLine(
        intake::html::withoutReferences(title, intake::html::ReferencePlace::TEXT, arena));
}

}  // namespace probe
