#pragma once

#include <string>

#include "pipeline/ReaderHandler.h"

namespace intake {

/// Stands in for a reader that this version does not have yet: every request fails and says so.
class UnavailableHandler final : public ReaderHandler {
public:
    explicit UnavailableHandler(std::string sourceKind) : sourceKind_(std::move(sourceKind)) {}

    bool Read(const RequestRecord&, std::string&, std::string& error) override {
        error += "This version of Intake cannot read " + sourceKind_ + " sources yet.\n";
        return false;
    }

private:
    std::string sourceKind_;
};

}  // namespace intake
