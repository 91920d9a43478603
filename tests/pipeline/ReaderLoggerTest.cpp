#include "pipeline/ReaderLogger.h"
#include "platform/Platform.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "tests/fakes/platform/FakeClock.h"
#include "tests/support/TempDirectory.h"

namespace intake {

namespace {

constexpr const char* FIRST_LOG = "2026-03-05-0907-Intake.log";
constexpr const char* SECOND_LOG = "2026-03-05-0908-Intake.log";

std::string contentOf(const std::string& file) {
    std::ostringstream content;
    content << std::ifstream(file).rdbuf();
    return content.str();
}

std::set<std::string> logFiles() {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(".")) {
        names.insert(entry.path().filename().string());
    }
    return names;
}

class ReaderLoggerTest : public testing::Test {
protected:
    ReaderLoggerTest() { clock_.setLocalTime({2026, 3, 5, 9, 7}); }

    void writeTimes(int times) {
        for (int i = 0; i < times; ++i) {
            logger_.Write(LOG_INFO, "x\n");
        }
    }

    TempWorkingDirectory directory_;
    FakeClock clock_;
    ReaderLogger logger_{clock_, systemPlatform().textFiles};
};

using Names = std::set<std::string>;

}  // namespace

TEST_F(ReaderLoggerTest, ALoggerThatNeverWritesCreatesNoFile) {
    logger_.setLevel(LOG_INFO);
    logger_.Write(LOG_DEBUG, "left out\n");
    EXPECT_EQ(logFiles(), Names{});
}

TEST_F(ReaderLoggerTest, TheFirstMessageCreatesTheFileNamedByTheMinute) {
    logger_.Write(LOG_FATAL, "x\n");
    EXPECT_EQ(logFiles(), Names{FIRST_LOG});
}

TEST_F(ReaderLoggerTest, TheNameHasTwoDigitsForEachPartButTheYear) {
    clock_.setLocalTime({2031, 12, 31, 23, 59});
    logger_.Write(LOG_INFO, "x\n");
    EXPECT_EQ(logFiles(), Names{"2031-12-31-2359-Intake.log"});
}

TEST_F(ReaderLoggerTest, ALineHasTheTimeWithoutLeadingZerosTheLevelAndThreeTabs) {
    logger_.Write(LOG_INFO, "Command: MODE |JSON| \n");
    EXPECT_EQ(contentOf(FIRST_LOG), "5/3 9:7 INFO: \t\t\tCommand: MODE |JSON| \n");
}

TEST_F(ReaderLoggerTest, EveryLevelHasItsName) {
    for (const LogLevel level : {LOG_FATAL, LOG_ERROR, LOG_WARNING, LOG_INFO, LOG_DEBUG}) {
        logger_.Write(level, "x\n");
    }
    EXPECT_EQ(contentOf(FIRST_LOG),
              "5/3 9:7 FATAL: \t\t\tx\n"
              "5/3 9:7 ERROR: \t\t\tx\n"
              "5/3 9:7 WARNING: \t\t\tx\n"
              "5/3 9:7 INFO: \t\t\tx\n"
              "5/3 9:7 DEBUG: \t\t\tx\n");
}

TEST_F(ReaderLoggerTest, TheTimeOfALineIsThatOfItsWriting) {
    logger_.Write(LOG_INFO, "first\n");
    clock_.setLocalTime({2026, 12, 31, 23, 59});
    logger_.Write(LOG_INFO, "second\n");
    EXPECT_EQ(logFiles(), Names{FIRST_LOG});
    EXPECT_EQ(contentOf(FIRST_LOG),
              "5/3 9:7 INFO: \t\t\tfirst\n"
              "31/12 23:59 INFO: \t\t\tsecond\n");
}

TEST_F(ReaderLoggerTest, NoLineEndIsAdded) {
    logger_.Write(LOG_DEBUG, "JSON: a.json");
    logger_.Write(LOG_DEBUG, "");
    EXPECT_EQ(contentOf(FIRST_LOG), "5/3 9:7 DEBUG: \t\t\tJSON: a.json5/3 9:7 DEBUG: \t\t\t");
}

TEST_F(ReaderLoggerTest, MessagesAboveTheLevelAreLeftOut) {
    logger_.setLevel(LOG_WARNING);
    logger_.Write(LOG_INFO, "left out\n");
    logger_.Write(LOG_WARNING, "written\n");
    EXPECT_EQ(contentOf(FIRST_LOG), "5/3 9:7 WARNING: \t\t\twritten\n");
}

TEST_F(ReaderLoggerTest, ANegativeLevelLeavesOutEverything) {
    logger_.setLevel(-1);
    logger_.Write(LOG_FATAL, "left out\n");
    EXPECT_EQ(logFiles(), Names{});
}

TEST_F(ReaderLoggerTest, AMessageCanBeReadWhileTheFileIsStillOpen) {
    logger_.Write(LOG_INFO, "first\n");
    EXPECT_EQ(contentOf(FIRST_LOG), "5/3 9:7 INFO: \t\t\tfirst\n");
    logger_.Write(LOG_INFO, "second\n");
    EXPECT_EQ(contentOf(FIRST_LOG), "5/3 9:7 INFO: \t\t\tfirst\n5/3 9:7 INFO: \t\t\tsecond\n");
}

