#include "tests/soak/WatchedInstance.h"

#include <cstdio>

#include "workbench/cli/parameter_values.h"

namespace intake {

namespace {

constexpr int32_t LOAD = 0;
constexpr const char* FALLBACK = "READER_NUM_RECORDS=0;";

/// Places an instance that loads the source and returns it, ready to be watched.
lumo::Instance& place(lumo::Instance& instance, lumo::Host& host, const Source& source,
                      const std::string& server, double seconds) {
    instance.create();
    instance.load();
    const auto set = [&](const std::string& name, const std::string& value) {
        instance.changed(workbench::setParameter(host.parameters, instance.record(), name, value));
    };
    for (const auto& [name, value] : source.parameters(server)) {
        set(name, value);
    }
    set("autoLoadInterval", std::to_string(seconds));
    set("autoLoad", seconds > 0 ? "1" : "0");
    return instance;
}

}  // namespace

WatchedInstance::WatchedInstance(lumo::Host& host, const lumo::Plugin& plugin, const Source& source,
                                 const std::string& server, double seconds)
    : source_(source),
      loadsByItself_(seconds > 0),
      instance_(host, plugin, source.table()),
      watch_(host, place(instance_, host, source, server, seconds), true) {}

void WatchedInstance::pressButton() {
    instance_.execAction(LOAD);
}

void WatchedInstance::runFrame(Tally& tally) {
    if (const auto outcome = watch_.runFrame()) {
        judge(*outcome, tally);
    }
}

void WatchedInstance::judge(const workbench::Outcome& outcome, Tally& tally) {
    shown_ = outcome.notExecuted ? 0 : source_.versionShownBy(outcome.script).value_or(0);
    // An XML answer that is none gives no records and no error.
    const bool isNothing = source_.kind() == Kind::XML && outcome.script.empty();
    if ((outcome.failed && outcome.script == FALLBACK) || isNothing) {
        ++tally.failed;
    } else if (!outcome.failed && shown_ != 0) {
        ++tally.loaded;
    } else {
        ++tally.wrong;
        std::fprintf(stderr, "Shown wrongly: source %d, %s\n", source_.number(),
                     outcome.script.substr(0, 200).c_str());
    }
}

}  // namespace intake
