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

struct Names {
    std::size_t count = 0;
    std::string text;  // of the first few
};

Names namesIn(const cobalt::Store& store, cobalt::Origin last) {
    Names names;
    forEachOrigin(
        store, [&](cobalt::Origin origin, const cobalt::Field& field, const cobalt::Entry* entry) {
            if (origin.writer != last.writer || origin.moment == last.moment) return;
            if (++names.count <= mostNames)
                names.text += (names.count == 1 ? "" : ", ") + nameOf(field, entry);
        });
    if (names.count > mostNames)
        names.text += " and " + std::to_string(names.count - mostNames) + " more";
    return names;
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
    return namesIn(store, last).text;
}

std::string sentenceOfLeftOver(const cobalt::Store& store, cobalt::Origin last) {
    const Names names = namesIn(store, last);
    if (names.count == 0) return "";
    constexpr std::size_t longest = 4096;  // names of any length would be no sentence
    return (names.count == 1 ? "1 entry" : std::to_string(names.count) + " entries") +
           " of older loads " + (names.count == 1 ? "is" : "are") + " left in the data store" +
           (names.text.size() > longest ? "" : ": " + names.text) + ".";
}

}  // namespace workbench
