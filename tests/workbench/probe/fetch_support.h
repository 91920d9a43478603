#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "workbench/probe/fetch/Fetched.h"

namespace probe {

inline Settings settingsFor(QueryType type, const std::string& filename) {
    Settings settings;
    settings.queryMode = type;
    settings.filename = filename;
    return settings;
}

constexpr double patience = 20;  // seconds; no test takes that long

/// The failure of a fetch, which is expected to fail.
inline FetchFailure failureOf(const Settings& settings, double timeoutSeconds = patience) {
    try {
        const Fetched fetched = fetch(settings, timeoutSeconds);
        ADD_FAILURE() << settings.filename << " came, with status " << fetched.status;
    } catch (const FetchFailure& failure) {
        return failure;
    }
    return {FetchFailure::Stage::Fetched, "did not fail", ""};
}

}  // namespace probe
