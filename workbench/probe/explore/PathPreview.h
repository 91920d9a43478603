#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "workbench/probe/explore/Outline.h"
#include "workbench/probe/explore/PathSink.h"

namespace probe {

/// Takes the first records at a place, each with the values that stand directly in it.
class PathPreview final : public PathSink {
public:
    /// `columns` are the names of the values.
    PathPreview(std::vector<std::string> place, std::vector<std::string> columns);

    Id child(Id parent, std::string_view name, std::size_t& hint) override;
    void count(Id node, Kind kind, std::string_view value) override;
    void end(Id node) override;
    bool wantsText(Id node) const override { return node == place_.size() + 1; }
    bool hasEnough() const override;

    Preview take() { return std::move(preview_); }

private:
    bool isInPlace() const;

    const std::vector<std::string> place_;
    std::unordered_map<std::string, std::size_t> positions_;  // of the columns
    std::vector<std::string> open_;  // the names from the root to where the document is read
    std::vector<std::string> row_;
    Preview preview_;
};

}  // namespace probe
