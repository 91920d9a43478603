#include "workbench/cli/run/display_lines.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <span>

#include "workbench/cli/display_text.h"
#include "workbench/cli/run/duration_text.h"

namespace workbench {

namespace {

struct StateRow {
    const char* word;
    const char* shape;
    const char* asciiShape;
    const char* colour;
};

// In the order of State.
constexpr std::array states{
    StateRow{"FAILED", "✗", "x", "\x1b[31m"},  StateRow{"LATE", "◌", "!", "\x1b[35m"},
    StateRow{"EMPTY", "○", "o", "\x1b[33m"},   StateRow{"STALE", "◔", "~", "\x1b[33m"},
    StateRow{"LOADING", "◐", "%", "\x1b[36m"}, StateRow{"WAITING", "·", ".", "\x1b[2m"},
    StateRow{"LOADED", "●", "*", "\x1b[32m"}};

constexpr const char* plain = "\x1b[0m";
constexpr const char* faint = "\x1b[2m";
constexpr const char* ellipsis = "…";
constexpr std::size_t gap = 2;
constexpr std::size_t stateWidth = 9;  // shape, blank and word

const StateRow& rowOf(State state) {
    return states[static_cast<std::size_t>(state)];
}

std::string replaced(std::string text, std::string_view what, std::string_view by) {
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
    return text;
}

// A number that is cut would be another one, so what they were is left out where both do not fit.
std::string recordsText(const InstanceState& state, std::size_t width) {
    if (!state.records) return "";
    const std::string now = std::to_string(*state.records);
    if (!state.before) return now;
    const std::string both = std::to_string(*state.before) + " → " + now;
    return displayWidth(both) <= width ? both : now;
}

std::string leftOverText(const InstanceState& state, std::size_t) {
    return state.leftOver == 0 ? "" : std::to_string(state.leftOver);
}

std::string ageText(const InstanceState& state, std::size_t) {
    return state.age ? calmDurationText(*state.age) : "";
}

std::string tookText(const InstanceState& state, std::size_t) {
    return state.duration ? durationText(*state.duration) : "";
}

std::string nextText(const InstanceState& state, std::size_t) {
    return state.next ? calmDurationText(*state.next) : "";
}

/// A column of times and numbers between the name and the words.
struct Column {
    const char* title;
    std::size_t width;
    std::size_t leastColumns;  // of a screen that has room for it
    std::string (*text)(const InstanceState& state, std::size_t width);
};

constexpr std::array narrow{Column{"records", 9, 0, recordsText}, Column{"age", 6, 50, ageText},
                            Column{"left", 5, 60, leftOverText}};
constexpr std::array wide{Column{"records", 13, 0, recordsText},
                          Column{"left over", 9, 0, leftOverText}, Column{"age", 6, 0, ageText},
                          Column{"took", 6, 0, tookText}, Column{"next in", 7, 0, nextText}};

constexpr std::size_t leastWide = 99;  // columns of a screen

/// The text in exactly so many columns.
std::string inColumns(const std::string& text, std::size_t width, bool right) {
    const std::string shown = fitted(text, width);
    const std::string padding(width - displayWidth(shown), ' ');
    return right ? padding + shown : shown + padding;
}

class Layout {
public:
    Layout(const std::vector<InstanceState>& instances, const Screen& screen) : screen_(screen) {
        constexpr std::size_t title = 8;
        const std::size_t longestName = std::max<std::size_t>(screen.columns / 5, 10);
        nameWidth_ = title;
        for (const InstanceState& each : instances)
            nameWidth_ = std::max(nameWidth_, displayWidth(each.name));
        nameWidth_ = std::min(nameWidth_, longestName);
    }

    std::string header() const {
        std::string line = inColumns("state", stateWidth, false) + blanks(gap) +
                           inColumns("instance", nameWidth_, false);
        forEachColumn([&](const Column& column) {
            line += blanks(gap) + inColumns(column.title, column.width, true);
        });
        return coloured(fitted(line, screen_.columns), faint);
    }

    std::string line(const InstanceState& state) const {
        const StateRow& row = rowOf(state.state);
        const std::string shape = screen_.hasUnicode ? row.shape : row.asciiShape;
        std::string rest = blanks(gap) + inColumns(state.name, nameWidth_, false);
        forEachColumn([&](const Column& column) {
            rest += blanks(gap) + inColumns(column.text(state, column.width), column.width, true);
        });
        const std::string head =
            inColumns(shape + " " + row.word, std::min(stateWidth, screen_.columns), false);
        const std::size_t room = screen_.columns - displayWidth(head);
        rest = room == 0 ? "" : fitted(rest + blanks(gap) + state.words, room);
        rest.erase(rest.find_last_not_of(' ') + 1);
        return coloured(head, row.colour) + inAscii(rest);
    }

    std::string others(const std::string& text) const {
        return coloured(fitted(text, screen_.columns), faint);
    }

private:
    static std::string blanks(std::size_t count) { return std::string(count, ' '); }

    template <class Visit>
    void forEachColumn(Visit visit) const {
        const bool isWide = screen_.columns >= leastWide;
        for (const Column& column : isWide ? std::span<const Column>(wide) : narrow) {
            if (screen_.columns >= column.leastColumns) visit(column);
        }
    }

    std::string coloured(const std::string& text, const char* colour) const {
        return screen_.hasColours ? colour + text + plain : text;
    }

    /// Our own signs in ASCII, each in as many columns.
    std::string inAscii(const std::string& text) const {
        return screen_.hasUnicode ? text : replaced(replaced(text, "→", ">"), ellipsis, "~");
    }

    const Screen screen_;
    std::size_t nameWidth_ = 0;
};

/// "and 12 more, all loaded", or with how many there are of each.
std::string othersText(const std::vector<InstanceState>& instances,
                       const std::vector<std::size_t>& order, std::size_t shown) {
    std::array<std::size_t, states.size()> counts{};
    for (std::size_t i = shown; i < order.size(); ++i)
        ++counts[static_cast<std::size_t>(instances[order[i]].state)];
    std::string kinds;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        if (counts[i] == 0) continue;
        std::string word = states[i].word;
        std::transform(word.begin(), word.end(), word.begin(),
                       [](char c) { return static_cast<char>(c - 'A' + 'a'); });
        const std::size_t all = order.size() - shown;
        kinds += ", " + (counts[i] == all ? "all" : std::to_string(counts[i])) + " " + word;
    }
    return "and " + std::to_string(order.size() - shown) + " more" + kinds;
}

/// Places in `instances`: as many as there is room for, the most urgent first.
std::vector<std::size_t> orderOf(const std::vector<InstanceState>& instances, std::size_t room) {
    std::vector<std::size_t> order(instances.size());
    std::iota(order.begin(), order.end(), 0);
    if (instances.size() <= room) return order;
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return instances[a].state < instances[b].state;
    });
    return order;
}

}  // namespace

std::vector<std::string> displayLines(const std::vector<InstanceState>& instances,
                                      const Screen& screen) {
    const Layout layout(instances, screen);
    const std::size_t room = std::max<std::size_t>(screen.rows, 3) - 1;  // below the header
    const std::vector<std::size_t> order = orderOf(instances, room);
    const std::size_t shown = order.size() <= room ? order.size() : room - 1;
    std::vector<std::string> lines{layout.header()};
    for (std::size_t i = 0; i < shown; ++i)
        lines.push_back(layout.line(instances[order[i]]));
    if (shown < order.size()) lines.push_back(layout.others(othersText(instances, order, shown)));
    return lines;
}

}  // namespace workbench
