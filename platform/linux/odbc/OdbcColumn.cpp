#include "platform/linux/odbc/OdbcColumn.h"

#include <algorithm>
#include <cstring>

#include "formats/text/number_text.h"
#include "formats/text/six_digits.h"
#include "formats/text/utf16.h"
#include "platform/linux/base/com_failures.h"
#include "platform/linux/odbc/loose_value.h"
#include "platform/linux/odbc/odbc_errors.h"

namespace intake {

namespace {

constexpr size_t FIRST_ROOM = 128;
constexpr size_t MOST_BOUND = 8192;  // what is longer is rare enough to be asked for again
constexpr size_t LONGEST_REST = 3;   // bytes of a character but its last
constexpr size_t NUMBER_SIZE =
    8;  // of every C type but texts; values in an array stand so far apart

SQLSMALLINT cTypeOf(OdbcFetch fetch, const OdbcDriver& driver) {
    const SQLSMALLINT text = driver.givesUtf8 ? SQL_C_CHAR : SQL_C_WCHAR;
    if (driver.asTexts) {
        return text;
    }
    switch (fetch) {
        case OdbcFetch::BOOLEAN:  // as a bit, MariaDB's driver does not say that it is not null
        case OdbcFetch::SIGNED:
            return SQL_C_SBIGINT;
        case OdbcFetch::UNSIGNED:
            return SQL_C_UBIGINT;
        case OdbcFetch::NUMBER:
            return driver.holdsNumbersAsTexts ? text : SQL_C_DOUBLE;
        default:
            return text;
    }
}

template <class Value>
Value valueIn(const char* bytes) {
    Value value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

}  // namespace

OdbcColumn::OdbcColumn(const OdbcStatement& statement, SQLUSMALLINT number)
    : statement_(statement), number_(number), asked_{} {
    describe();
}

void OdbcColumn::describe() {
    check(describeColumn(statement_.handle().get(), number_, statement_.driver().narrow,
                         description_));
    SQLLEN isUnsigned = SQL_FALSE;
    SQLColAttribute(statement_.handle().get(), number_, SQL_DESC_UNSIGNED, nullptr, 0, nullptr,
                    &isUnsigned);
    type_ = typeOfSql(description_.type, isUnsigned == SQL_TRUE);
    cType_ = cTypeOf(type_.fetch, statement_.driver());
    bound_.room = isText() ? FIRST_ROOM : NUMBER_SIZE;
}

void OdbcColumn::check(SQLRETURN result) const {
    if (!SQL_SUCCEEDED(result)) {
        throwOdbcFailure(statement_.handle(), statement_.driver().narrow);
    }
}

void OdbcColumn::bind(SQLULEN records) {
    if (type_.fetch == OdbcFetch::NOTHING) {
        return;
    }
    bound_.bytes.resize(bound_.room * records);
    bound_.lengths.resize(records);
    check(SQLBindCol(statement_.handle().get(), number_, cType_, bound_.bytes.data(),
                     static_cast<SQLLEN>(bound_.room), bound_.lengths.data()));
}

/// What did not fit once may not fit again, and what was no plain number may be none again.
void OdbcColumn::bindAnew() {
    if (hasOddNumbers_) {
        cType_ = SQL_C_DOUBLE;
        bound_.room = NUMBER_SIZE;
    } else {
        bound_.room = std::min(std::max(2 * bound_.room, neededRoom_), MOST_BOUND);
    }
    hasOddNumbers_ = false;
    neededRoom_ = bound_.room;
    bind(bound_.lengths.size());
}

void OdbcColumn::read() {
    if (type_.fetch != OdbcFetch::NOTHING) {
        readText(FIRST_ROOM);
    }
}

bool OdbcColumn::isCut(SQLLEN length, size_t room) const {
    return length == SQL_NO_TOTAL || length > static_cast<SQLLEN>(room) - unit();
}

/// The parts are joined before anything is made of them: they end anywhere, also within a
/// character.
void OdbcColumn::readText(size_t room) {
    size_t filled = 0;
    while (room > 0) {
        const size_t before = filled;
        const size_t left = roomBehind(filled);
        room = readPart(filled, std::min(room, left));
        const bool isStuck = room > left && filled == before;
        if (filled > statement_.driver().longestText || isStuck) {
            UNSPECIFIED.raise(ODBC_SOURCE,
                              "A value of the column \"" + name() + "\" is longer than 1 GiB.");
        }
    }
    if (asked_.length != SQL_NULL_DATA) {
        asked_.length = static_cast<SQLLEN>(filled);
    }
}

/// Room for what may follow, and for one character more, by which a longer text shows.
size_t OdbcColumn::roomBehind(size_t filled) const {
    return statement_.driver().longestText - filled + LONGEST_REST + 1 +
           static_cast<size_t>(unit());
}

/// Puts the next part behind the bytes that are filled; how much room the one after it needs, 0
/// behind the last. A part ends at its zero, whatever length the driver says.
size_t OdbcColumn::readPart(size_t& filled, size_t room) {
    const SQLRETURN result = getData(filled, room);
    if (result == SQL_NO_DATA) {
        return 0;
    }
    check(result);
    if (asked_.length == SQL_NULL_DATA) {
        return 0;
    }
    const size_t given = lengthToZero(asked_.bytes.data() + filled, room);
    filled += given;
    // Some drivers do not split a character, whose first bytes there was room for.
    const bool isFull = given + static_cast<size_t>(unit()) + LONGEST_REST >= room;
    const bool isCut = result == SQL_SUCCESS_WITH_INFO || this->isCut(asked_.length, room);
    if (!isFull || !isCut) {
        return 0;
    }
    const auto rest = static_cast<size_t>(std::max<SQLLEN>(asked_.length + unit(), 0));
    return std::clamp(rest, 2 * room, 4 * room);
}

/// Asks for the value, or its next part. A driver may turn texts that are wide down.
SQLRETURN OdbcColumn::getData(size_t filled, size_t room) {
    asked_.bytes.resize(std::max(asked_.bytes.size(), filled + room));
    char* const place = asked_.bytes.data() + filled;
    std::memset(place, 0, room);
    const auto ask = [&] {
        return statement_.getData(number_, cType_, place, room, asked_.length);
    };
    const SQLRETURN result = ask();
    if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA && cType_ == SQL_C_WCHAR && filled == 0) {
        cType_ = SQL_C_CHAR;
        return ask();
    }
    return result;
}

size_t OdbcColumn::lengthToZero(const char* text, size_t room) const {
    if (cType_ == SQL_C_CHAR) {
        return strnlen(text, room);
    }
    const auto* const units = reinterpret_cast<const char16_t*>(text);
    const std::u16string_view all(units, room / sizeof(char16_t));
    return std::min(all.find(u'\0'), all.size()) * sizeof(char16_t);
}

OdbcColumn::Cell OdbcColumn::cell(SQLULEN place) const {
    if (!isBound()) {
        return {asked_.bytes.data(), asked_.length};
    }
    return {bound_.bytes.data() + place * bound_.room, bound_.lengths[place]};
}

/// A text that is longer than what is bound, asked for again.
OdbcColumn::Cell OdbcColumn::wholeText(const Cell& fetched, uint64_t record, SQLULEN place) {
    if (askedRecord_ != record) {
        goTo(place);
        const auto expected = static_cast<size_t>(std::max<SQLLEN>(fetched.length + unit(), 0));
        readText(std::max(expected, MOST_BOUND));
        askedRecord_ = record;
        const auto needed = static_cast<size_t>(asked_.length + unit());
        if (needed <= MOST_BOUND) {
            neededRoom_ = std::max(neededRoom_, needed);
        }
    }
    return {asked_.bytes.data(), asked_.length};
}

/// Goes to a record, so that its value can be asked for.
void OdbcColumn::goTo(SQLULEN place) const {
    if (bound_.lengths.size() > 1) {
        statement_.goTo(place);
    }
}

std::string_view OdbcColumn::utf8Of(const Cell& fetched) {
    const size_t bytes = static_cast<size_t>(fetched.length);
    if (cType_ == SQL_C_CHAR) {
        return {fetched.bytes, bytes};
    }
    const size_t units = bytes / sizeof(char16_t);
    if (utf8_.size() < units * UTF8_BYTES_PER_UNIT) {
        utf8_.resize(std::max(units * UTF8_BYTES_PER_UNIT, 2 * utf8_.size()));
    }
    const auto* const text = reinterpret_cast<const char16_t*>(fetched.bytes);
    return {utf8_.data(), toUtf8({text, units}, utf8_.data())};
}

void OdbcColumn::value(uint64_t record, SQLULEN place, FieldValue& value) {
    value.type = type_.variant;
    if (type_.fetch == OdbcFetch::NOTHING) {
        return;
    }
    const Cell fetched = cell(place);
    if (fetched.length == SQL_NULL_DATA) {
        value.type = VT_NULL;
    } else if (!isText()) {
        numberIn(fetched, value);
    } else if (isTextOfNumber()) {
        readNumber(fetched, place, value);
    } else {
        const bool isWhole = !isBound() || !isCut(fetched.length, bound_.room);
        const std::string_view text = utf8Of(isWhole ? fetched : wholeText(fetched, record, place));
        value.text = text.substr(0, text.find('\0'));  // at which a script would end
        if (type_.fetch != OdbcFetch::TEXT) {
            readLooseValue(type_, value);
        }
    }
}

/// The driver is asked for a number that is no plain one: money has signs of its own, and some are
/// beyond a double's range.
void OdbcColumn::readNumber(const Cell& fetched, SQLULEN place, FieldValue& value) {
    if (!isCut(fetched.length, bound_.room)) {
        const std::string_view text(fetched.bytes, static_cast<size_t>(fetched.length));
        if (isPlainDecimal(text)) {
            value.text = text;
            return;
        }
        if (const auto number = parseWhole<double>(text)) {
            value.number = *number;
            return;
        }
    }
    hasOddNumbers_ = true;
    value.number = askForDouble(place);
}

double OdbcColumn::askForDouble(SQLULEN place) const {
    double number = 0;
    SQLLEN length = 0;
    goTo(place);
    check(statement_.getData(number_, SQL_C_DOUBLE, reinterpret_cast<char*>(&number), sizeof number,
                             length));
    return number;
}

void OdbcColumn::numberIn(const Cell& fetched, FieldValue& value) const {
    if (cType_ == SQL_C_DOUBLE) {
        value.number = valueIn<double>(fetched.bytes);
    } else {
        value.integer = valueIn<int64_t>(fetched.bytes);
    }
    if (type_.fetch == OdbcFetch::BOOLEAN) {
        value.integer = value.integer != 0;
    }
}

}  // namespace intake
