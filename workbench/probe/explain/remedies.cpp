#include "workbench/probe/explain/remedies.h"

#include <algorithm>
#include <array>

namespace probe {

namespace {

using Look = std::function<Ladder(const Settings&)>;

bool changesSource(const Proposal& proposal) {
    constexpr std::array names{"filename", "connStr", "useCustomHeaders", "customHeaders"};
    return std::any_of(proposal.begin(), proposal.end(), [&](const auto& each) {
        return std::find(names.begin(), names.end(), each.first) != names.end();
    });
}

/// Nothing when the remedy leads nowhere.
std::optional<Proposal> completed(Proposal proposal, const Settings& settings, const Look& look) {
    constexpr int mostRounds = 3;
    for (int round = 0; round < mostRounds; ++round) {
        Settings mended = settings;
        if (changesSource(proposal) || !set(proposal, mended)) return proposal;
        const Ladder ladder = look(mended);
        const bool isVague = !ladder.records && !ladder.remedies().empty();
        if (!ladder.failed() && !isVague)
            return ladder.records == std::size_t{0} ? std::nullopt : std::optional(proposal);
        if (ladder.remedies().empty()) return std::nullopt;
        const Proposal& more = ladder.remedies().front().proposal;
        proposal.insert(proposal.end(), more.begin(), more.end());
    }
    return std::nullopt;
}

}  // namespace

void completeRemedies(const Settings& settings, const Look& look, std::size_t most,
                      std::chrono::steady_clock::time_point end, Ladder& ladder) {
    std::vector<Remedy> remedies;
    for (const Remedy& each : ladder.remedies()) {
        if (remedies.size() == most || std::chrono::steady_clock::now() > end) break;
        if (auto proposal = completed(each.proposal, settings, look))
            remedies.push_back({each.stage, std::move(*proposal)});
    }
    ladder.setRemedies(std::move(remedies));
}

}  // namespace probe
