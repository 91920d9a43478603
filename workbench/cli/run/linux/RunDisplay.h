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
    ~RunDisplay() override;

    void tell(const LoadEvent& event, double now) override;
    void explain(const std::string&, const std::string&, double) override {}  // the line says it
    void note(const std::string& sentence, double now) override;
    void frame(const LiveScene& scene, double now) override;

private:
    Screen currentScreen() const;
    void draw(const std::vector<InstanceState>& states);

    Terminal terminal_;
    Screen screen_;
    ScreenBlock block_;
    std::vector<InstanceState> states_;  // of the last frame
    std::string notes_;                  // to be shown above the lines
    double drawnAt_ = -1;
};

}  // namespace workbench
