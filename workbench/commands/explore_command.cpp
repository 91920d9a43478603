#include <cstdio>

#include "workbench/cli/Redaction.h"
#include "workbench/cli/UsageError.h"
#include "workbench/cli/display_text.h"
#include "workbench/cli/environment.h"
#include "workbench/cli/explored_json.h"
#include "workbench/cli/explored_text.h"
#include "workbench/cli/one_load.h"
#include "workbench/cli/page_size.h"
#include "workbench/cli/probe_settings.h"
#include "workbench/cli/source_settings.h"
#include "workbench/commands/commands.h"
#include "workbench/probe/LookFailure.h"
#include "workbench/probe/database/open_database.h"
#include "workbench/probe/explore/explore_source.h"
#include "workbench/probe/fetch/source_start.h"

namespace workbench {

namespace {

using probe::Explored;
using probe::OutlineEntry;

void hideAll(const Redaction& redact, std::vector<std::string>& texts) {
    for (std::string& text : texts)
        text = redact(text);
}

void hideIn(const Redaction& redact, probe::Proposal& settings) {
    for (auto& setting : settings)
        setting.second = redact(setting.second);
}

/// A server may send back what it was asked with.
void hide(const Redaction& redact, Explored& explored) {
    explored.words = redact(explored.words);
    hideIn(redact, explored.source);
    for (OutlineEntry& entry : explored.outline.entries) {
        for (std::string* text : {&entry.name, &entry.kind, &entry.value, &entry.place})
            *text = redact(*text);
        hideIn(redact, entry.settings);
        if (entry.where) hideIn(redact, entry.where->settings);
        hideAll(redact, entry.selectors);
        entry.key = redact(entry.key);
    }
    if (!explored.outline.preview) return;
    hideAll(redact, explored.outline.preview->columns);
    hideAll(redact, explored.outline.preview->places);
    for (std::vector<std::string>& row : explored.outline.preview->rows)
        hideAll(redact, row);
}

/// A text lists what can be selected; programs get all that is known of it.
probe::OutlineWish wishOf(const Options& options) {
    return {options.at,
            options.find,
            options.limit,
            options.from,
            options.output == Output::Json,
            options.countsRows};
}

/// The instance is set as the options say; a bare source is looked at here.
probe::Settings settingsToExplore(lumo::Host& host, const lumo::Plugin& plugin, Options options) {
    lumo::Instance instance(host, plugin, "workbench");
    placeInstance(host, instance, options);
    if (!options.source.empty())
        options.settings.insert(options.settings.begin(), "filename=" + options.source);
    options.source.clear();
    applySettings(host, instance, options);
    const probe::Settings settings = probeSettings(host.parameters, instance.record());
    if (settings.filename.empty() && settings.connStr.empty())
        throw UsageError("Give a source to explore: a file or a URL.");
    return settings;
}

}  // namespace

ExitStatus runExplore(lumo::Host& host, const lumo::Plugin& plugin, const Options& options,
                      const StandardStreams& streams) {
    const probe::Settings settings = settingsToExplore(host, plugin, options);
    const Redaction redact(settings);
    const bool isDatabase =
        settings.queryMode == probe::QueryType::Sql && !settings.connStr.empty();
    const std::string address = redact(isDatabase ? probe::placeOfDatabase(settings.connStr)
                                                  : probe::withoutUserInfo(settings.filename));
    const std::string source = printable(address);
    try {
        Explored explored = probe::exploreSource(settings, wishOf(options), options.timeoutSeconds);
        hide(redact, explored);
        const PageSize page = pageSize(streams.resultColumns(), columnsFromEnvironment());
        streams.writeResult(options.output == Output::Json
                                ? exploredJson(address, explored, options.from)
                            : explored.outline.entries.empty()
                                ? exploredNothing(source, explored, options)
                                : exploredTable(source, explored, page.columns != unlimited) +
                                      exploredAdvice(isDatabase ? "" : address, explored));
        return ExitStatus::Loaded;
    } catch (const probe::DatabaseFailure& failure) {
        const std::string text =
            printable(redact(address + ": " + failure.what() + " " + failure.next));
        std::fprintf(stderr, "%s\n", text.c_str());
        return ExitStatus::LoadFailed;
    } catch (const probe::LookFailure& failure) {
        std::fprintf(stderr, "%s %s.\n", source.c_str(), printable(redact(failure.what())).c_str());
        return ExitStatus::LoadFailed;
    }
}

}  // namespace workbench
