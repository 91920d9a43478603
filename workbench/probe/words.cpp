#include "workbench/probe/words.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>

#include "formats/text/ascii.h"
#include "formats/text/utf8.h"
#include "workbench/probe/nearest_name.h"

namespace probe {

namespace {

constexpr std::size_t mostNames = 8;
constexpr std::size_t longestText = 40;  // in characters

std::string inOneLine(std::string_view text) {
    std::string line;
    for (std::size_t characters = 0; !text.empty(); ++characters) {
        if (characters == longestText) return line + "…";
        const auto next = intake::utf8CharacterAt(text);
        const bool isShown = next.isValid && next.code >= ' ' && next.code != 0x7F;
        line += isShown ? text.substr(0, next.length) : std::string_view(" ");
        text.remove_prefix(next.length);
    }
    return line;
}

}  // namespace

std::string counted(std::size_t count, std::string_view thing) {
    return std::to_string(count) + ' ' + std::string(thing) + (count == 1 ? "" : "s");
}

std::string listOf(const std::vector<std::string>& names, std::size_t further) {
    if (names.empty()) return "nothing";
    const std::size_t shown = std::min(names.size(), mostNames);
    std::string list;
    for (std::size_t i = 0; i < shown; ++i)
        list += (i == 0 ? "" : ", ") + inOneLine(names[i]);
    const std::size_t more = names.size() - shown + further;
    return more == 0 ? list : list + " and " + std::to_string(more) + " more";
}

std::string sizeText(std::size_t bytes) {
    if (bytes == 1) return "1 byte";
    constexpr std::array units{"bytes", "kB", "MB", "GB"};
    auto size = static_cast<double>(bytes);
    std::size_t unit = 0;
    for (; size >= 1000 && unit + 1 < units.size(); ++unit)
        size /= 1000;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), unit == 0 ? "%.0f %s" : "%.1f %s", size, units[unit]);
    return text.data();
}

std::string quoted(std::string_view text) {
    return '"' + inOneLine(text) + '"';
}

std::string asSentence(std::string_view text) {
    std::string sentence(text.substr(0, text.find_last_not_of(" \t\r\n.") + 1));
    if (!sentence.empty() && sentence.front() >= 'a' && sentence.front() <= 'z')
        sentence.front() = static_cast<char>(sentence.front() - ('a' - 'A'));
    return sentence.ends_with('?') ? sentence : sentence + '.';
}

std::string nearName(std::string_view wanted, const std::vector<std::string>& names) {
    constexpr std::size_t longest = 200;  // of a name that somebody typed
    if (wanted.size() > longest) return "";
    const std::size_t allowed = std::max<std::size_t>(1, wanted.size() / 3);
    std::vector<std::string> likely;
    std::copy_if(names.begin(), names.end(), std::back_inserter(likely),
                 [&](const std::string& name) { return name.size() <= wanted.size() + allowed; });
    const std::string nearest = nearestName(wanted, likely);
    const std::size_t errors = typingErrors(wanted, nearest);
    const bool isNear = errors <= allowed && errors < wanted.size();
    return isNear ? nearest : "";
}

}  // namespace probe
