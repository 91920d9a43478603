#pragma once

#include <list>
#include <string>
#include <utility>
#include <vector>

#include "tests/http/support/EnvironmentVariable.h"
#include "tests/workbench/cli/Workbench.h"

/// NAME=VALUE, each given with a --set.
using Settings = std::vector<std::string>;

/// One list behind the other.
Settings joined(Settings settings, const Settings& more);

/// What `explain --out json` says of one stage. The constructor of Explained has checked its form.
struct ExplainedStage {
    std::string name;
    std::string state;
    std::string seen;
    std::string place;
    std::string cause;
    std::string next;
    Settings set;
    std::size_t records = 0;  // that the settings give; 0 where there are none
};

/// What `explain --out json` printed. Whatever is not as promised is a failure of the test.
struct Explained {
    explicit Explained(const std::string& json);

    /// The first stage that failed; nullptr when none did.
    const ExplainedStage* failed() const;

    /// The stage with settings that mend it; nullptr when there is none.
    const ExplainedStage* mended() const;

    bool isOk = false;
    std::size_t records = 0;
    std::vector<ExplainedStage> stages;
};

/// A test of `explain` and `explore`, with texts in UTF-8 and no proxy but the test's own.
class ExplainTest : public Workbench {
protected:
    ExplainTest();

    ChildResult explain(const Settings& settings, const std::vector<std::string>& more = {}) const;

    /// Explains, and expects just this text, which begins behind a line end; the exit status that
    /// the text means; the same from the JSON form; and that what it proposes to set does load as
    /// many records as it says. Times, ports and the test's folder are masked.
    void expectExplained(const Settings& settings, const std::string& text,
                         const std::vector<std::string>& more = {}) const;

    /// The text with a # for each time and with FOLDER and SERVER for the test's own.
    std::string masked(const std::string& text) const;

    std::list<intake::EnvironmentVariable> environment_;

private:
    void expectSame(const Settings& settings, const std::vector<std::string>& more,
                    const ChildResult& shown) const;
    void expectLoads(const Settings& settings, const std::vector<std::string>& more,
                     const ExplainedStage& stage) const;
};
