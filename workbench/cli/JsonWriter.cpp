#include "workbench/cli/JsonWriter.h"

#include <charconv>
#include <cmath>

#include "formats/text/ascii.h"
#include "workbench/cli/display_text.h"

namespace workbench {

namespace {

std::string_view skipDigits(std::string_view text) {
    const auto end = text.find_first_not_of("0123456789");
    return end == std::string_view::npos ? std::string_view{} : text.substr(end);
}

bool startsWithDigit(std::string_view text) {
    return !text.empty() && intake::isDigit(text.front());
}

// number = [-] (0 | digit1-9 digits) [. digits] [e [+-] digits]
bool isJsonNumber(std::string_view text) {
    if (text.starts_with('-')) text.remove_prefix(1);
    if (!startsWithDigit(text)) return false;
    text = text.front() == '0' ? text.substr(1) : skipDigits(text);
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        if (!startsWithDigit(text)) return false;
        text = skipDigits(text);
    }
    if (!text.starts_with('e') && !text.starts_with('E')) return text.empty();
    text.remove_prefix(1);
    if (text.starts_with('+') || text.starts_with('-')) text.remove_prefix(1);
    return startsWithDigit(text) && skipDigits(text).empty();
}

void appendEscaped(char c, std::string& out) {
    constexpr char hex[] = "0123456789abcdef";
    switch (c) {
        case '"':
            out += "\\\"";
            return;
        case '\\':
            out += "\\\\";
            return;
        case '\n':
            out += "\\n";
            return;
        case '\r':
            out += "\\r";
            return;
        case '\t':
            out += "\\t";
            return;
        default:
            break;
    }
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x20) {
        out += c;
    } else {
        out += "\\u00";
        out += hex[byte >> 4U];
        out += hex[byte & 0xFU];
    }
}

}  // namespace

void JsonWriter::startLine() {
    if (layout_ == Layout::OneLine) {
        if (out_.ends_with(',')) out_ += ' ';
        return;
    }
    out_ += '\n';
    out_.append(2 * depth_, ' ');
}

void JsonWriter::startValue() {
    if (!afterName_ && depth_ > 0) {
        if (!first_) out_ += ',';
        startLine();
    }
    afterName_ = false;
    first_ = false;
}

void JsonWriter::open(char bracket) {
    startValue();
    out_ += bracket;
    ++depth_;
    first_ = true;
}

void JsonWriter::close(char bracket) {
    --depth_;
    if (!first_) startLine();
    out_ += bracket;
    first_ = false;
}

void JsonWriter::name(std::string_view name) {
    startValue();
    appendQuoted(name);
    out_ += ": ";
    afterName_ = true;
}

void JsonWriter::text(std::string_view text) {
    startValue();
    appendQuoted(text);
}

void JsonWriter::boolean(bool value) {
    startValue();
    out_ += value ? "true" : "false";
}

void JsonWriter::null() {
    startValue();
    out_ += "null";
}

void JsonWriter::number(std::string_view written, double value) {
    if (isJsonNumber(written)) {
        startValue();
        out_ += written;
    } else if (std::isfinite(value)) {
        number(value);
    } else {
        text(written);
    }
}

void JsonWriter::number(double value) {
    startValue();
    char digits[32];
    out_.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

void JsonWriter::member(std::string_view name, std::string_view value) {
    this->name(name);
    text(value);
}

void JsonWriter::member(std::string_view name, double value) {
    this->name(name);
    number(value);
}

void JsonWriter::appendQuoted(std::string_view text) {
    out_ += '"';
    for (const char c : toUtf8(text))
        appendEscaped(c, out_);
    out_ += '"';
}

}  // namespace workbench
