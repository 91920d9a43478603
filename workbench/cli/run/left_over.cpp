#include "workbench/cli/run/left_over.h"

#include <algorithm>

#include "workbench/cli/display_text.h"

namespace workbench {

namespace {

constexpr std::size_t mostNames = 3;

/// Calls `visit` with the origin and the name of whatever some load wrote.
template <class Visit>
void forEachOrigin(const cobalt::Store& store, Visit visit) {
    for (const cobalt::Field& field : store) {
        if (field.origin().writer != 0) visit(field.origin(), field, nullptr);
        for (const cobalt::Entry& entry : field.value().entries()) {
            if (entry.origin.writer != 0) visit(entry.origin, field, &entry);
        }
    }
}

std::string nameOf(const cobalt::Field& field, const cobalt::Entry* entry) {
    return toUtf8(field.name()) + (entry == nullptr ? "" : "[" + toUtf8(entry->key) + "]");
}

}  // namespace

std::vector<LeftOver> countLeftOver(const cobalt::Store& store,
                                    std::span<const std::uint32_t> lastMoments) {
    std::vector<LeftOver> counts(lastMoments.size());
    forEachOrigin(store, [&](cobalt::Origin origin, const cobalt::Field&, const cobalt::Entry*) {
        if (origin.moment == lastMoments[origin.writer]) return;
        LeftOver& found = counts[origin.writer];
        found.oldest = found.count == 0 ? origin.moment : std::min(found.oldest, origin.moment);
        ++found.count;
    });
    return counts;
}

std::string namesOfLeftOver(const cobalt::Store& store, cobalt::Origin last) {
    std::string names;
    std::size_t count = 0;
    forEachOrigin(
        store, [&](cobalt::Origin origin, const cobalt::Field& field, const cobalt::Entry* entry) {
            if (origin.writer != last.writer || origin.moment == last.moment) return;
            if (++count <= mostNames) names += (count == 1 ? "" : ", ") + nameOf(field, entry);
        });
    return count > mostNames ? names + " and " + std::to_string(count - mostNames) + " more"
                             : names;
}

}  // namespace workbench
