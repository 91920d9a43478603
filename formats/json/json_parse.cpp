#include "formats/json/json_parse.h"

#include <rapidjson/error/en.h>

#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>

#include "formats/json/JsonEvents.h"
#include "formats/json/RowEvents.h"
#include "formats/json/SourceStream.h"
#include "formats/json/take_number.h"
#include "formats/text/utf8.h"

namespace intake {

namespace {

using Parser = rapidjson::GenericReader<SourceEncoding, SourceEncoding, ThrowingAllocator>;

// Iterative, so that deep nesting cannot overflow the stack.
constexpr unsigned PARSE_FLAGS = rapidjson::kParseInsituFlag | rapidjson::kParseIterativeFlag |
                                 rapidjson::kParseNumbersAsStringsFlag |
                                 rapidjson::kParseValidateEncodingFlag;

}  // namespace

}  // namespace intake

template <>
template <>
void intake::Parser::ParseNumber<intake::PARSE_FLAGS, intake::SourceStream, intake::RowEvents>(
    intake::SourceStream& stream, intake::RowEvents& events) {
    rapidjson::internal::StreamLocalCopy<intake::SourceStream> copy(stream);
    const char* const start = copy.s.src_;
    const ParseErrorCode error = intake::takeNumber(copy.s);
    if (error != kParseErrorNone) {
        RAPIDJSON_PARSE_ERROR(error, copy.s.Tell());
    }
    events.RawNumber(start, static_cast<SizeType>(copy.s.src_ - start), false);
}

namespace intake {

namespace {

void refuseOtherEncodings(std::string_view text) {
    const std::string_view start = text.substr(0, 2);
    if (start == "\xFF\xFE" || start == "\xFE\xFF" || start.find('\0') != std::string_view::npos) {
        throw std::invalid_argument("The document is not in UTF-8.");
    }
}

/// What the parser found wrong. It takes a bare control character for an escape.
const char* causeOf(const rapidjson::ParseResult& result, std::string_view source) {
    if (result.Code() == rapidjson::kParseErrorStringEscapeInvalid &&
        static_cast<unsigned char>(source[result.Offset()]) < ' ') {
        return "A line break, tab or other control character in a string must be escaped.";
    }
    return rapidjson::GetParseError_En(result.Code());
}

[[noreturn]] void fail(const std::string& cause, const SourcePosition& position) {
    throw std::invalid_argument("line " + std::to_string(position.line) + ", column " +
                                std::to_string(position.column) + ": " + cause);
}

}  // namespace

int64_t parseJson(char* text, size_t size, const JsonRowQuery& query,
                  std::vector<JsonEntry>& entries) {
    const std::string_view source(text, size - 1);
    if (source.size() > std::numeric_limits<uint32_t>::max()) {
        throw std::invalid_argument("The document is larger than 4 GiB.");
    }
    refuseOtherEncodings(source);

    SourceNotes notes;
    SourceStream stream(text, notes);
    if (source.starts_with(UTF8_MARK)) {
        stream.src_ += UTF8_MARK.size();
    }
    JsonEvents row(text, entries);
    RowEvents events(row, query);
    const rapidjson::ParseResult result = Parser().Parse<PARSE_FLAGS>(stream, events);
    if (notes.loneSurrogate) {
        fail(rapidjson::GetParseError_En(rapidjson::kParseErrorStringUnicodeSurrogateInvalid),
             *notes.loneSurrogate);
    }
    if (result.IsError()) {
        fail(causeOf(result, source), notes.position(result.Offset()));
    }
    if (stream.Tell() != source.size()) {
        fail("A zero byte stands behind the document.", notes.position(stream.Tell()));
    }
    return events.found();
}

}  // namespace intake
