#include "pipeline/command_text.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <variant>

namespace intake {

namespace {

constexpr int32_t ALL_ROWS = 1000000;

/// A row number travels as a framed text.
struct RowNumber {
    int32_t RequestRecord::*field;
    int32_t insteadOfZero;
};

using Target = std::variant<std::string RequestRecord::*, bool RequestRecord::*,
                            int32_t RequestRecord::*, RowNumber>;

struct CommandKey {
    std::string_view name;
    Target target;
};

using R = RequestRecord;

const std::array<CommandKey, 31> COMMAND_KEYS{{
    {"MODE", &R::mode},
    {"FILENAME", &R::filename},
    {"RANGE", &R::range},
    {"CONNSTR", &R::connStr},
    {"AVOID_CACHE", &R::avoidCache},
    {"USE_AUTH", &R::useAuth},
    {"USERNAME", &R::userName},
    {"PASSWORD", &R::password},
    {"QUERY", &R::query},
    {"XPATH", &R::xpath},
    {"NAMESPACES", &R::namespaces},
    {"FROM_ROW", RowNumber{&R::fromRow, 0}},
    {"NUM_ROWS", RowNumber{&R::numRows, ALL_ROWS}},
    {"KEY", &R::key},
    {"SHEET", &R::sheet},
    {"TABLE", &R::table},
    {"TGT_MODE", &R::targetMode},
    {"FIELDS_DELIMITER", &R::fieldsDelimiter},
    {"ROWS_DELIMITER", &R::rowsDelimiter},
    {"LOG_LEVEL", &R::logLevel},
    {"ENCODING", &R::encoding},
    {"VARSPREFIX", &R::varsPrefix},
    {"TGT_OUTFORMAT", &R::targetOutFormat},
    {"SRC_INFORMAT", &R::sourceInFormat},
    {"ENABLE_PROXY", &R::enableProxy},
    {"PROXY_MODE", &R::proxyMode},
    {"PROXY_URL", &R::proxyUrl},
    {"PROXY_USER", &R::proxyUser},
    {"PROXY_PWD", &R::proxyPwd},
    {"USE_CUSTOM_HEADERS", &R::useCustomHeaders},
    {"CUSTOM_HEADERS", &R::customHeaders},
}};

/// The leading decimal number of a text, 0 when there is none, the nearest limit when it is too
/// large.
int32_t leadingNumber(const std::string& text) {
    using Limits = std::numeric_limits<int32_t>;
    const long long number = std::strtoll(text.c_str(), nullptr, 10);
    return static_cast<int32_t>(std::clamp<long long>(number, Limits::min(), Limits::max()));
}

/// Reads a target's value from the stream into the record.
struct ValueReader {
    RequestRecord& record;
    std::istream& in;

    void operator()(std::string RequestRecord::*field) const { ReadFramedValue(in, record.*field); }

    template <class Number>
    void operator()(Number RequestRecord::*field) const {
        if (Number value{}; in >> value) {
            record.*field = value;
        }
    }

    void operator()(const RowNumber& row) const {
        std::string text;
        ReadFramedValue(in, text);
        const int32_t number = leadingNumber(text);
        record.*row.field = number != 0 ? number : row.insteadOfZero;
    }
};

}  // namespace

std::string EscapeValue(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (const char character : text) {
        if (character == '\\' || character == '|') {
            escaped += '\\';
        }
        escaped += character;
    }
    return escaped;
}

void appendNumberPair(std::string& command, std::string_view key, int32_t value) {
    command.append(key).append(" ").append(std::to_string(value)).append(" ");
}

void appendTextPair(std::string& command, std::string_view key, std::string_view value) {
    command.append(key).append(" |").append(value).append("| ");
}

void ReadFramedValue(std::istream& in, std::string& target) {
    target.clear();
    in.ignore(std::numeric_limits<std::streamsize>::max(), '|');
    bool literal = false;
    for (char character; in.get(character);) {
        if (literal) {
            target += character;
            literal = false;
        } else if (character == '\\') {
            literal = true;
        } else if (character == '|') {
            return;
        } else {
            target += character;
        }
    }
}

void ParseCommand(RequestRecord& record, std::istream& in) {
    // A stream would keep want of memory to itself, and all keys that follow would be lost.
    in.exceptions(std::ios::badbit);
    record.mode = "EXCEL";
    for (std::string word; in >> word;) {
        const auto key = std::find_if(COMMAND_KEYS.begin(), COMMAND_KEYS.end(),
                                      [&](const CommandKey& each) { return each.name == word; });
        if (key != COMMAND_KEYS.end()) {
            std::visit(ValueReader{record, in}, key->target);
        }
    }
}

}  // namespace intake
