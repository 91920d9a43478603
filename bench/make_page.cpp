// make_page BYTES: writes a generated HTML page of about that size to standard output, always the
// same for the same size: sections with a heading, a paragraph and a table of 500 rows. Every table
// has an id (table-1, ...), stands in an element of a class (results-1, ...) and below a heading
// (Results 1, ...). The numbers of the last are on standard error.

#include <charconv>
#include <cstdio>
#include <string>
#include <string_view>

namespace {

constexpr int ROWS = 500;

std::string row(int section, int number) {
    const std::string key = std::to_string(section) + "-" + std::to_string(number);
    const std::string points = std::to_string((number * 37 + section) % 1000);
    return "      <tr class=\"" + std::string(number % 2 == 0 ? "even" : "odd") + "\">\n" +
           "        <td class=\"key\">" + key + "</td>\n" +  //
           "        <td><a href=\"/club/" + key + "?tab=table&amp;from=" + points +
           "\" title=\"Club " + key + "\">Åland &amp; <b>Friends</b> " + key + "</a></td>\n" +
           "        <td align=\"right\">" + points + "</td>\n" +
           "        <td><span class=\"up\">&#9650;</span>&nbsp;" + points + ".5%</td>\n" +
           "        <td>\n          lane " + std::to_string(number % 8 + 1) +
           ",\n          second heat\n        </td>\n" +  //
           "        <td></td>\n      </tr>\n";
}

std::string section(int number) {
    const std::string n = std::to_string(number);
    std::string page =
        "  <div class=\"results-" + n + "\">\n    <h2>Results " + n +
        "</h2>\n    <p>As of <em>today</em>, <br>without warranty.<ul><li>One<li>Two"
        "</ul>\n    <table id=\"table-" +
        n +
        "\" border=\"0\">\n      <tr><th>Key<th>Club<th>Points<th>Change<th>Place<th>"
        "Note</tr>\n";
    for (int each = 1; each <= ROWS; ++each) {
        page += row(number, each);
    }
    return page + "    </table>\n  </div>\n";
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view argument = argc == 2 ? argv[1] : "";
    size_t bytes = 0;
    const auto parsed = std::from_chars(argument.data(), argument.data() + argument.size(), bytes);
    if (parsed.ec != std::errc{} || parsed.ptr != argument.data() + argument.size()) {
        std::fprintf(stderr, "usage: make_page BYTES > FILE\n");
        return 2;
    }
    std::string page =
        "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>Results</title>"
        "<style>td { color: red }</style></head>\n<body>\n";
    int number = 0;
    while (page.size() < bytes) {
        page += section(++number);
    }
    page += "</body></html>\n";
    const bool written =
        std::fwrite(page.data(), 1, page.size(), stdout) == page.size() && std::fflush(stdout) == 0;
    if (!written) {
        std::perror("make_page");
    }
    std::fprintf(stderr, "%d\n", number);
    return written ? 0 : 1;
}
