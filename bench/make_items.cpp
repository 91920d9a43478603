// make_items BYTES: writes the generated JSON document of that size to standard output.

#include <charconv>
#include <cstdio>
#include <string>
#include <string_view>

#include "bench/json_items.h"

int main(int argc, char** argv) {
    const std::string_view argument = argc == 2 ? argv[1] : "";
    size_t bytes = 0;
    const auto parsed = std::from_chars(argument.data(), argument.data() + argument.size(), bytes);
    if (parsed.ec != std::errc{} || parsed.ptr != argument.data() + argument.size()) {
        std::fprintf(stderr, "usage: make_items BYTES > FILE\n");
        return 2;
    }
    const std::string document = bench::jsonItems(bytes);
    const bool written =
        std::fwrite(document.data(), 1, document.size(), stdout) == document.size() &&
        std::fflush(stdout) == 0;
    if (!written) {
        std::perror("make_items");
    }
    return written ? 0 : 1;
}
