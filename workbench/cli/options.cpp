#include "workbench/cli/Options.h"
#include "workbench/cli/UsageError.h"
#include "workbench/cli/command_line.h"
#include "workbench/cli/environment.h"

namespace workbench {

namespace {

using OutputNames = std::vector<std::pair<std::string, Output>>;

const OutputNames loadOutputs{{"table", Output::Table},
                              {"script", Output::Script},
                              {"json", Output::Json},
                              {"trace", Output::Trace}};
const OutputNames explainOutputs{{"text", Output::Table}, {"json", Output::Json}};
const OutputNames paramsOutputs{{"table", Output::Table}, {"json", Output::Json}};

CLI::Validator notNegative() {
    const auto check = [](const std::string& text) {
        double number = -1;
        const bool fits = CLI::detail::lexical_cast(text, number) && number >= 0;
        return fits ? std::string() : "it takes a number from 0 on, not \"" + text + "\".";
    };
    return {check, ""};
}

void addPlugin(CLI::App& command, Options& options) {
    command.add_option("--plugin", options.plugin, "The plugin library (default: Intake's)")
        ->type_name("FILE");
}

void addOutput(CLI::App& command, Options& options, const OutputNames& names,
               const std::string& help) {
    std::vector<std::string> allowed;
    for (const auto& entry : names)
        allowed.push_back(entry.first);
    const auto choose = [&options, &names](const std::string& chosen) {
        for (const auto& [name, output] : names) {
            if (name == chosen) options.output = output;
        }
    };
    command.add_option_function<std::string>("--out", choose, help)->check(CLI::IsMember(allowed));
}

// An option that may be repeated and takes one value each time.
void addRepeated(CLI::App& command, const std::string& name, std::vector<std::string>& values,
                 const std::string& valueName, const std::string& help) {
    command.add_option(name, values, help)->type_name(valueName)->allow_extra_args(false);
}

// In the order of the command line, whichever option they come by.
void addSetting(CLI::App& load, const std::string& name, const std::string& valueName,
                const std::function<void(const std::string&)>& set, const std::string& help) {
    const auto setAll = [set](const std::vector<std::string>& texts) {
        for (const std::string& text : texts)
            set(text);
    };
    load.add_option_function<std::vector<std::string>>(name, setAll, help)
        ->type_name(valueName)
        ->allow_extra_args(false)
        ->trigger_on_parse();
}

void addSettings(CLI::App& load, Options& options) {
    const auto set = [&options](const std::string& text) { options.settings.push_back(text); };
    addSetting(load, "--set", "NAME=VALUE", set, "Set a parameter");
    const auto setFromEnvironment = [set](const std::string& text) {
        set(settingFromEnvironment(text));
    };
    addSetting(load, "--set-env", "NAME=VARIABLE", setFromEnvironment,
               "Set a parameter to a variable's value");
}

void addExpectations(CLI::App& load, Options& options) {
    auto* notEmpty = load.add_flag_callback(
        "--fail-on-empty", [&options] { options.expectedRecords = RecordRange{}; },
        "Exit with 5 when no record arrives");
    const auto expect = [&options](const std::string& range) {
        options.expectedRecords = readRecordRange(range);
    };
    load.add_option_function<std::string>("--expect-records", expect,
                                          "Exit with 5 when another number of records arrives")
        ->type_name("N[..M]")
        ->excludes(notEmpty);
}

void addInstance(CLI::App& command, Options& options) {
    auto* scene = command.add_option("--scene", options.scene, "Start from a stored instance");
    scene->type_name("FILE");
    command.add_option("--instance", options.instance, "Which instance of the scene")
        ->type_name("NAME")
        ->needs(scene);
    addSettings(command, options);
}

void addTimeout(CLI::App& command, Options& options) {
    command.add_option("--timeout", options.timeoutSeconds, "How long to wait for an answer")
        ->type_name("SECONDS")
        ->check(notNegative());
    command
        .add_option("--font-encoding", options.fontEncoding,
                    "The host's: 0 ISO-8859-1, 1 UTF-8 (default)")
        ->type_name("N");
}

void addReport(CLI::App& command, Options& options) {
    command
        .add_option("--report", options.report, "Append a line of JSON for each load (- prints it)")
        ->type_name("FILE");
}

void addLoad(CLI::App& app, Options& options) {
    CLI::App* load = app.add_subcommand("load", "Load a source once and print what came of it");
    load->callback([&options] { options.command = Command::Load; });
    addPlugin(*load, options);
    load->add_option("SOURCE", options.source, "A file or a URL, of any kind that can be loaded");
    addInstance(*load, options);
    addOutput(*load, options, loadOutputs, "The store (table, json), script or all calls");
    addRepeated(*load, "--define", options.definitions, "NAME", "Make a field beforehand");
    addTimeout(*load, options);
    addExpectations(*load, options);
    addReport(*load, options);
}

void addExplain(CLI::App& app, Options& options) {
    CLI::App* explain =
        app.add_subcommand("explain", "Load a source once and say what is wrong, and why");
    explain->callback([&options] { options.command = Command::Explain; });
    addPlugin(*explain, options);
    explain->add_option("SOURCE", options.source,
                        "A file or a URL, of any kind that can be loaded");
    addInstance(*explain, options);
    addOutput(*explain, options, explainOutputs, "As text (default) or json");
    addTimeout(*explain, options);
    explain->add_flag("--allow-writes", options.mayWrite,
                      "Run an SQL query also when it may write");
}

void addExplore(CLI::App& app, Options& options) {
    CLI::App* explore = app.add_subcommand("explore", "List what can be selected in a source");
    explore->callback([&options] { options.command = Command::Explore; });
    addPlugin(*explore, options);
    explore->add_option("SOURCE", options.source, "A file or a URL");
    addInstance(*explore, options);
    explore->add_option("--at", options.at, "List what is at a path, a selector or a sheet")
        ->type_name("PLACE");
    explore->add_option("--find", options.find, "List only what has this text in names or values")
        ->type_name("TEXT");
    explore->add_option("--limit", options.limit, "List at most so many (default: 40)")
        ->type_name("N")
        ->check(notNegative());
    explore->add_option("--from", options.from, "Pass over so many, to list those behind them")
        ->type_name("N")
        ->check(notNegative());
    explore->add_flag("--count-rows", options.countsRows,
                      "Count the rows of the tables that are listed");
    addOutput(*explore, options, explainOutputs, "As text (default) or json");
    addTimeout(*explore, options);
}

void addParams(CLI::App& app, Options& options) {
    CLI::App* params = app.add_subcommand("params", "List the plugin's parameters");
    params->callback([&options] { options.command = Command::Params; });
    addPlugin(*params, options);
    addOutput(*params, options, paramsOutputs, "As a table (default) or json");
}

void addRun(CLI::App& app, Options& options) {
    CLI::App* run = app.add_subcommand("run", "Run a scene until Ctrl-C, then print the store");
    run->callback([&options] { options.command = Command::Run; });
    addPlugin(*run, options);
    run->add_option("SCENE", options.scene, "The scene file")->required();
    auto* frames = run->add_option("--frames", options.frames, "Stop after so many frames");
    frames->type_name("N")->check(notNegative());
    run->add_option("--seconds", options.seconds, "Stop after so many seconds")
        ->type_name("S")
        ->check(notNegative())
        ->excludes(frames);
    addReport(*run, options);
    run->add_flag("--watch", options.watchesScene, "Take up the scene file when it changes");
    run->add_flag("--explain", options.explains, "Say why instances bring nothing, once a minute");
}

void addServe(CLI::App& app, Options& options) {
    CLI::App* serve =
        app.add_subcommand("serve", "Run a scene, and show it on a page in the browser");
    serve->callback([&options] { options.command = Command::Serve; });
    addPlugin(*serve, options);
    serve->add_option("SCENE", options.scene, "The scene file (default: one new instance)");
    serve->add_option("--port", options.port, "The port of the page (default: any that is free)")
        ->type_name("N");
    serve->add_flag("--open", options.opensPage, "Open the page in the browser");
}

constexpr const char* exitStatuses =
    "Exit status:\n"
    "  0  what was asked for was done\n"
    "  1  a load failed, or explain found what is wrong\n"
    "  2  the command line, a scene or a setting is wrong\n"
    "  3  there was no answer in time\n"
    "  4  the data store could not execute what was loaded\n"
    "  5  another number of records arrived than was expected";

constexpr std::pair<const char*, const char*> examplesOfCommands[] = {
    {"load",
     "  intake-workbench load scores.json --set xpath=matches --set mode=DataArray\n"
     "  intake-workbench load --scene show.scene.json --instance table --out script\n"
     "  intake-workbench load table.xml --fail-on-empty --report loads.jsonl"},
    {"explain",
     "  intake-workbench explain scores.json --set xpath=matchs\n"
     "  intake-workbench explain --scene show.scene.json --instance table --out json"},
    {"explore",
     "  intake-workbench explore scores.json\n"
     "  intake-workbench explore fixtures.xlsx --find Rovers\n"
     "  intake-workbench explore https://feed.example/table.html"},
    {"params", "  intake-workbench params\n  intake-workbench params --out json"},
    {"run",
     "  intake-workbench run show.scene.json\n"
     "  intake-workbench run show.scene.json --explain --report last-night.jsonl"},
    {"serve",
     "  intake-workbench serve show.scene.json --open\n"
     "  intake-workbench serve show.scene.json --port 8080"},
};

}  // namespace

const char* programVersion() {
    return INTAKE_VERSION;
}

std::unique_ptr<CLI::App> commandLine(Options& options) {
    auto app = std::make_unique<CLI::App>(
        "A stand-in for the graphics host: runs Intake and shows what it does.");
    app->name("intake-workbench");
    app->set_version_flag("--version", "intake-workbench " INTAKE_VERSION, "Print the version");
    app->footer(exitStatuses);
    addLoad(*app, options);
    addExplain(*app, options);
    addExplore(*app, options);
    addParams(*app, options);
    addRun(*app, options);
    addServe(*app, options);
    for (const auto& [command, examples] : examplesOfCommands)
        app->get_subcommand(command)->footer(std::string("Examples:\n") + examples);
    return app;
}

Options readOptions(int argc, const char* const* argv) {
    Options options;
    const std::unique_ptr<CLI::App> app = commandLine(options);
    try {
        app->parse(argc, argv);
        if (app->get_subcommands().empty())
            throw UsageError("Give a command: load, explain, explore, params, run or serve.");
    } catch (const CLI::CallForHelp&) {
        options.command = Command::Help;
        options.helpText = app->help();
    } catch (const CLI::CallForVersion& version) {
        options.command = Command::Help;
        options.helpText = std::string(version.what()) + '\n';
    } catch (const CLI::ParseError& error) {
        throw UsageError(error.what());
    }
    return options;
}

}  // namespace workbench
