#pragma once

#include <rapidjson/encodings.h>

#include "readers/json/SourceStream.h"

namespace intake {

/// UTF-8, in which half a surrogate pair is no character. The parser refuses a first half without
/// the second; a second half that stands alone it hands over here, to be encoded as if it were one.
struct SourceEncoding : rapidjson::UTF8<> {
    using rapidjson::UTF8<>::Encode;

    static void Encode(SourceStream& out, unsigned character) {
        if (character >= 0xD800 && character <= 0xDFFF) {
            out.noteLoneSurrogate();
        }
        rapidjson::UTF8<>::Encode(out, character);
    }
};

}  // namespace intake
