#include "formats/html/character_references.h"

#include <algorithm>

#include "formats/html/characters.h"
#include "formats/html/named_references.h"
#include "formats/text/utf16.h"
#include "formats/text/utf8.h"

namespace intake::html {

namespace {

constexpr size_t LONGEST_NAME = 33;
constexpr uint32_t LAST_CHARACTER = 0x10FFFF;

char32_t characterOf(uint32_t number) {
    if (number == 0 || number > LAST_CHARACTER || isSurrogate(number)) {
        return REPLACEMENT_CHARACTER;
    }
    return number < 256 ? fromWindows1252(static_cast<unsigned char>(number)) : number;
}

/// The longest reference that a text begins with; null when there is none.
const NamedReference* findNamed(std::string_view text) {
    const auto isName = [](char c) { return isLetter(c) || isDigit(c); };
    const auto nameEnd = std::find_if_not(
        text.begin(), text.begin() + static_cast<ptrdiff_t>(std::min(text.size(), LONGEST_NAME)),
        isName);
    size_t length = static_cast<size_t>(nameEnd - text.begin());
    length += length < text.size() && text[length] == ';' ? 1 : 0;
    for (; length > 1; --length) {
        const std::string_view name = text.substr(0, length);
        const auto* const found = std::lower_bound(
            NAMED_REFERENCES.begin(), NAMED_REFERENCES.end(), name,
            [](const NamedReference& each, std::string_view key) { return each.name < key; });
        if (found != NAMED_REFERENCES.end() && found->name == name) {
            return found;
        }
    }
    return nullptr;
}

/// Replaces the references of one text. The result is written behind the arena's texts.
class ReferenceDecoder {
public:
    ReferenceDecoder(std::string_view text, ReferencePlace place, char* out)
        : rest_(text), place_(place), out_(out) {}

    char* decode() {
        for (size_t at = rest_.find('&'); at != std::string_view::npos; at = rest_.find('&')) {
            copy(at);
            if (!decodeNumber() && !decodeNamed()) {
                copy(1);
            }
        }
        copy(rest_.size());
        return out_;
    }

private:
    void copy(size_t bytes) {
        out_ = std::copy_n(rest_.data(), bytes, out_);
        rest_.remove_prefix(bytes);
    }

    bool decodeNumber() {
        const bool hexadecimal = rest_.size() > 2 && toLower(rest_[2]) == 'x';
        const size_t start = hexadecimal ? 3 : 2;
        if (!rest_.starts_with("&#") || rest_.size() <= start ||
            digitOf(rest_[start], hexadecimal) < 0) {
            return false;
        }
        uint32_t number = 0;
        size_t end = start;
        for (; end < rest_.size() && digitOf(rest_[end], hexadecimal) >= 0; ++end) {
            const auto digit = static_cast<uint32_t>(digitOf(rest_[end], hexadecimal));
            number = std::min(number * (hexadecimal ? 16 : 10) + digit, LAST_CHARACTER + 1);
        }
        out_ = putUtf8(characterOf(number), out_);
        rest_.remove_prefix(end < rest_.size() && rest_[end] == ';' ? end + 1 : end);
        return true;
    }

    bool decodeNamed() {
        const NamedReference* const found = findNamed(rest_.substr(1));
        if (found == nullptr) {
            return false;
        }
        const size_t end = 1 + found->name.size();
        const char next = end < rest_.size() ? rest_[end] : ' ';
        // In a query part, "&copy=1" is a parameter.
        if (place_ == ReferencePlace::ATTRIBUTE && found->name.back() != ';' &&
            (next == '=' || isLetter(next) || isDigit(next))) {
            return false;
        }
        out_ = std::copy(found->text.begin(), found->text.end(), out_);
        rest_.remove_prefix(end);
        return true;
    }

    std::string_view rest_;
    ReferencePlace place_;
    char* out_;
};

}  // namespace

std::string_view withoutReferences(std::string_view text, ReferencePlace place, Arena& arena) {
    if (text.find('&') == std::string_view::npos) {
        return text;
    }
    // A reference of 5 bytes can stand for 6.
    char* const out = arena.beginText(text.size() * 2);
    return arena.keep(static_cast<size_t>(ReferenceDecoder(text, place, out).decode() - out));
}

std::string_view withReplacedNulls(std::string_view text, Arena& arena) {
    if (text.find('\0') == std::string_view::npos) {
        return text;
    }
    char* const out = arena.beginText(text.size() * REPLACEMENT.size());
    char* end = out;
    for (const char& c : text) {
        const std::string_view piece = c == '\0' ? REPLACEMENT : std::string_view(&c, 1);
        end = std::copy(piece.begin(), piece.end(), end);
    }
    return arena.keep(static_cast<size_t>(end - out));
}

}  // namespace intake::html
