// Drivers of which nothing is known: what they answer is right, or an error.

#include <sql.h>
#include <sqlext.h>

#include <thread>

#include "formats/connection/connection_string.h"
#include "platform/linux/odbc/OdbcConnection.h"
#include "platform/linux/odbc/OdbcRecordset.h"
#include "tests/http/support/EnvironmentVariable.h"
#include "tests/platform/database/DatabaseTest.h"

namespace intake {

namespace {

class OddDriver : public DatabaseTest {
protected:
    OddDriver() {
        directory_.write("odbc.ini", std::string("[odd]\nDriver=") + ODD_DRIVER + "\n");
        open("DSN=odd");
    }

    const EnvironmentVariable sources_{"ODBCINI", "odbc.ini"};

    /// The only value of a query that the driver answers in its way.
    std::string valueOf(int type, const std::string& behaviour, const std::string& text) {
        return recordsOfQuery(std::to_string(type) + " " + behaviour + " " + text);
    }
};

const std::string LONG(5000, 'x');

TEST_F(OddDriver, ThatGivesDoublesAsTextsIsUnderstood) {
    EXPECT_EQ(valueOf(SQL_DOUBLE, "plain", "18.0000"), "R8 18|\n");
    EXPECT_EQ(valueOf(SQL_REAL, "plain", "-2.5"), "R4 -2.5|\n");
    EXPECT_EQ(valueOf(SQL_DECIMAL, "plain", "12345.678"), "DECIMAL 12345.7|\n");
}

TEST_F(OddDriver, ThatRefusesIntegersIsAskedForTexts) {
    EXPECT_EQ(valueOf(SQL_INTEGER, "plain", "-7"), "I4 -7|\n");
    EXPECT_EQ(valueOf(SQL_SMALLINT, "plain", "40000"), "I8 40000|\n");
    EXPECT_EQ(valueOf(SQL_BIT, "plain", "1"), "BOOL 1|\n");
    EXPECT_EQ(valueOf(SQL_BIGINT, "narrow", "9223372036854775807"), "I8 9223372036854775807|\n");
}

TEST_F(OddDriver, ThatGivesWhatIsNoNumberLeavesItAText) {
    EXPECT_EQ(valueOf(SQL_INTEGER, "plain", "n/a"), "BSTR n/a|\n");
    EXPECT_EQ(valueOf(SQL_DOUBLE, "plain", "1,234.5"), "BSTR 1,234.5|\n");
}

TEST_F(OddDriver, ThatLiesAboutLengthsIsNotBelieved) {
    for (const char* const behaviour :
         {"too-long", "huge", "too-short", "in-characters", "no-total", "narrow",
          "whole-characters", "whole-characters-narrow", "plain"}) {
        EXPECT_EQ(valueOf(SQL_VARCHAR, behaviour, "Holm"), "BSTR Holm|\n") << behaviour;
        EXPECT_EQ(valueOf(SQL_VARCHAR, behaviour, LONG), "BSTR " + LONG + "|\n") << behaviour;
        EXPECT_EQ(valueOf(SQL_DOUBLE, behaviour, "2.5"), "R8 2.5|\n") << behaviour;
    }
}

TEST_F(OddDriver, ThatTakesItsTimeForALaterRecordIsCancelledAtTheEnd) {
    constexpr uint32_t GIVEN_UP = 0x80004004;
    const auto records = connection_->openRecordset("12 waits x");
    std::thread host([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        endMark_.set();
    });

    EXPECT_EQ(errorOf([&] { recordsOf(*records); }).code(), GIVEN_UP);
    host.join();
}

TEST_F(OddDriver, TextsThatJustFitARoomAreWhole) {
    for (const char* const behaviour : {"too-long", "no-total", "narrow", "whole-characters",
                                        "whole-characters-narrow", "plain"}) {
        for (const size_t length : {0, 62, 63, 64, 126, 127, 128, 319, 320}) {
            const std::string text(length, 't');
            EXPECT_EQ(valueOf(SQL_VARCHAR, behaviour, text), "BSTR " + text + "|\n")
                << behaviour << " " << length;
        }
    }
}

TEST_F(OddDriver, GivesNoTextThatIsLongerThanItMayBe) {
    OdbcSession session;
    ASSERT_TRUE(session.connect("DSN=odd", std::chrono::seconds(15)));
    OdbcDriver driver;
    const auto valueOfLength = [&](const std::string& behaviour, size_t length) {
        OdbcRecordset records(session, driver, "12 " + behaviour + " " + std::string(length, 'x'),
                              endMark_);
        return recordsOf(records);
    };
    for (const char* const behaviour :
         {"plain", "huge", "no-total", "narrow", "whole-characters", "whole-characters-narrow"}) {
        const bool isNarrow = std::string(behaviour).ends_with("narrow");
        driver.longestText = isNarrow ? 3000 : 6000;
        EXPECT_EQ(valueOfLength(behaviour, 3000), "BSTR " + std::string(3000, 'x') + "|\n")
            << behaviour;
        EXPECT_EQ(errorOf([&] { valueOfLength(behaviour, 3001); }).description(),
                  "A value of the column \"v\" is longer than 1 GiB.")
            << behaviour;
    }
}

TEST_F(OddDriver, ThatDoesNotAnswerInTimeIsNotWaitedFor) {
    const auto connect = [this](const std::string& more, std::chrono::milliseconds limit) {
        const OdbcConnection connection(ConnectionString::parse("DSN=odd;" + more), endMark_,
                                        limit);
    };
    const auto soon = std::chrono::milliseconds(50);
    connect("Sleep=1", std::chrono::hours(1));
    EXPECT_EQ(errorOf([&] { connect("Sleep=1000", soon); }).description(),
              "The database server does not answer.");
    EXPECT_EQ(errorOf([&] { connect("Sleep=0", soon); }).description(),
              "An earlier attempt to connect has not ended yet.");
    connect("Sleep=0", std::chrono::hours(1));  // waits for the end of that attempt
}

TEST_F(OddDriver, SaysNull) {
    EXPECT_EQ(valueOf(SQL_DOUBLE, "null", "x"), "NULL|\n");
}

}  // namespace

}  // namespace intake