TEST_F(ReaderLoggerTest, AnOlderFileOfTheSameMinuteIsReplaced) {
    std::ofstream(FIRST_LOG) << "a log of another instance\n";
    logger_.Write(LOG_INFO, "x\n");
    EXPECT_EQ(contentOf(FIRST_LOG), "5/3 9:7 INFO: \t\t\tx\n");
}

TEST_F(ReaderLoggerTest, After5001MessagesTheNextGoesToAFreshlyOpenedFile) {
    writeTimes(5000);
    EXPECT_EQ(logFiles(), Names{FIRST_LOG});
    clock_.setLocalTime({2026, 3, 5, 9, 8});
    logger_.Write(LOG_INFO, "the 5001st\n");
    EXPECT_EQ(logFiles(), (Names{FIRST_LOG, SECOND_LOG}));
    logger_.Write(LOG_INFO, "the 5002nd\n");

    std::string first;
    for (int i = 0; i < 5000; ++i) {
        first += "5/3 9:7 INFO: \t\t\tx\n";
    }
    EXPECT_EQ(contentOf(FIRST_LOG), first + "5/3 9:8 INFO: \t\t\tthe 5001st\n");
    EXPECT_EQ(contentOf(SECOND_LOG), "5/3 9:8 INFO: \t\t\tthe 5002nd\n");
}

TEST_F(ReaderLoggerTest, TheSecondFileTakes5001MessagesToo) {
    writeTimes(5000);
    clock_.setLocalTime({2026, 3, 5, 9, 8});
    writeTimes(1 + 5000);
    clock_.setLocalTime({2026, 3, 5, 9, 9});
    writeTimes(1);
    EXPECT_EQ(logFiles(), (Names{FIRST_LOG, SECOND_LOG, "2026-03-05-0909-Intake.log"}));
    EXPECT_EQ(contentOf("2026-03-05-0909-Intake.log"), "");
}

TEST_F(ReaderLoggerTest, ARotationWithinTheSameMinuteTruncatesTheFile) {
    writeTimes(5001);
    EXPECT_EQ(contentOf(FIRST_LOG), "");
    logger_.Write(LOG_INFO, "the 5002nd\n");
    EXPECT_EQ(logFiles(), Names{FIRST_LOG});
    EXPECT_EQ(contentOf(FIRST_LOG), "5/3 9:7 INFO: \t\t\tthe 5002nd\n");
}

TEST_F(ReaderLoggerTest, AFileThatCannotBeCreatedLosesItsMessagesUntilTheNextRotation) {
    std::filesystem::create_directory(FIRST_LOG);  // nothing can be written under that name now
    writeTimes(1);
    clock_.setLocalTime({2026, 3, 5, 9, 8});
    writeTimes(4999);
    EXPECT_EQ(logFiles(), Names{FIRST_LOG});
    writeTimes(1);
    logger_.Write(LOG_INFO, "the 5002nd\n");
    EXPECT_EQ(contentOf(SECOND_LOG), "5/3 9:8 INFO: \t\t\tthe 5002nd\n");
}

TEST_F(ReaderLoggerTest, NumbersAreWrittenTheSameWayInEveryLocale) {
    struct Grouping : std::numpunct<char> {
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\1"; }
    };
    const std::locale before = std::locale::global(std::locale(std::locale(), new Grouping));
    ReaderLogger logger(clock_, systemPlatform().textFiles);
    clock_.setLocalTime({2026, 12, 31, 23, 59});
    logger.Write(LOG_INFO, "x\n");
    std::locale::global(before);
    EXPECT_EQ(logFiles(), Names{"2026-12-31-2359-Intake.log"});
    EXPECT_EQ(contentOf("2026-12-31-2359-Intake.log"), "31/12 23:59 INFO: \t\t\tx\n");
}

/// Each text that is written at once.
class WrittenTexts final : public TextFiles {
public:
    std::unique_ptr<TextFile> create(const std::string&) override {
        return std::make_unique<File>(*this);
    }
    std::vector<std::string> texts;

private:
    struct File final : TextFile {
        explicit File(WrittenTexts& written) : all(written) {}
        void append(std::string_view text) override { all.texts.emplace_back(text); }
        WrittenTexts& all;
    };
};

TEST_F(ReaderLoggerTest, AMessageIsWrittenAtOnceUnlessAPartOfItIsLong) {
    WrittenTexts written;
    ReaderLogger logger(clock_, written);
    clock_.setLocalTime({2026, 3, 5, 9, 7});
    const std::string script(100'000, 's');

    logger.Write(LOG_INFO, {"Loaded ", "T", "\n"});
    logger.Write(LOG_INFO, {"Script: ", script, "\n"});

    EXPECT_EQ(written.texts,
              (std::vector<std::string>{"5/3 9:7 INFO: \t\t\tLoaded T\n",
                                        "5/3 9:7 INFO: \t\t\tScript: ", script, "\n"}));
}

}  // namespace intake
