// What a search remembers of elements must not change what it finds.

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "formats/html/Page.h"
#include "formats/html/inner_text.h"

namespace intake::html {
namespace {

constexpr std::array PIECES{"<div>",
                            "</div>",
                            "<p>",
                            "</p>",
                            "x",
                            "y",
                            " ",
                            "x y",
                            "<b>",
                            "</b>",
                            "<br>",
                            "<wbr>",
                            "<pre>",
                            "</pre>",
                            "\n",
                            "<table>",
                            "<tr>",
                            "<td>",
                            "</table>",
                            "</span>",
                            "<span hidden>",
                            "<li>",
                            "<ul>",
                            "</ul>",
                            "<svg>",
                            "<text>",
                            "</svg>",
                            "<span style=visibility:hidden>",
                            "<dl>",
                            "<!--c-->",
                            "<select>",
                            "<option>",
                            "<details>",
                            "<summary>",
                            "<span style=visibility:visible>"};

std::string pageOf(uint32_t& state) {
    const auto next = [&state](size_t bound) {
        state = state * 1664525 + 1013904223;
        return (state >> 8) % bound;
    };
    std::string page = "<body>";
    for (size_t left = next(40); left > 0; --left) {
        page += PIECES[next(PIECES.size())];
    }
    return page;
}

std::vector<const Node*> elementsOf(const Page& page) {
    std::vector<const Node*> elements;
    for (const Node* node = &page.document; node != nullptr; node = node->following(nullptr)) {
        if (node->type == NodeType::ELEMENT) {
            elements.push_back(node);
        }
    }
    return elements;
}

std::string textOf(const Node& element) {
    std::string text;
    appendInnerText(element, text);
    return text;
}

TEST(HtmlTextSearch, FindsExactlyTheElementsOfATextOnAnyPage) {
    const EndMark endMark;
    uint32_t state = 1;
    for (int number = 0; number < 3000; ++number) {
        const std::string source = pageOf(state);
        const auto page = parsePage(source, endMark);
        SearchedText searched;
        for (const char* text : {"", "x", "y", "xy", "x y", "x\r\ny", "x\ty", "x y x", "yx"}) {
            searched = {text, searched.number + 1};
            for (const Node* element : elementsOf(*page)) {
                ASSERT_EQ(innerTextEquals(*element, searched), textOf(*element) == text)
                    << source << " " << element->text << " " << text;
            }
        }
    }
}

}  // namespace
}  // namespace intake::html
