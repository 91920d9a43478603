#include "workbench/trace/Trace.h"

#include <charconv>

namespace tracing {

namespace {

void appendEscaped(char c, std::string& out) {
    switch (c) {
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        default:
            out += c;
    }
}

}  // namespace

std::string quoted(std::string_view text) {
    std::string out = "\"";
    for (char c : text)
        appendEscaped(c, out);
    return out + '"';
}

void Trace::begin(std::string_view function) {
    text_ += function;
    text_ += '(';
    firstArgument_ = true;
}

void Trace::end() {
    text_ += ")\n";
}

void Trace::takeBack(std::string_view function) {
    if (text_.empty()) return;
    const auto lineEnd = text_.rfind('\n', text_.size() - 2);
    const auto start = lineEnd == std::string::npos ? 0 : lineEnd + 1;
    if (std::string_view(text_).substr(start).starts_with(std::string(function) + '('))
        text_.erase(start);
}

void Trace::separate() {
    if (!firstArgument_) text_ += ", ";
    firstArgument_ = false;
}

void Trace::append(const char* text) {
    separate();
    text_ += text != nullptr ? quoted(text) : "null";
}

void Trace::append(const char* const* entries) {
    separate();
    text_ += '{';
    for (const char* const* entry = entries; *entry != nullptr; ++entry) {
        if (entry != entries) text_ += ", ";
        text_ += quoted(*entry);
    }
    text_ += '}';
}

void Trace::append(int32_t number) {
    separate();
    text_ += std::to_string(number);
}

void Trace::append(float number) {
    separate();
    char digits[32];
    const auto written = std::to_chars(digits, digits + sizeof digits, number);
    text_.append(digits, written.ptr);
}

void Trace::append(Bare object) {
    separate();
    text_ += object.name;
}

}  // namespace tracing
