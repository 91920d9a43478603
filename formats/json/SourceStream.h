#pragma once

#include <rapidjson/allocators.h>
#include <rapidjson/encodings.h>
#include <rapidjson/reader.h>

#include <cstddef>
#include <cstring>
#include <new>
#include <optional>

#include "formats/json/plain_characters.h"
#include "formats/text/utf16.h"

namespace intake {

/// Where in the source something stands. Both count from 1, the column in bytes.
struct SourcePosition {
    size_t line, column;
};

/// What is remembered of the source as it is parsed, since decoding in place destroys it.
struct SourceNotes {
    size_t line = 1;
    size_t lineStart = 0;                         // of that line
    std::optional<SourcePosition> loneSurrogate;  // the first that is half of no pair

    /// `offset` stands in the line that was reached.
    SourcePosition position(size_t offset) const { return {line, offset - lineStart + 1}; }
};

/// The text as the parser walks it, decoding strings where they stand.
struct SourceStream : rapidjson::InsituStringStream {
    /// The notes outlive this object and its copies.
    SourceStream(char* text, SourceNotes& taken)
        : rapidjson::InsituStringStream(text), notes(&taken) {}

    /// Takes the plain characters of a string that stand next, all at once.
    void takePlain() {
        const size_t length = plainLength(src_);
        if (dst_ != src_) {
            std::memmove(dst_, src_, length);
        }
        src_ += length;
        dst_ += length;
    }

    /// Line ends stand nowhere else: in a string they are an error.
    void takeWhiteSpace() {
        for (; static_cast<unsigned char>(*src_) <= ' '; ++src_) {
            if (*src_ == '\n') {
                ++notes->line;
                notes->lineStart = Tell() + 1;
            } else if (*src_ != ' ' && *src_ != '\r' && *src_ != '\t') {
                return;
            }
        }
    }

    /// To be called when the escape of a surrogate has just been taken.
    void noteLoneSurrogate() {
        constexpr size_t ESCAPE_LENGTH = 6;  // of \uDC00
        if (!notes->loneSurrogate) {
            notes->loneSurrogate = notes->position(Tell() - ESCAPE_LENGTH);
        }
    }

    SourceNotes* notes;
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

template <>
inline void rapidjson::SkipWhitespace(intake::SourceStream& stream) {
    stream.takeWhiteSpace();
}
