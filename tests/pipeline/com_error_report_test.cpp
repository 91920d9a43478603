#include "pipeline/error_reports.h"

#include <gtest/gtest.h>

namespace intake {
namespace {

TEST(ComErrorReport, NamesCodeMeaningSourceAndDescription) {
    EXPECT_EQ(comErrorReport(PlatformError(0x80004005, "Unspecified error", "ODBC driver",
                                           "no such table: scores")),
              "Error\n"
              "\tCode = 0x80004005\n"
              "\tCode meaning = Unspecified error\n"
              "\tSource = ODBC driver\n"
              "\tDescription = no such table: scores\n");
}

TEST(ComErrorReport, WritesTheCodeInLowerCaseWithoutLeadingZeros) {
    EXPECT_EQ(comErrorReport(PlatformError(0x0000ABCD, "", "", "")),
              "Error\n\tCode = 0xabcd\n\tCode meaning = \n\tSource = \n\tDescription = \n");
}

}  // namespace
}  // namespace intake
