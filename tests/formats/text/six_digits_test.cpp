#include "formats/text/six_digits.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <sstream>
#include <string>

namespace intake {
namespace {

std::string written(std::string_view source) {
    std::string script;
    appendSixDigits(script, source);
    return script;
}

/// What a stream writes by default for the nearest double.
std::string streamed(const std::string& source) {
    std::ostringstream stream;
    stream << std::strtod(source.c_str(), nullptr);
    return stream.str();
}

std::string numberText(double number) {
    std::string text;
    appendSixDigits(text, number);
    return text;
}

std::string streamText(double number) {
    std::ostringstream out;
    out << number;
    return out.str();
}

double randomDouble(std::mt19937_64& random) {
    const uint64_t bits = random();
    double number = 0;
    std::memcpy(&number, &bits, sizeof number);
    return number;
}

TEST(SixDigits, NumbersHaveSixSignificantDigits) {
    EXPECT_EQ(numberText(1234567), "1.23457e+06");
    EXPECT_EQ(numberText(123456), "123456");
    EXPECT_EQ(numberText(0.1), "0.1");
    EXPECT_EQ(numberText(2), "2");
    EXPECT_EQ(numberText(7.50), "7.5");
    EXPECT_EQ(numberText(-0.00001234567), "-1.23457e-05");
    EXPECT_EQ(numberText(-0.0), "-0");
    EXPECT_EQ(numberText(std::numeric_limits<double>::infinity()), "inf");
}

TEST(SixDigits, ANumberThatIsRoundedUpToAMillionHasAnExponent) {
    EXPECT_EQ(numberText(999999.4), "999999");
    EXPECT_EQ(numberText(999999.7), "1e+06");
    EXPECT_EQ(numberText(-999999.7), "-1e+06");
}

TEST(SixDigits, EveryNumberIsWrittenAsAStreamWritesIt) {
    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i) {
        const double number = randomDouble(random);
        if (!std::isnan(number)) {
            ASSERT_EQ(numberText(number), streamText(number));
        }
    }
}

TEST(SixDigits, EveryNumberOfFewDigitsIsWrittenAsAStreamWritesIt) {
    std::mt19937_64 random(2);
    std::uniform_int_distribution<int> digits(-9'999'999, 9'999'999);
    std::uniform_int_distribution<int> exponents(-5, 6);
    for (int i = 0; i < 200'000; ++i) {
        const double number = digits(random) * std::pow(10.0, -exponents(random));
        ASSERT_EQ(numberText(number), streamText(number));
        const double next = std::nextafter(number, 1e9);
        ASSERT_EQ(numberText(next), streamText(next));
    }
}

TEST(SixDigitsOfText, IsAppendedToWhatStandsThere) {
    std::string script = "a=";
    appendSixDigits(script, "12");
    appendSixDigits(script, "-7.50");
    EXPECT_EQ(script, "a=12-7.5");
}

TEST(SixDigitsOfText, HasSixSignificantDigits) {
    EXPECT_EQ(written("123456"), "123456");
    EXPECT_EQ(written("1234567"), "1.23457e+06");
    EXPECT_EQ(written("-1234567"), "-1.23457e+06");
    EXPECT_EQ(written("999999"), "999999");
    EXPECT_EQ(written("999999.5"), "1e+06");
    EXPECT_EQ(written("1000000"), "1e+06");
    EXPECT_EQ(written("48.0512345"), "48.0512");
    EXPECT_EQ(written("0.1"), "0.1");
    EXPECT_EQ(written("3.14159265358979"), "3.14159");
}

TEST(SixDigitsOfText, LosesZerosAtItsEnd) {
    EXPECT_EQ(written("7.50"), "7.5");
    EXPECT_EQ(written("7.00"), "7");
    EXPECT_EQ(written("100"), "100");
}

TEST(SixDigitsOfText, WithAnExponentIsWrittenOutWhereSixDigitsAreEnough) {
    EXPECT_EQ(written("1e2"), "100");
    EXPECT_EQ(written("1E+2"), "100");
    EXPECT_EQ(written("12.5e-1"), "1.25");
    EXPECT_EQ(written("1e5"), "100000");
    EXPECT_EQ(written("1e6"), "1e+06");
    EXPECT_EQ(written("1e-4"), "0.0001");
    EXPECT_EQ(written("1e-5"), "1e-05");
}

TEST(SixDigitsOfText, BelowATenThousandthHasAnExponent) {
    EXPECT_EQ(written("0.0001"), "0.0001");
    EXPECT_EQ(written("0.00001"), "1e-05");
    EXPECT_EQ(written("-0.00009"), "-9e-05");
    EXPECT_EQ(written("0.00000"), "0");
}

TEST(SixDigitsOfText, ZeroKeepsItsSign) {
    EXPECT_EQ(written("0"), "0");
    EXPECT_EQ(written("-0"), "-0");
    EXPECT_EQ(written("-0.000"), "-0");
    EXPECT_EQ(written("-0e5"), "-0");
}

TEST(SixDigitsOfText, BeyondTheRangeOfADoubleIsInfinite) {
    EXPECT_EQ(written("1e400"), "inf");
    EXPECT_EQ(written("-1e400"), "-inf");
    EXPECT_EQ(written("1.8e308"), "inf");
    EXPECT_EQ(written("1e99999999999999999999"), "inf");
    EXPECT_EQ(written("0.00001e999999"), "inf");
    const std::string nines(400, '9');
    EXPECT_EQ(written(nines), "inf");
    EXPECT_EQ(written("-9" + nines), "-inf");
}

TEST(SixDigitsOfText, TooSmallForADoubleIsZero) {
    EXPECT_EQ(written("1e-400"), "0");
    EXPECT_EQ(written("-1e-400"), "-0");
    EXPECT_EQ(written("1e-99999999999999999999"), "0");
    EXPECT_EQ(written("12345678901234567890e-999"), "0");
    EXPECT_EQ(written("0." + std::string(400, '0') + "1"), "0");
}

TEST(SixDigitsOfText, ZeroStaysZeroWhateverItsExponent) {
    EXPECT_EQ(written("0e400"), "0");
    EXPECT_EQ(written("-0e400"), "-0");
    EXPECT_EQ(written("0.000e99999999999999999999"), "0");
    EXPECT_EQ(written("0e-99999999999999999999"), "0");
}

TEST(SixDigitsOfText, IsWhatAStreamWritesAtTheLimitsOfTheFormat) {
    const std::string nines(400, '9');
    const std::string zeros(400, '0');
    for (const std::string& source : {std::string("1.7976931348623157e308"),
                                      std::string("1.7976931348623158e308"),
                                      std::string("1.7976931348623159e308"),
                                      std::string("2.2250738585072014e-308"),
                                      std::string("2.2250738585072011e-308"),
                                      std::string("4.9406564584124654e-324"),
                                      std::string("2.4703282292062328e-324"),
                                      std::string("2.4703282292062327e-324"),
                                      std::string("9007199254740993"),
                                      std::string("0.000099999950"),
                                      std::string("999999.4999"),
                                      std::string("99999.95"),
                                      std::string("1.000005"),
                                      std::string("123456.5"),
                                      "0." + zeros + "1e401",
                                      "1" + zeros + "e-400",
                                      nines + "e-400",
                                      "0." + nines,
                                      nines + "." + nines + "e-100",
                                      "-0." + zeros + nines + "e300"}) {
        EXPECT_EQ(written(source), streamed(source)) << source;
    }
}

TEST(SixDigitsOfText, IsWhatAStreamWritesForEveryMagnitude) {
    for (int exponent = -420; exponent <= 420; ++exponent) {
        for (const char* digits : {"1", "-9.999995", "1.234565", "0.00123456789", "8700000.5"}) {
            const std::string source =
                std::string(digits).append("e").append(std::to_string(exponent));
            EXPECT_EQ(written(source), streamed(source)) << source;
        }
    }
}

TEST(SixDigitsOfText, IsWhatAStreamWritesForAllShortIntegers) {
    for (int number = -20000; number <= 20000; ++number) {
        const std::string source = std::to_string(number * 67);
        EXPECT_EQ(written(source), streamed(source));
    }
}

/// Every fraction of so many digits, or every `stride`th, with its point in every place.
void expectStreamedFractions(size_t digits, size_t stride) {
    const size_t end = static_cast<size_t>(std::pow(10, digits));
    for (size_t number = 0; number < end; number += stride) {
        std::string source = std::to_string(number);
        source.insert(0, digits - source.size(), '0');
        for (size_t point = source.starts_with('0') ? 1 : digits - 1; point > 0; --point) {
            std::string fraction = source;
            fraction.insert(point, 1, '.');
            ASSERT_EQ(written(fraction), streamed(fraction)) << fraction;
            fraction.insert(0, 1, '-');
            ASSERT_EQ(written(fraction), streamed(fraction)) << fraction;
        }
    }
}

TEST(SixDigitsOfText, IsWhatAStreamWritesForShortFractions) {
    constexpr size_t STRIDES[] = {1, 1, 1, 11, 101, 997, 9973};
    for (size_t digits = 2; digits <= 8; ++digits) {
        ASSERT_NO_FATAL_FAILURE(expectStreamedFractions(digits, STRIDES[digits - 2]));
    }
}

/// A number of random length with or without sign, fraction and exponent.
class RandomNumbers {
public:
    std::string next() {
        std::string text = chance(2) ? "-" : "";
        if (chance(3)) {
            text += '0';
        } else {
            text += digit('1');
            appendDigits(text, upTo(25));
        }
        if (chance(2)) {
            text += '.';
            appendDigits(text, 1 + upTo(25));
        }
        if (chance(2)) {
            text += chance(2) ? 'e' : 'E';
            text += SIGNS[upTo(3)];
            appendDigits(text, 1 + upTo(3));
        }
        return text;
    }

private:
    static constexpr const char* SIGNS[] = {"", "+", "-"};

