#include "workbench/cli/RecordRange.h"

#include <charconv>

#include "workbench/cli/UsageError.h"

namespace workbench {

namespace {

[[noreturn]] void reject(std::string_view text) {
    throw UsageError("--expect-records takes a number of records such as 40, or a range such as " +
                     std::string("10..20, not \"") + std::string(text) + "\".");
}

std::size_t readNumber(std::string_view number, std::string_view text) {
    std::size_t value = 0;
    const char* end = number.data() + number.size();
    const auto read = std::from_chars(number.data(), end, value);
    if (read.ec != std::errc() || read.ptr != end) reject(text);
    return value;
}

std::string counted(std::size_t records) {
    return std::to_string(records) + (records == 1 ? " record" : " records");
}

std::string expectation(const RecordRange& range) {
    if (range.least == range.most) return counted(range.least);
    if (range.most == RecordRange::unlimited) return "at least " + counted(range.least);
    return std::to_string(range.least) + " to " + counted(range.most);
}

}  // namespace

std::string RecordRange::complaint(std::size_t records) const {
    return "Expected " + expectation(*this) + "; " +
           (records == 0 ? "none" : std::to_string(records)) + " arrived.";
}

RecordRange readRecordRange(std::string_view text) {
    const auto dots = text.find("..");
    const std::size_t least = readNumber(text.substr(0, dots), text);
    if (dots == std::string_view::npos) return {least, least};
    const std::size_t most = readNumber(text.substr(dots + 2), text);
    if (most < least) reject(text);
    return {least, most};
}

}  // namespace workbench
