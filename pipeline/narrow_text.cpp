#include "pipeline/narrow_text.h"

#include "formats/text/latin1.h"

namespace intake {

void narrowFrom(std::string& text, size_t start, int32_t encoding) {
    if (encoding == ENCODING_ISO_8859_1) {
        narrowToLatin1(text, start);
    }
}

std::string toUtf8(std::string_view text, int32_t encoding) {
    return encoding == ENCODING_ISO_8859_1 ? latin1ToUtf8(text) : std::string(text);
}

}  // namespace intake