    unsigned upTo(unsigned bound) { return static_cast<unsigned>(random_() % bound); }
    bool chance(unsigned oneIn) { return upTo(oneIn) == 0; }
    char digit(char lowest) {
        return static_cast<char>(lowest + static_cast<char>(upTo(lowest == '1' ? 9 : 10)));
    }
    void appendDigits(std::string& text, unsigned count) {
        for (unsigned i = 0; i < count; ++i) {
            text += digit('0');
        }
    }

    std::mt19937_64 random_{20240229};
};

TEST(SixDigitsOfText, IsWhatAStreamWritesForRandomNumbers) {
    RandomNumbers numbers;
    for (int i = 0; i < 100000; ++i) {
        const std::string source = numbers.next();
        ASSERT_EQ(written(source), streamed(source)) << source;
    }
}

TEST(PlainDecimals, HaveDigitsASignAndAPointOnly) {
    for (const char* const text : {"0", "-0", "7", "-7.50", "0.001", "1234567890.5", "10"}) {
        EXPECT_TRUE(isPlainDecimal(text)) << text;
    }
    for (const char* const text : {"", "-", ".", ".5", "5.", "-.5", "+1", "007.5", "00", "1e5",
                                   "1.5e-7", "NaN", "-Infinity", "$1", "1,5", " 1", "1 ", "--1"}) {
        EXPECT_FALSE(isPlainDecimal(text)) << text;
    }
}

}  // namespace
}  // namespace intake
