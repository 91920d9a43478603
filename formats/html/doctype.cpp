#include "formats/html/doctype.h"

#include <algorithm>
#include <array>

#include "formats/html/characters.h"

namespace intake::html {

namespace {

/// Public identifiers that begin with one of these.
constexpr std::array<std::string_view, 55> QUIRKY_STARTS{
    "+//silmaril//dtd html pro v0r11 19970101//",
    "-//as//dtd html 3.0 aswedit + extensions//",
    "-//advasoft ltd//dtd html 3.0 aswedit + extensions//",
    "-//ietf//dtd html 2.0 level 1//",
    "-//ietf//dtd html 2.0 level 2//",
    "-//ietf//dtd html 2.0 strict level 1//",
    "-//ietf//dtd html 2.0 strict level 2//",
    "-//ietf//dtd html 2.0 strict//",
    "-//ietf//dtd html 2.0//",
    "-//ietf//dtd html 2.1e//",
    "-//ietf//dtd html 3.0//",
    "-//ietf//dtd html 3.2 final//",
    "-//ietf//dtd html 3.2//",
    "-//ietf//dtd html 3//",
    "-//ietf//dtd html level 0//",
    "-//ietf//dtd html level 1//",
    "-//ietf//dtd html level 2//",
    "-//ietf//dtd html level 3//",
    "-//ietf//dtd html strict level 0//",
    "-//ietf//dtd html strict level 1//",
    "-//ietf//dtd html strict level 2//",
    "-//ietf//dtd html strict level 3//",
    "-//ietf//dtd html strict//",
    "-//ietf//dtd html//",
    "-//metrius//dtd metrius presentational//",
    "-//microsoft//dtd internet explorer 2.0 html strict//",
    "-//microsoft//dtd internet explorer 2.0 html//",
    "-//microsoft//dtd internet explorer 2.0 tables//",
    "-//microsoft//dtd internet explorer 3.0 html strict//",
    "-//microsoft//dtd internet explorer 3.0 html//",
    "-//microsoft//dtd internet explorer 3.0 tables//",
    "-//netscape comm. corp.//dtd html//",
    "-//netscape comm. corp.//dtd strict html//",
    "-//o'reilly and associates//dtd html 2.0//",
    "-//o'reilly and associates//dtd html extended 1.0//",
    "-//o'reilly and associates//dtd html extended relaxed 1.0//",
    "-//sq//dtd html 2.0 hotmetal + extensions//",
    "-//softquad software//dtd hotmetal pro 6.0::19990601::extensions to html 4.0//",
    "-//softquad//dtd hotmetal pro 4.0::19971010::extensions to html 4.0//",
    "-//spyglass//dtd html 2.0 extended//",
    "-//sun microsystems corp.//dtd hotjava html//",
    "-//sun microsystems corp.//dtd hotjava strict html//",
    "-//w3c//dtd html 3 1995-03-24//",
    "-//w3c//dtd html 3.2 draft//",
    "-//w3c//dtd html 3.2 final//",
    "-//w3c//dtd html 3.2//",
    "-//w3c//dtd html 3.2s draft//",
    "-//w3c//dtd html 4.0 frameset//",
    "-//w3c//dtd html 4.0 transitional//",
    "-//w3c//dtd html experimental 19960712//",
    "-//w3c//dtd html experimental 970421//",
    "-//w3c//dtd w3 html//",
    "-//w3o//dtd w3 html 3.0//",
    "-//webtechs//dtd mozilla html 2.0//",
    "-//webtechs//dtd mozilla html//",
};

/// The same where there is no system identifier.
constexpr std::array<std::string_view, 2> QUIRKY_STARTS_ALONE{
    "-//w3c//dtd html 4.01 frameset//",
    "-//w3c//dtd html 4.01 transitional//",
};

constexpr std::array<std::string_view, 3> QUIRKY_PUBLIC_IDS{
    "-//w3o//dtd w3 html strict 3.0//en//",
    "-/w3c/dtd html 4.0 transitional/en",
    "html",
};

constexpr std::string_view QUIRKY_SYSTEM_ID =
    "http://www.ibm.com/data/dtd/v11/ibmxhtml1-transitional.dtd";

template <class Starts>
bool startsWithOneOf(std::string_view text, const Starts& starts) {
    return std::any_of(starts.begin(), starts.end(), [text](std::string_view start) {
        return startsWithIgnoringCase(text, start);
    });
}

void skipSpaces(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(WHITE_SPACE), text.size()));
}

/// Takes a quoted identifier from the front, if there is one. False when it is not closed.
bool takeIdentifier(std::string_view& text, std::optional<std::string_view>& identifier) {
    skipSpaces(text);
    if (!text.starts_with('"') && !text.starts_with('\'')) {
        return true;
    }
    const size_t end = text.find(text[0], 1);
    identifier = text.substr(1, end == std::string_view::npos ? end : end - 1);
    text.remove_prefix(std::min(end, text.size() - 1) + 1);
    return end != std::string_view::npos;
}

}  // namespace

void parseDoctype(std::string_view declaration, Token& token) {
    token.type = Token::DOCTYPE;
    skipSpaces(declaration);
    const size_t nameEnd = std::min(declaration.find_first_of(WHITE_SPACE), declaration.size());
    token.text = declaration.substr(0, nameEnd);
    declaration.remove_prefix(nameEnd);
    skipSpaces(declaration);
    token.forceQuirks = token.text.empty();
    if (declaration.empty()) {
        return;
    }
    const bool isPublic = startsWithIgnoringCase(declaration, "public");
    if (!isPublic && !startsWithIgnoringCase(declaration, "system")) {
        token.forceQuirks = true;
        return;
    }
    declaration.remove_prefix(6);
    auto& first = isPublic ? token.publicId : token.systemId;
    bool closed = takeIdentifier(declaration, first);
    token.forceQuirks = !closed || !first.has_value();
    if (isPublic && !token.forceQuirks) {
        closed = takeIdentifier(declaration, token.systemId);
        skipSpaces(declaration);
        const bool isBogus = !token.systemId.has_value() && !declaration.empty();
        token.forceQuirks = !closed || isBogus;
    }
}

bool asksForQuirks(const Token& doctype) {
    const std::string_view publicId = doctype.publicId.value_or("");
    const std::string_view systemId = doctype.systemId.value_or("");
    return doctype.forceQuirks || doctype.text != "html" ||
           equalIgnoringCase(systemId, QUIRKY_SYSTEM_ID) ||
           std::any_of(QUIRKY_PUBLIC_IDS.begin(), QUIRKY_PUBLIC_IDS.end(),
                       [&](std::string_view id) { return equalIgnoringCase(publicId, id); }) ||
           startsWithOneOf(publicId, QUIRKY_STARTS) ||
           (!doctype.systemId.has_value() && startsWithOneOf(publicId, QUIRKY_STARTS_ALONE));
}

}  // namespace intake::html
