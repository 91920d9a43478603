#pragma once

#include <rapidjson/reader.h>

#include <cstddef>

namespace intake {

/// The text as the parser walks it, decoding strings where they stand. It remembers where the
/// string began that it is in: when an error is met inside one, what was decoded of it is no longer
/// the source. It also remembers the first surrogate that is half of no pair.
struct SourceStream : rapidjson::InsituStringStream {
    explicit SourceStream(char* text) : rapidjson::InsituStringStream(text) {}

    static constexpr size_t NOWHERE = static_cast<size_t>(-1);

    char* PutBegin() {
        openString = Tell();
        return rapidjson::InsituStringStream::PutBegin();
    }

    size_t PutEnd(char* begin) {
        openString = NOWHERE;
        return rapidjson::InsituStringStream::PutEnd(begin);
    }

    /// To be called when the escape of a surrogate has just been taken.
    void noteLoneSurrogate() {
        if (loneSurrogate == NOWHERE) {
            loneSurrogate = Tell() - ESCAPE_LENGTH;
        }
    }

    size_t openString = NOWHERE;
    size_t loneSurrogate = NOWHERE;  // the first one

private:
    static constexpr size_t ESCAPE_LENGTH = 6;  // of \uDC00
};

}  // namespace intake

/// Lets the parser work on a copy of the stream in registers.
template <>
struct rapidjson::StreamTraits<intake::SourceStream> {
    enum { copyOptimization = 1 };
};
