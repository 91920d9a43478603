#pragma once

#include <rapidjson/allocators.h>
#include <rapidjson/encodings.h>
#include <rapidjson/reader.h>

#include <cstddef>
#include <cstring>
#include <new>
#include <vector>

#include "formats/json/plain_characters.h"
#include "formats/text/utf16.h"

namespace intake {

/// The text as the parser walks it, decoding strings where they stand. It remembers the line feeds
/// that were decoded, which end no line of the source, and the first surrogate that is half of no
/// pair.
struct SourceStream : rapidjson::InsituStringStream {
    /// The offsets of decoded line feeds are appended to `lineFeeds`, which outlives this object.
    SourceStream(char* text, std::vector<size_t>& lineFeeds)
        : rapidjson::InsituStringStream(text), decodedLineFeeds(&lineFeeds) {}

    static constexpr size_t NOWHERE = static_cast<size_t>(-1);

    void Put(char character) {
        if (character == '\n') {
            decodedLineFeeds->push_back(static_cast<size_t>(dst_ - head_));
        }
        rapidjson::InsituStringStream::Put(character);
    }

    /// Takes the plain characters of a string that stand next, all at once.
    void takePlain() {
        const size_t length = plainLength(src_);
        if (dst_ != src_) {
            std::memmove(dst_, src_, length);
        }
        src_ += length;
        dst_ += length;
    }

    /// To be called when the escape of a surrogate has just been taken.
    void noteLoneSurrogate() {
        if (loneSurrogate == NOWHERE) {
            loneSurrogate = Tell() - ESCAPE_LENGTH;
        }
    }

    std::vector<size_t>* decodedLineFeeds;
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
    using rapidjson::UTF8<>::Validate;

    /// Moves the next character of a string, and all plain ones behind it; false if it is none.
    static bool Validate(SourceStream& in, SourceStream& out) {
        if (isPlain(in.Peek())) {
            out.takePlain();
            return true;
        }
        return rapidjson::UTF8<>::Validate(in, out);
    }

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
