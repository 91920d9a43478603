#pragma once

#include <rapidjson/reader.h>

#include <cstddef>

namespace intake {

/// The text as the parser walks it, decoding strings where they stand. It remembers where the
/// latest string began: when an error is met inside one, what was decoded of it is no longer the
/// source.
struct SourceStream : rapidjson::InsituStringStream {
    explicit SourceStream(char* text) : rapidjson::InsituStringStream(text) {}

    char* PutBegin() {
        latestString = Tell();
        return rapidjson::InsituStringStream::PutBegin();
    }

    size_t latestString = 0;
};

}  // namespace intake

/// Lets the parser work on a copy of the stream in registers.
template <>
struct rapidjson::StreamTraits<intake::SourceStream> {
    enum { copyOptimization = 1 };
};
