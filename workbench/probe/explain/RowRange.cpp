#include "workbench/probe/explain/RowRange.h"

#include <algorithm>
#include <charconv>

#include "formats/text/ascii.h"
#include "formats/text/trim.h"
#include "workbench/probe/words.h"

namespace probe {

namespace {

constexpr int64_t anyNumberOfRows = 1'000'000;

struct Number {
    int64_t value = 0;
    bool isWhole = true;  // nothing but the number, or nothing at all
};

Number numberIn(std::string_view text) {
    text = intake::trimmed(text, " \t");
    if (text.starts_with('+')) text.remove_prefix(1);
    int32_t value = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    if (read.ec == std::errc::result_out_of_range)
        value = text.front() == '-' ? INT32_MIN : INT32_MAX;
    return {value, read.ptr == text.data() + text.size()};
}

struct NumberOfRows {
    const char* label;
    const char* name;
    const char* otherwise;  // what the plugin takes for what is no number
    const char* range;      // what may stand there
};

constexpr NumberOfRows firstRow{"From row", "fromRow", "0, the first", "Rows are counted from 0."};
constexpr NumberOfRows mostRows{"Number of rows", "numRows", "all",
                                "Set it to how many are wanted, or leave it empty for all."};

void checkNumber(const NumberOfRows& of, const std::string& text, Ladder& ladder) {
    const Number number = numberIn(text);
    const std::string parameter = std::string("\"") + of.label + "\" (" + of.name + ")";
    if (!number.isWhole) {
        const std::string meant = number.value == 0 ? of.otherwise : std::to_string(number.value);
        ladder.fail(Stage::Settings, "",
                    parameter + " is " + quoted(text) + ", which is no number; the plugin takes " +
                        meant + ".",
                    "Set it to a number, or leave it empty.");
        ladder.propose(Stage::Settings,
                       {{of.name, number.value > 0 ? std::to_string(number.value) : ""}});
    } else if (number.value < 0) {
        ladder.fail(Stage::Settings, "", parameter + " is " + text + ", which is below 0.",
                    of.range);
        ladder.propose(Stage::Settings, {{of.name, ""}});
    }
}

/// Which ones: "number 4", "numbers 4 to 6".
std::string numbersText(int64_t from, std::size_t count) {
    const std::string first = std::to_string(from);
    const std::string last = std::to_string(from + static_cast<int64_t>(count) - 1);
    return count == 1 ? "number " + first : "numbers " + first + " to " + last;
}

}  // namespace

RowRange rowRangeOf(const Settings& settings) {
    const int64_t count = numberIn(settings.numRows).value;
    return {std::max<int64_t>(0, numberIn(settings.fromRow).value),
            count == 0 ? anyNumberOfRows : count};
}

void checkRowTexts(const Settings& settings, Ladder& ladder) {
    checkNumber(firstRow, settings.fromRow, ladder);
    checkNumber(mostRows, settings.numRows, ladder);
}

std::size_t checkRows(const Settings& settings, std::size_t records, const char* thing,
                      Ladder& ladder) {
    const RowRange range = rowRangeOf(settings);
    const auto there = static_cast<int64_t>(records);
    if (there == 0) {
        ladder.ok(Stage::Rows, std::string("no ") + thing);
        return 0;
    }
    if (range.from >= there) {
        ladder.fail(Stage::Rows, "from " + std::to_string(range.from),
                    records == 1 ? std::string("There is 1 ") + thing + ", number 0."
                                 : "There are " + counted(records, thing) + ", 0 to " +
                                       std::to_string(records - 1) + ".",
                    "Set \"From row\" (fromRow) to the first one that is wanted.");
        ladder.propose(Stage::Rows, {{"fromRow", ""}});
        return 0;
    }
    const std::string all = std::to_string(records);
    const auto loaded =
        static_cast<std::size_t>(std::clamp<int64_t>(range.count, 0, there - range.from));
    ladder.ok(Stage::Rows, loaded == records ? "all " + all
                                             : std::to_string(loaded) + " of " + all + ": " +
                                                   numbersText(range.from, loaded));
    return loaded;
}

}  // namespace probe
