#include "workbench/probe/explore/PathPreview.h"

#include <algorithm>

#include "workbench/probe/explore/preview_cell.h"

namespace probe {

PathPreview::PathPreview(std::vector<std::string> place, std::vector<std::string> columns)
    : place_(std::move(place)), row_(columns.size()) {
    for (std::size_t i = 0; i < columns.size(); ++i)
        positions_.emplace(columns[i], i);
    preview_.columns = std::move(columns);
}

/// Only one path is open at a time, so that its length tells a node from the others.
PathSink::Id PathPreview::child(Id parent, std::string_view name, std::size_t& /*hint*/) {
    open_.resize(std::max<std::size_t>(open_.size(), parent + 1));
    open_[parent].assign(name);
    return parent + 1;
}

/// Several values of one name stand in one cell.
void PathPreview::count(Id node, Kind /*kind*/, std::string_view value) {
    if (node != place_.size() + 1 || value.empty() || !isInPlace()) return;
    const auto column = positions_.find(open_[place_.size()]);
    if (column == positions_.end()) return;
    std::string& cell = row_[column->second];
    cell = previewCell(cell.empty() ? std::string(value) : cell + ", " + std::string(value));
}

void PathPreview::end(Id node) {
    if (node != place_.size() || !isInPlace() || hasEnough()) return;
    preview_.rows.push_back(row_);
    std::fill(row_.begin(), row_.end(), "");
}

bool PathPreview::hasEnough() const {
    return preview_.rows.size() == mostPreviewed;
}

bool PathPreview::isInPlace() const {
    return open_.size() >= place_.size() && std::equal(place_.begin(), place_.end(), open_.begin());
}

}  // namespace probe
