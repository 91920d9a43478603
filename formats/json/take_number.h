#pragma once

#include <rapidjson/reader.h>

namespace intake {

/// Takes a number as the characters that it consists of, and says what is wrong with it. The
/// parser's own routine converts it too and refuses what is beyond the range of a double.
template <class Stream>
rapidjson::ParseErrorCode takeNumber(Stream& in) {
    const auto takeSign = [&in](char sign) {
        const bool isThere = in.Peek() == sign;
        if (isThere) {
            in.Take();
        }
        return isThere;
    };
    const auto takeDigits = [&in] {
        const char* const first = in.src_;
        while (in.Peek() >= '0' && in.Peek() <= '9') {
            in.Take();
        }
        return in.src_ != first;
    };
    takeSign('-');
    if (!takeSign('0') && !takeDigits()) {
        return rapidjson::kParseErrorValueInvalid;
    }
    if (takeSign('.') && !takeDigits()) {
        return rapidjson::kParseErrorNumberMissFraction;
    }
    if (takeSign('e') || takeSign('E')) {
        if (!takeSign('+')) {
            takeSign('-');
        }
        if (!takeDigits()) {
            return rapidjson::kParseErrorNumberMissExponent;
        }
    }
    return rapidjson::kParseErrorNone;
}

}  // namespace intake
