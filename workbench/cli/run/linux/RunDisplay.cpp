#include "workbench/cli/run/linux/RunDisplay.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

#include "workbench/cli/Table.h"
#include "workbench/cli/environment.h"

namespace workbench {

namespace {

constexpr double interval = 0.1;  // between two redraws

// Of a terminal that does not tell.
constexpr std::size_t usualColumns = 80;
constexpr std::size_t usualRows = 24;

/// The convention: any text but an empty one.
bool hasColours() {
    const char* const noColour = std::getenv("NO_COLOR");
    return noColour == nullptr || *noColour == 0;
}

/// Without what would move the cursor or change the colours.
std::string printable(std::string text) {
    for (char& c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte < 0x20 && c != '\n') || byte == 0x7F) c = ' ';
    }
    return text;
}

/// Most frames print nothing.
std::string redactedBy(const LiveScene& scene, std::string printed) {
    return printed.empty() ? printed : scene.redaction()(std::move(printed));
}

}  // namespace

RunDisplay::RunDisplay() : screen_(currentScreen()) {}

// Wider lines than the terminal's would be broken, and the rows could not be counted any more. The
// last column stays free, since terminals differ in what is behind it, and the last row too, for
// the cursor.
Screen RunDisplay::currentScreen() const {
    const Terminal::Size size = terminal_.size();
    const std::size_t wanted = columnsFromEnvironment().value_or(unlimited);
    const std::size_t widest =
        size.columns > 0 ? size.columns : (wanted == unlimited ? usualColumns : wanted);
    const std::size_t rows = size.rows > 0 ? size.rows : usualRows;
    return {std::max<std::size_t>(std::min(wanted, widest), 2) - 1,
            std::max<std::size_t>(rows, 2) - 1, terminalHasUnicode(), hasColours()};
}

// The line of the instance says it, but for where a file was looked for.
void RunDisplay::tell(const LoadEvent& event, const std::string& advice, double now) {
    if (event.isNews && !advice.empty()) note(event.report.instance + ": " + advice, now);
}

void RunDisplay::note(const std::string& sentence, double now) {
    std::array<char, 32> time{};
    std::snprintf(time.data(), time.size(), "%8.2f s  ", now);
    notes_ += time.data() + sentence + "\n";
}

void RunDisplay::frame(const LiveScene& scene, double now) {
    if (drawnAt_ >= 0 && now - drawnAt_ < interval) return;
    drawnAt_ = now;
    draw(scene, now);
}

void RunDisplay::finish(const LiveScene& scene, double now) {
    draw(scene, now);
}

void RunDisplay::draw(const LiveScene& scene, double now) {
    if (terminal_.suspendWhereAsked()) block_.leave();
    std::string out;
    const Screen screen = currentScreen();
    if (!(screen == screen_)) out = block_.clear();
    screen_ = screen;
    const std::string above = printable(redactedBy(scene, terminal_.takePrinted()) + notes_);
    notes_.clear();
    out += block_.update(displayLines(scene.statesAt(now), screen_), above);
    if (!out.empty()) terminal_.write(out);
}

}  // namespace workbench
