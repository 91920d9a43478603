#include "bench/json_items.h"

#include <array>
#include <random>
#include <string_view>

namespace bench {

namespace {

constexpr std::array<std::string_view, 8> WORDS{"North", "river", "of",       "stones",
                                                "and",   "the",   "Highland", "united"};
constexpr std::array<std::string_view, 4> FOREIGN_WORDS{"Zürich", "Ελλάδα", "東京", "São"};
constexpr std::array<std::string_view, 4> ESCAPED_WORDS{R"(\"late\" show)", R"(A\/B)",
                                                        R"(two\nlines)", R"(caf\u00e9)"};
constexpr std::array<std::string_view, 6> TAGS{"live", "sport", "eu", "a", "breaking", "b"};

class ItemWriter {
public:
    explicit ItemWriter(std::string& out) : out_(out) {}

    void write(size_t id) {
        out_.append(R"({"id":)").append(std::to_string(id)).append(R"(,"name":")");
        writeName();
        out_.append(R"(","price":)");
        writePrice();
        out_.append(R"(,"flag":)").append(below(2) == 0 ? "true" : "false");
        out_.append(R"(,"tags":[")").append(pick(TAGS));
        out_.append(R"(",")").append(pick(TAGS));
        out_.append(R"("],"nested":{"x":)").append(std::to_string(below(1000))).append("}}");
    }

private:
    size_t below(size_t limit) { return random_() % limit; }

    template <size_t N>
    std::string_view pick(const std::array<std::string_view, N>& words) {
        return words[below(N)];
    }

    void writeName() {
        const size_t words = 1 + below(4);
        for (size_t i = 0; i < words; ++i) {
            out_.append(i == 0 ? "" : " ").append(pick(WORDS));
        }
        if (below(8) == 0) {
            out_.append(" ").append(pick(FOREIGN_WORDS));
        }
        if (below(16) == 0) {
            out_.append(" ").append(pick(ESCAPED_WORDS));
        }
    }

    /// Mostly up to four digits before the point; now and then five, which is one digit more than
    /// a script keeps.
    void writePrice() {
        out_.append(std::to_string(below(below(16) == 0 ? 100'000 : 10'000))).append(".");
        const size_t cents = below(100);
        out_.append(cents < 10 ? "0" : "").append(std::to_string(cents));
    }

    std::string& out_;
    std::minstd_rand random_{1};
};

}  // namespace

std::string jsonItems(size_t bytes) {
    constexpr size_t LONGEST_ITEM = 256;
    std::string out;
    out.reserve(bytes + LONGEST_ITEM);
    out = R"({"items":[)";
    ItemWriter items(out);
    for (size_t id = 1; id == 1 || out.size() + 2 < bytes; ++id) {
        out.append(id == 1 ? "" : ",");
        items.write(id);
    }
    return out.append("]}");
}

}  // namespace bench
