#include "tests/formats/json/RandomJson.h"

#include <array>

namespace intake {

namespace {

constexpr std::array<const char*, 5> NAMES{"a", "b", "c", "id", ""};

constexpr std::array<const char*, 12> SCALARS{"1",      "2",      "7.50",          "-0",
                                              "1e400",  "true",   "false",         "null",
                                              R"("x")", R"("1")", R"("\u00e9\n")", R"("")"};

constexpr std::array<const char*, 20> PATH_PIECES{
    "a",   "b",    "c",      "id",         "*",         "/",     "/",    "/", "//", "[0]",
    "[1]", "[id=", "[id=1]", "[@b = 7.5]", "[a=true]/", "[99]/", "[*]/", "[", "]",  " "};

constexpr std::string_view JSON_BYTES = "{}[]{}[]:,:,\"\"\"\"\\/bfnrtu019.eE+-truefalsenull \n";

constexpr int DEEPEST = 6;

}  // namespace

std::string RandomJson::document() {
    std::string text;
    appendValue(text, 0);
    return text;
}

void RandomJson::appendValue(std::string& text, int depth) {
    const size_t kind = depth == 0 ? below(2) : depth < DEEPEST ? below(4) : 2;
    if (kind < 2) {
        appendChildren(text, depth, kind == 0);
    } else {
        text += SCALARS[below(SCALARS.size())];
    }
}

void RandomJson::appendChildren(std::string& text, int depth, bool named) {
    text += named ? '{' : '[';
    const size_t children = below(5);
    for (size_t i = 0; i < children; ++i) {
        text += i == 0 ? "" : ",";
        if (named) {
            text.append("\"").append(NAMES[below(NAMES.size())]).append("\":");
        }
        appendValue(text, depth + 1);
    }
    text += named ? '}' : ']';
}

std::string RandomJson::path() {
    std::string text;
    for (size_t pieces = below(8); pieces > 0; --pieces) {
        text += PATH_PIECES[below(PATH_PIECES.size())];
    }
    return text;
}

std::string RandomJson::damaged(std::string text) {
    for (size_t changes = 1 + below(4); changes > 0; --changes) {
        const size_t place = below(text.size() + 1);
        switch (below(5)) {
            case 0:
                text.insert(place, 1, byte());
                break;
            case 1:
                text.replace(place, 1, 1, byte());
                break;
            case 2:
                text.erase(place, below(8));
                break;
            case 3:
                text.insert(place, std::string(text, below(text.size() + 1), below(16)));
                break;
            default:
                text.resize(below(10) == 0 ? place : text.size());
        }
    }
    return text;
}

std::string RandomJson::bytes(size_t longest) {
    std::string text(below(longest + 1), ' ');
    for (char& each : text) {
        each = byte();
    }
    return text;
}

char RandomJson::byte() {
    return below(8) == 0 ? static_cast<char>(below(256)) : JSON_BYTES[below(JSON_BYTES.size())];
}

}  // namespace intake
