#include "platform/linux/fold_case.h"

#include <locale.h>
#include <wctype.h>

#include "platform/linux/workbook/xml_characters.h"

namespace intake {

namespace {

/// The system's table of letters, whatever the process's locale; never freed.
locale_t letters() {
    static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return locale;
}

uint32_t lower(uint32_t character) {
    if (character < 0x80) {
        return character >= 'A' && character <= 'Z' ? character + 32 : character;
    }
    return letters() == nullptr ? character
                                : static_cast<uint32_t>(towlower_l(character, letters()));
}

}  // namespace

std::string asciiLower(std::string_view text) {
    std::string folded(text);
    for (char& character : folded) {
        character =
            static_cast<char>(character >= 'A' && character <= 'Z' ? character + 32 : character);
    }
    return folded;
}

std::string foldCase(std::string_view text) {
    if (!isXmlUtf8(text)) {
        return std::string(text);
    }
    std::string folded;
    for (size_t at = 0; at < text.size();) {
        appendUtf8(lower(takeUtf8(text, at)), folded);
    }
    return folded;
}

}  // namespace intake
