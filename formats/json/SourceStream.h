#pragma once

#include <rapidjson/allocators.h>
#include <rapidjson/encodings.h>
#include <rapidjson/reader.h>

#include <cstddef>
#include <new>

#include "formats/text/utf16.h"

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

/// Gives the parser's stack its memory. The library itself does not look whether it got any.
struct ThrowingAllocator : rapidjson::CrtAllocator {
    void* Malloc(size_t size) { return checked(CrtAllocator::Malloc(size), size); }
    void* Realloc(void* memory, size_t size, size_t newSize) {
        return checked(CrtAllocator::Realloc(memory, size, newSize), newSize);
    }

private:
    static void* checked(void* memory, size_t size) {
        if (memory == nullptr && size != 0) {
            throw std::bad_alloc();
        }
        return memory;
    }
};

/// UTF-8, in which half a surrogate pair is no character. The parser refuses a first half without
/// the second; a second half that stands alone it hands over here, to be encoded as if it were one.
struct SourceEncoding : rapidjson::UTF8<> {
    using rapidjson::UTF8<>::Encode;

    static void Encode(SourceStream& out, unsigned character) {
        if (isSurrogate(character)) {
            out.noteLoneSurrogate();
        }
        rapidjson::UTF8<>::Encode(out, character);
    }
};

}  // namespace intake

/// Lets the parser work on a copy of the stream in registers.
template <>
struct rapidjson::StreamTraits<intake::SourceStream> {
    enum { copyOptimization = 1 };
};
