#include "pipeline/ReaderLogger.h"

#include <array>
#include <iomanip>
#include <sstream>

namespace intake {

namespace {

constexpr int32_t LINES_PER_FILE = 5000;
constexpr size_t LONGEST_COPIED = 65536;

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

std::string headOf(LogLevel level, const LocalTime& now) {
    std::string head;
    const auto add = [&head](auto number, char sign) {
        head.append(std::to_string(number)) += sign;
    };
    add(now.day, '/');
    add(now.month, ' ');
    add(now.hour, ':');
    add(now.minute, ' ');
    return head.append(LEVEL_NAMES[static_cast<size_t>(level)]).append(": \t\t\t");
}

}  // namespace

void ReaderLogger::open(const LocalTime& now) {
    file_.reset();
    file_ = files_.create(logFileName(now));
    opened_ = true;
    lines_ = 0;
}

/// In as few writes as can be: instances share the file, and a line should not be cut by another's.
/// Whole scripts are not copied for that.
void ReaderLogger::append(std::string line, std::initializer_list<std::string_view> parts) {
    for (const std::string_view part : parts) {
        if (part.size() <= LONGEST_COPIED) {
            line.append(part);
            continue;
        }
        file_->append(line);
        file_->append(part);
        line.clear();
    }
    file_->append(line);
}

void ReaderLogger::Write(LogLevel level, std::initializer_list<std::string_view> parts) {
    if (level > level_) {
        return;
    }
    const LocalTime now = clock_.localTime();
    if (!opened_) {
        open(now);
    }
    if (file_ != nullptr) {
        append(headOf(level, now), parts);
    }
    if (lines_++ >= LINES_PER_FILE) {
        open(now);
    }
}

}  // namespace intake
