#include "pipeline/ReaderLogger.h"

#include <array>
#include <iomanip>
#include <sstream>

namespace intake {

namespace {

constexpr int32_t LINES_PER_FILE = 5000;

constexpr std::array<std::string_view, 5> LEVEL_NAMES{"FATAL", "ERROR", "WARNING", "INFO", "DEBUG"};

std::string logFileName(const LocalTime& time) {
    std::ostringstream name;
    name.imbue(std::locale::classic());
    const auto twoDigits = [&]() -> std::ostream& {
        return name << std::setfill('0') << std::setw(2);
    };
    name << time.year << '-';
    twoDigits() << time.month << '-';
    twoDigits() << time.day << '-';
    twoDigits() << time.hour;
    twoDigits() << time.minute << "-Intake.log";
    return name.str();
}

}  // namespace

void ReaderLogger::open(const LocalTime& now) {
    file_.close();
    file_.imbue(std::locale::classic());
    file_.open(logFileName(now), std::ios::out | std::ios::trunc);
    opened_ = true;
    lines_ = 0;
}

void ReaderLogger::Write(LogLevel level, std::initializer_list<std::string_view> parts) {
    if (level > level_) {
        return;
    }
    const LocalTime now = clock_.localTime();
    if (!opened_) {
        open(now);
    }
    file_ << now.day << '/' << now.month << ' ' << now.hour << ':' << now.minute << ' '
          << LEVEL_NAMES[static_cast<size_t>(level)] << ": \t\t\t";
    for (const std::string_view part : parts) {
        file_ << part;
    }
    file_ << std::flush;
    if (lines_++ >= LINES_PER_FILE) {
        open(now);
    }
}

}  // namespace intake
