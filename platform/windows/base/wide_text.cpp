#include "platform/windows/base/wide_text.h"

#include <windows.h>

#include <algorithm>

namespace intake {

namespace {

/// The system counts in int. Longer texts go in pieces that end between two characters.
constexpr size_t LONGEST_PIECE = 1 << 28;

size_t pieceOf(std::wstring_view text) {
    const size_t length = std::min(text.size(), LONGEST_PIECE);
    const bool splitsPair = length < text.size() && IS_HIGH_SURROGATE(text[length - 1]);
    return splitsPair ? length - 1 : length;
}

void appendPiece(std::wstring_view piece, unsigned codePage, std::string& out) {
    // UTF-8 lacks nothing, and the system takes no such flag with it; it may be set to UTF-8 too.
    const DWORD flags = codePage == CP_UTF8 || codePage == CP_ACP ? 0 : WC_NO_BEST_FIT_CHARS;
    const int length = static_cast<int>(piece.size());
    const int needed =
        WideCharToMultiByte(codePage, flags, piece.data(), length, nullptr, 0, nullptr, nullptr);
    const size_t before = out.size();
    out.resize(before + static_cast<size_t>(needed));
    WideCharToMultiByte(codePage, flags, piece.data(), length, out.data() + before, needed, nullptr,
                        nullptr);
}

}  // namespace

std::wstring toWide(std::string_view utf8) {
    return toWide(utf8, CP_UTF8);
}

std::wstring toWide(std::string_view text, unsigned codePage) {
    if (text.empty()) {
        return {};
    }
    const int length = static_cast<int>(std::min<size_t>(text.size(), INT_MAX));
    std::wstring wide(
        static_cast<size_t>(MultiByteToWideChar(codePage, 0, text.data(), length, nullptr, 0)),
        L'\0');
    MultiByteToWideChar(codePage, 0, text.data(), length, wide.data(),
                        static_cast<int>(wide.size()));
    return wide;
}

std::string toUtf8(std::wstring_view text) {
    std::string utf8;
    appendNarrow(text, CP_UTF8, utf8);
    return utf8;
}

void appendNarrow(std::wstring_view text, unsigned codePage, std::string& out) {
    while (!text.empty()) {
        const size_t length = pieceOf(text);
        appendPiece(text.substr(0, length), codePage, out);
        text.remove_prefix(length);
    }
}

}  // namespace intake
