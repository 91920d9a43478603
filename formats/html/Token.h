#pragma once

#include <optional>
#include <string_view>

#include "formats/html/Node.h"

namespace intake::html {

/// One piece of a page as the tokenizer delivers it.
struct Token {
    enum Type { DOCTYPE, START_TAG, END_TAG, COMMENT, TEXT, END };

    Type type = END;
    Tag tag = Tag::OTHER;
    bool selfClosing = false;
    bool forceQuirks = false;         // of a doctype
    std::string_view text;            // of a text or comment; the name of a tag or doctype
    Attribute* attributes = nullptr;  // of a start tag
    std::optional<std::string_view> publicId, systemId;  // of a doctype

    bool isStart(Tag which) const { return type == START_TAG && tag == which; }
    bool isEnd(Tag which) const { return type == END_TAG && tag == which; }

    template <class... Tags>
    bool isStartOf(Tags... tags) const {
        return type == START_TAG && isOneOf(tag, tags...);
    }
    template <class... Tags>
    bool isEndOf(Tags... tags) const {
        return type == END_TAG && isOneOf(tag, tags...);
    }
};

}  // namespace intake::html
