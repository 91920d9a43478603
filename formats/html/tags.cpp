#include "formats/html/tags.h"

#include <array>

namespace intake::html {

namespace {

struct TagRow {
    std::string_view name;
    uint32_t traits;
};

constexpr std::array<TagRow, TAG_COUNT> TAGS{{{"", 0},
#define INTAKE_HTML_TAG(name, text, traits) {text, traits},
                                              INTAKE_HTML_TAGS(INTAKE_HTML_TAG)
#undef INTAKE_HTML_TAG
}};

constexpr size_t SLOTS = 512;

constexpr size_t slotOf(std::string_view name) {
    size_t hash = name.size();
    for (const char letter : name) {
        hash = hash * 31 + static_cast<unsigned char>(letter);
    }
    return hash % SLOTS;
}

/// Open addressing; a free slot holds OTHER.
constexpr std::array<Tag, SLOTS> makeIndex() {
    std::array<Tag, SLOTS> index{};
    for (size_t tag = 1; tag < TAG_COUNT; ++tag) {
        size_t slot = slotOf(TAGS[tag].name);
        while (index[slot] != Tag::OTHER) {
            slot = (slot + 1) % SLOTS;
        }
        index[slot] = static_cast<Tag>(tag);
    }
    return index;
}

constexpr std::array<Tag, SLOTS> INDEX = makeIndex();
constexpr size_t LONGEST_NAME = 14;

}  // namespace

Tag tagOf(std::string_view name) {
    if (name.size() > LONGEST_NAME) {
        return Tag::OTHER;
    }
    size_t slot = slotOf(name);
    while (INDEX[slot] != Tag::OTHER && nameOf(INDEX[slot]) != name) {
        slot = (slot + 1) % SLOTS;
    }
    return INDEX[slot];
}

std::string_view nameOf(Tag tag) {
    return TAGS[static_cast<size_t>(tag)].name;
}

uint32_t traitsOf(Tag tag) {
    return TAGS[static_cast<size_t>(tag)].traits;
}

}  // namespace intake::html
