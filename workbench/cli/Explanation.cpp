#include "workbench/cli/Explanation.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <sstream>
#include <utility>

#include "formats/text/trim.h"
#include "workbench/cli/JsonWriter.h"
#include "workbench/cli/Table.h"
#include "workbench/cli/display_text.h"
#include "workbench/cli/source_settings.h"

namespace workbench {

namespace {

using probe::Ladder;
using probe::Stage;
using probe::State;
using probe::Step;

struct StateRow {
    const char* name;
    const char* sign;
    const char* asciiSign;
};

// In the order of State.
constexpr std::array states{StateRow{"skipped", "–", "-"}, StateRow{"ok", "✓", "+"},
                            StateRow{"warning", "!", "!"}, StateRow{"failed", "✗", "x"}};

constexpr std::size_t indent = 14;  // of what was seen
constexpr std::size_t signWidth = 4;

const StateRow& rowOf(State state) {
    return states[static_cast<std::size_t>(state)];
}

const char* signOf(State state, bool hasUnicode) {
    return hasUnicode ? rowOf(state).sign : rowOf(state).asciiSign;
}

std::string padded(std::string text, std::size_t width) {
    text.resize(std::max(text.size(), width), ' ');
    return text;
}

std::string titleOf(const Explanation& explanation) {
    std::array<char, 64> time{};
    std::snprintf(time.data(), time.size(), ", %.2f s\n", explanation.seconds);
    const auto& records = explanation.records;
    const std::string count = !records        ? "not loaded"
                              : *records == 0 ? "no records"
                              : *records == 1 ? "1 record"
                                              : std::to_string(*records) + " records";
    return explanation.name + ": " + count + time.data();
}

/// The text in lines of at most so many columns, each behind `margin` blanks. A word is never cut.
std::string wrapped(const std::string& text, std::size_t margin, std::size_t columns) {
    if (text.empty()) return "";
    if (columns == unlimited)
        return std::string(margin, ' ') + std::string(intake::trimmedEnd(text, " ")) + "\n";
    const std::size_t width = std::max<std::size_t>(columns, margin + 1) - margin;
    std::string lines;
    std::istringstream words(text);
    std::string line;
    for (std::string word; words >> word;) {
        const bool fits = displayWidth(line) + 1 + displayWidth(word) <= width;
        if (!line.empty() && !fits)
            lines += std::string(margin, ' ') + std::exchange(line, "") + "\n";
        line += (line.empty() ? "" : " ") + word;
    }
    return line.empty() ? lines : lines + std::string(margin, ' ') + line + "\n";
}

/// The cause, below the place that it is about and beside its mark where there is room.
std::string causeLines(const Step& step, std::size_t columns) {
    if (step.place.empty()) return wrapped(step.cause, indent, columns);
    const std::size_t offset = indent + displayWidth(step.seen.substr(0, step.placeOffset));
    const std::string mark = std::string(offset, ' ') + std::string(displayWidth(step.place), '^');
    const bool fits = displayWidth(mark) + 1 + displayWidth(step.cause) <= columns;
    return fits ? mark + " " + step.cause + "\n"
                : mark + "\n" + wrapped(step.cause, indent, columns);
}

std::string linesOf(Stage stage, const Step& step, bool hasUnicode, std::size_t columns) {
    std::string lines = std::string("  ") + signOf(step.state, hasUnicode) + " " +
                        padded(nameOf(stage), indent - signWidth) + step.seen;
    lines.erase(lines.find_last_not_of(' ') + 1);
    lines += "\n" + causeLines(step, columns);
    const bool isTold = step.state == State::Warning || step.state == State::Failed;
    return isTold ? lines + wrapped(step.next, indent, columns) : lines;
}

bool isShown(const Ladder& ladder, Stage stage) {
    return stage != Stage::Action || ladder.at(stage).state != State::Skipped;
}

template <class Visit>
void forEachStage(Visit visit) {
    for (std::size_t i = 0; i < probe::stageCount; ++i)
        visit(static_cast<Stage>(i));
}

/// The stages of which nothing is known, in one line; nothing behind one that failed was reached.
std::string skippedLines(const Ladder& ladder, bool hasUnicode) {
    std::string passed;
    std::string notReached;
    forEachStage([&](Stage stage) {
        if (ladder.at(stage).state != State::Skipped || !isShown(ladder, stage)) return;
        std::string& names = ladder.failed() && stage > *ladder.failed() ? notReached : passed;
        names += (names.empty() ? "" : ", ") + std::string(nameOf(stage));
    });
    const std::string sign = std::string("  ") + signOf(State::Skipped, hasUnicode) + " ";
    return (passed.empty() ? "" : sign + passed + ": not looked at\n") +
           (notReached.empty() ? "" : sign + notReached + ": not reached\n");
}

std::string remedyLine(const Confirmed& confirmed) {
    std::string line = "  Try:";
    for (const auto& [name, value] : confirmed.remedy.proposal)
        line += asArgument(name + "=" + value);
    return line + "   (" + std::to_string(confirmed.records) +
           (confirmed.records == 1 ? " record" : " records") + ", checked)\n";
}

/// The text without the signs of our own that ASCII lacks.
std::string inAscii(std::string text) {
    constexpr std::array<std::array<std::string_view, 2>, 3> signs{
        {{"…", "..."}, {"•", "*"}, {"–", "-"}}};
    for (const auto& [sign, ascii] : signs) {
        for (auto at = text.find(sign); at != std::string::npos;
             at = text.find(sign, at + ascii.size()))
            text.replace(at, sign.size(), ascii);
    }
    return text;
}

void writeStage(Stage stage, const Explanation& explanation, JsonWriter& out) {
    const Step& step = explanation.ladder.at(stage);
    const auto text = [&](const char* name, const std::string& value) {
        out.name(name);
        out.text(value);
    };
    out.open('{');
    text("stage", nameOf(stage));
    text("state", rowOf(step.state).name);
    text("seen", step.seen);
    text("place", step.place);
    text("cause", step.cause);
    text("next", step.next);
    const auto& confirmed = explanation.confirmed;
    const bool isMended = confirmed && explanation.stageToMend() == stage;
    out.name("set");
    out.open('{');
    if (isMended) {
        for (const auto& [name, value] : confirmed->remedy.proposal)
            text(name.c_str(), value);
    }
    out.close('}');
    if (isMended) {
        out.name("records");
        out.number(static_cast<double>(confirmed->records));
    }
    out.close('}');
}

}  // namespace

probe::Stage Explanation::stageToMend() const {
    return ladder.failed().value_or(confirmed->remedy.stage);
}

void Explanation::rewrite(const std::function<std::string(std::string)>& rewritten) {
    name = rewritten(name);
    forEachStage([&](Stage stage) {
        Step& step = ladder.at(stage);
        step.placeOffset = rewritten(step.seen.substr(0, step.placeOffset)).size();
        for (std::string* text : {&step.seen, &step.place, &step.cause, &step.next})
            *text = rewritten(*text);
    });
}

void Explanation::hide(const Redaction& redact) {
    rewrite(redact);
    ladder.exchange.request = redact.shownRequest(ladder.exchange.request);
    ladder.exchange.answer = redact(ladder.exchange.answer);
    if (!confirmed) return;
    for (auto& setting : confirmed->remedy.proposal)
        setting.second = redact(setting.second);
}

std::string Explanation::text(bool hasUnicode, std::size_t columns) const {
    Explanation shown(*this);
    shown.rewrite(printable);
    std::string lines = titleOf(shown);
    forEachStage([&](Stage stage) {
        const Step& step = shown.ladder.at(stage);
        if (step.state != State::Skipped) lines += linesOf(stage, step, hasUnicode, columns);
    });
    lines += skippedLines(ladder, hasUnicode);
    if (confirmed) lines += remedyLine(*confirmed);
    return hasUnicode ? lines : inAscii(std::move(lines));
}

std::string Explanation::json() const {
    JsonWriter out;
    out.open('{');
    out.name("ok");
    out.boolean(isOk());
    out.name("records");
    out.number(static_cast<double>(records.value_or(0)));
    out.name("bytes");
    out.number(static_cast<double>(bytes));
    out.name("durationMs");
    out.number(static_cast<double>(static_cast<long>(seconds * 1000)));
    out.name("request");
    out.text(ladder.exchange.request);
    out.name("answer");
    out.text(ladder.exchange.answer);
    out.name("stages");
    out.open('[');
    forEachStage([&](Stage stage) { writeStage(stage, *this, out); });
    out.close(']');
    out.close('}');
    return out.take();
}

}  // namespace workbench
