#pragma once

#include <cstddef>

#include "platform/linux/odbc/OdbcHandle.h"

namespace intake {

/// What is known of the driver behind a connection.
struct OdbcDriver {
    /// It has no wide functions; its narrow ones take and give UTF-8.
    bool narrow = false;

    /// The narrow texts of values are in UTF-8, whatever the locale is.
    bool givesUtf8 = false;

    /// Every value is fetched as text, which all drivers can give: because a column may hold
    /// anything whatever its type says, or because what the driver makes of numbers is not known.
    bool asTexts = true;

    /// It holds every number with a fraction as a text.
    bool holdsNumbersAsTexts = false;

    /// A query is prepared before it runs: where the connection breaks while the driver hears of
    /// the columns of one that is not, it crashes.
    bool preparesQueries = false;

    /// So many records at a time it fetches into bound columns rightly, and gives a text that was
    /// longer than its buffer again in full. 0: it is asked for every value.
    SQLULEN boundRecords = 0;

    /// So many bytes a text may have, as the driver gives it.
    size_t longestText = size_t{1} << 30;
};

/// Nothing is expected of a driver that we do not know.
OdbcDriver describeDriver(SQLHDBC connection);

}  // namespace intake
