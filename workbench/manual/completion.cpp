
#include "formats/text/trim.h"
#include "workbench/manual/manual.h"

namespace workbench {

namespace {

/// In single quotes, for either shell.
std::string quoted(const std::string& text) {
    std::string out = "'";
    for (const char each : text)
        out += each == '\'' ? std::string("'\\''") : std::string(1, each);
    return out + "'";
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : " ") + quoted(word);
    return text;
}

/// One arm of a case: what goes with a word.
std::string arm(const std::string& pattern, const std::vector<std::string>& words) {
    return "        " + pattern + ") words=(" + joined(words) + ") ;;\n";
}

std::vector<std::string> namesOf(const std::vector<ManualOption>& options) {
    std::vector<std::string> names;
    for (const ManualOption& option : options)
        names.push_back(option.name);
    return names;
}

template <class Use>
void forEachParameter(const lumo::ParameterTable& parameters, const Use& use) {
    for (int32_t index = 1; index <= parameters.size(); ++index) {
        const lumo::Parameter& parameter = parameters.at(index);
        if (!parameter.hidden && lumo::hasValue(parameter)) use(parameter);
    }
}

/// The words that can stand behind --set: names with their equals sign, and entries behind it.
std::string settingArms(const lumo::ParameterTable& parameters) {
    std::string arms;
    std::vector<std::string> names;
    forEachParameter(parameters, [&](const lumo::Parameter& parameter) {
        names.push_back(parameter.name + "=");
        std::vector<std::string> settings;
        for (const std::string& entry : parameter.entries)
            settings.push_back(parameter.name + "=" + std::string(intake::trimmed(entry, " ")));
        if (parameter.kind == lumo::ParameterKind::Bool)
            settings = {parameter.name + "=0", parameter.name + "=1"};
        if (!settings.empty()) arms += arm(quoted(parameter.name + "=") + "*", settings);
    });
    return arms + arm("*=*", {}) + arm("*", names);
}

/// What goes behind an option, by its name; a file where it takes one.
std::string valueArms(const CLI::App& app) {
    std::string arms;
    for (const CLI::App* command : app.get_subcommands({})) {
        for (const ManualOption& option : optionsOf(*command)) {
            const std::string pattern = quoted(command->get_name() + " " + option.name);
            if (!option.choices.empty()) arms += arm(pattern, option.choices);
            if (option.value == "FILE") arms += "        " + pattern + ") files=1 ;;\n";
            const bool isAny = option.choices.empty() && option.value != "FILE";
            const bool isSetting = option.name == "--set";
            if (isAny && !isSetting && !option.value.empty()) arms += arm(pattern, {});
        }
    }
    return arms;
}

std::string optionArms(const CLI::App& app) {
    std::string arms;
    for (const CLI::App* command : app.get_subcommands({}))
        arms += arm(command->get_name(), namesOf(optionsOf(*command)));
    return arms;
}

std::vector<std::string> firstWords(const CLI::App& app) {
    std::vector<std::string> words = namesOf(optionsOf(app));
    for (const CLI::App* command : app.get_subcommands({}))
        words.push_back(command->get_name());
    return words;
}

}  // namespace

std::string completionWords(const CLI::App& app, const lumo::ParameterTable& parameters) {
    std::string text =
        "#compdef intake-workbench\n# What can stand where. Made by intake-manual.\n\n";
    text += "_intake_workbench_words() {\n    words=() files=\n";
    text += "    if [[ -z $1 ]]; then\n        words=(" + joined(firstWords(app)) +
            ")\n        return\n    fi\n";
    text += "    if [[ $2 = --set ]]; then\n        case $3 in\n" + settingArms(parameters) +
            "        esac\n        return\n    fi\n";
    text += "    case \"$1 $2\" in\n" + valueArms(app);
    text += "        *) case $1:$3 in\n        *:-*) case $1 in\n" + optionArms(app) +
            "        esac ;;\n        *) files=1 ;;\n        esac ;;\n    esac\n}\n";
    return text;
}

}  // namespace workbench
