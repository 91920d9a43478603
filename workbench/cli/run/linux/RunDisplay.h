#pragma once

#include "workbench/cli/run/RunView.h"
#include "workbench/cli/run/ScreenBlock.h"
#include "workbench/cli/run/display_lines.h"
#include "workbench/cli/run/linux/Terminal.h"

namespace workbench {

/// Keeps a line for each instance current on the terminal. Leaves them there when it ends.
class RunDisplay final : public RunView {
public:
    RunDisplay();

    void tell(const LoadEvent& event, const std::string& advice, double now) override;
    void explain(const std::string&, const std::string&, double) override {}  // the line says it
    void note(const std::string& sentence, double now) override;
    void frame(const LiveScene& scene, double now) override;
    void finish(const LiveScene& scene, double now) override;

private:
    Screen currentScreen() const;
    void draw(const LiveScene& scene, double now);

    Terminal terminal_;
    Screen screen_;
    ScreenBlock block_;
    std::string notes_;  // to be shown above the lines
    double drawnAt_ = -1;
};

}  // namespace workbench
