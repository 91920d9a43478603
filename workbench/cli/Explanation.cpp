#include "workbench/cli/Explanation.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "workbench/cli/JsonWriter.h"
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

/// What stands below the place that a cause is about.
std::string causeLine(const Step& step) {
    if (step.cause.empty()) return "";
    if (step.place.empty()) return std::string(indent, ' ') + step.cause + "\n";
    const std::size_t offset = displayWidth(step.seen.substr(0, step.placeOffset));
    return std::string(indent + offset, ' ') + std::string(displayWidth(step.place), '^') + " " +
           step.cause + "\n";
}

std::string linesOf(Stage stage, const Step& step, bool hasUnicode) {
    std::string lines = std::string("  ") + signOf(step.state, hasUnicode) + " " +
                        padded(nameOf(stage), indent - signWidth) + step.seen;
    lines.erase(lines.find_last_not_of(' ') + 1);
    lines += "\n" + causeLine(step);
    const bool isTold = step.state == State::Warning || step.state == State::Failed;
    if (isTold && !step.next.empty()) lines += std::string(indent, ' ') + step.next + "\n";
    return lines;
}

bool isShown(const Ladder& ladder, Stage stage) {
    return stage != Stage::Action || ladder.at(stage).state != State::Skipped;
}

template <class Visit>
void forEachStage(Visit visit) {
    for (std::size_t i = 0; i < probe::stageCount; ++i)
        visit(static_cast<Stage>(i));
}

/// The stages behind one that failed, of which nothing is known.
std::string skippedLine(const Ladder& ladder, bool hasUnicode) {
    std::string names;
    forEachStage([&](Stage stage) {
        if (ladder.at(stage).state == State::Skipped && isShown(ladder, stage))
            names += (names.empty() ? "" : ", ") + std::string(nameOf(stage));
    });
    if (names.empty()) return "";
    return std::string("  ") + signOf(State::Skipped, hasUnicode) + " " + names +
           (ladder.failed() ? ": not reached\n" : ": not looked at\n");
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

void writeStage(Stage stage, const Explanation& explanation, const Redaction& redact,
                JsonWriter& out) {
    const Step& step = explanation.ladder.at(stage);
    const auto text = [&](const char* name, const std::string& value) {
        out.name(name);
        out.text(redact(value));
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

std::string Explanation::text(const Redaction& redact, bool hasUnicode) const {
    std::string lines = titleOf(*this);
    forEachStage([&](Stage stage) {
        const Step& step = ladder.at(stage);
        if (step.state != State::Skipped) lines += linesOf(stage, step, hasUnicode);
    });
    lines += skippedLine(ladder, hasUnicode);
    if (confirmed) lines += remedyLine(*confirmed);
    lines = redact(std::move(lines));
    return hasUnicode ? lines : inAscii(std::move(lines));
}

std::string Explanation::json(const Redaction& redact) const {
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
    out.name("stages");
    out.open('[');
    forEachStage([&](Stage stage) { writeStage(stage, *this, redact, out); });
    out.close(']');
    out.close('}');
    return out.take();
}

}  // namespace workbench
