#include <algorithm>

#include "formats/text/trim.h"
#include "workbench/cli/Options.h"
#include "workbench/manual/manual.h"

namespace workbench {

namespace {

/// A text as groff takes it literally: hyphens to be copied, and no line that begins a macro.
std::string escaped(const std::string& text) {
    std::string out;
    for (const char each : text) {
        const bool beginsLine = out.empty() || out.back() == '\n';
        if (beginsLine && (each == '.' || each == '\'')) out += "\\&";
        if (each == '\\') {
            out += "\\e";
        } else if (each == '-') {
            out += "\\-";
        } else {
            out += each;
        }
    }
    return out;
}

std::string sentence(const std::string& help) {
    return help + (help.empty() || help.back() == '.' ? "" : ".");
}

std::string section(const std::string& title) {
    return ".SH " + title + "\n";
}

std::string entry(const ManualOption& option) {
    std::string head = ".TP\n\\fB" + escaped(option.name) + "\\fR";
    if (!option.value.empty()) head += " \\fI" + escaped(option.value) + "\\fR";
    return head + "\n" + escaped(sentence(option.help)) + "\n";
}

std::string literally(const std::string& lines) {
    return ".nf\n" + escaped(lines) + "\n.fi\n";
}

/// What stands below a heading in a text of help, without the heading.
std::string belowHeading(const std::string& footer) {
    return footer.substr(footer.find('\n') + 1);
}

std::string argumentsOf(const CLI::App& command) {
    std::string text;
    for (const CLI::Option* option : command.get_options()) {
        if (!option->get_positional()) continue;
        const bool isNeeded = option->get_required();
        text +=
            (isNeeded ? " \\fI" : " [\\fI") + option->get_name() + (isNeeded ? "\\fR" : "\\fR]");
    }
    return text;
}

std::string commandText(const CLI::App& command) {
    std::string text = ".SS " + command.get_name() + "\n";
    text += "\\fBintake\\-workbench " + command.get_name() + "\\fR [\\fIoptions\\fR]" +
            argumentsOf(command) + "\n.PP\n" + escaped(sentence(command.get_description())) + "\n";
    for (const ManualOption& option : optionsOf(command))
        text += entry(option);
    return text + ".PP\n" + literally(belowHeading(command.get_footer()));
}

/// A label or an entry without what it has around it for the editor's sake.
std::string tidied(const std::string& text) {
    return std::string(intake::trimmed(text, " :"));
}

std::string limitsOf(const lumo::Parameter& parameter) {
    std::string text;
    for (std::size_t i = 0; i < parameter.entries.size(); ++i)
        text += (i == 0 ? " " : ", ") + std::to_string(i) + " " + tidied(parameter.entries[i]);
    return text.empty() ? "" : ":" + text;
}

std::string parameterText(const lumo::Parameter& parameter) {
    const std::string label = tidied(parameter.label.empty() ? parameter.name : parameter.label);
    return ".TP\n\\fB" + escaped(parameter.name) + "\\fR\n" + escaped(label) +
           escaped(limitsOf(parameter)) + "\n";
}

}  // namespace

std::vector<ManualOption> optionsOf(const CLI::App& command) {
    std::vector<ManualOption> options;
    for (const CLI::Option* option : command.get_options()) {
        if (option->get_positional() || option->get_lnames().empty()) continue;
        const bool isSwitch = option->get_items_expected_max() == 0;
        std::string value = isSwitch ? "" : option->get_type_name();
        std::vector<std::string> choices;
        // A choice is told as TEXT:{a,b}.
        if (const std::size_t brace = value.find('{'); brace != std::string::npos) {
            value = value.substr(brace + 1, value.size() - brace - 2);
            choices = CLI::detail::split(value, ',');
            std::replace(value.begin(), value.end(), ',', '|');
        }
        options.push_back({"--" + option->get_lnames().front(), value, option->get_description(),
                           std::move(choices)});
    }
    return options;
}

std::string manPage(const CLI::App& app, const lumo::ParameterTable& parameters) {
    std::string text = ".TH INTAKE\\-WORKBENCH 1 \"\" \"Intake " + std::string(programVersion()) +
                       "\" \"User Commands\"\n";
    text += section("NAME") + "intake\\-workbench \\- try Intake, which brings live data on air\n";
    text += section("SYNOPSIS") +
            "\\fBintake\\-workbench\\fR \\fIcommand\\fR [\\fIoptions\\fR]\n.br\n"
            "\\fBintake\\-workbench\\fR \\fIcommand\\fR \\fB\\-\\-help\\fR\n";
    text += section("DESCRIPTION") + escaped(sentence(app.get_description())) + "\n";
    for (const ManualOption& option : optionsOf(app))
        text += entry(option);
    text += section("COMMANDS");
    for (const CLI::App* command : app.get_subcommands({}))
        text += commandText(*command);
    text += section("PARAMETERS") +
            "What \\fB\\-\\-set\\fR \\fINAME=VALUE\\fR takes; an entry goes by its number or its "
            "text.\n";
    for (int32_t index = 1; index <= parameters.size(); ++index) {
        const lumo::Parameter& parameter = parameters.at(index);
        if (!parameter.hidden && lumo::hasValue(parameter)) text += parameterText(parameter);
    }
    text += section("EXIT STATUS") + literally(belowHeading(app.get_footer()));
    text += section("ENVIRONMENT") +
            ".TP\n\\fBNO_COLOR\\fR\nNo colours on a terminal.\n"
            ".TP\n\\fBCOLUMNS\\fR\nHow wide tables may be on a terminal.\n";
    text += section("FILES") +
            ".TP\n\\fI/usr/share/intake\\-workbench/samples\\fR\n"
            "Sources and scenes to try; run the program in the folder above them.\n"
            ".TP\n\\fI/usr/share/doc/intake\\-workbench/docs\\fR\n"
            "Pages on every kind of source, every parameter and every limit.\n";
    return text;
}

}  // namespace workbench
