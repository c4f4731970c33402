#include "host/GisUtility.h"
#include "refhost/testing/TestText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>

using VeltoGis::Utility::CUtility;
using refhost::testing::W;

namespace {

std::uint64_t Bits(double value)
{
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

double RandomFiniteDouble(std::mt19937_64& random)
{
    for (;;) {
        const std::uint64_t bits = random();
        double value;
        std::memcpy(&value, &bits, sizeof value);
        if (std::isfinite(value))
            return value;
    }
}

// The C library's reading of the text (the tests run in the "C" locale).
double Strtod(const std::string& text) { return std::strtod(text.c_str(), nullptr); }

struct AtoFCase {
    const char* text;
    double expected;
};

} // namespace

TEST(AtoF, ReadsTheLongestNumberAfterLeadingBlanks)
{
    const AtoFCase cases[] = {
        {"456789.123", 456789.123},
        {"  \t5123456.789", 5123456.789},
        {"\r\n\v\f-1.5", -1.5},
        {"+2.25", 2.25},
        {"301,250", 301.25},          // decimal comma
        {"-0,5", -0.5},
        {",5", 0.5},
        {".5", 0.5},
        {"7.", 7.0},
        {"7,", 7.0},
        {"1.5e3", 1500.0},
        {"1,5E-2", 0.015},
        {"2e+2", 200.0},
        {"2e", 2.0},                  // an exponent without digits is not part of the number
        {"2e+", 2.0},
        {"3.25m", 3.25},              // text after the number is ignored
        {"1,234.5", 1.234},           // one separator only: the second one ends the number
        {"12 34", 12.0},
        {"0x1p3", 0.0},               // no hexadecimal numbers
        {"", 0.0},
        {"   ", 0.0},
        {"abc", 0.0},
        {"-", 0.0},
        {".", 0.0},
        {",e5", 0.0},
        {"+-5", 0.0},
        {"nan", 0.0},                 // only decimal numbers
        {"inf", 0.0},
        {"1e400", std::numeric_limits<double>::infinity()},
        {"-1e400", -std::numeric_limits<double>::infinity()},
        {"1e-400", 0.0},
        {"4.9406564584124654e-324", 4.9406564584124654e-324},
        {"\xC2\xA0" "5", 0.0},        // a no-break space is not a blank
        {"5\xC2\xB0", 5.0},           // nor a non-ASCII unit after the number
        // Around the limits of exact short decimals: 2^53, 19 digits, 10^22.
        {"9007199254740992", 9007199254740992.0},
        {"9007199254740993", 9007199254740992.0},
        {"9007199254740993.5", 9007199254740994.0},
        {"0000000000000000000001.25", 1.25},
        {"1.0000000000000000000000001", 1.0},
        {"0.0000000000000000000001", 1e-22},
        {"0.00000000000000000000001", 1e-23},
    };
    for (const AtoFCase& c : cases)
        EXPECT_EQ(Bits(CUtility::AtoF(W(c.text).c_str())), Bits(c.expected)) << '"' << c.text << '"';
}

TEST(AtoF, KeepsTheSignOfZero)
{
    EXPECT_TRUE(std::signbit(CUtility::AtoF(W("-0").c_str())));
    EXPECT_TRUE(std::signbit(CUtility::AtoF(W("-0,0").c_str())));
    EXPECT_FALSE(std::signbit(CUtility::AtoF(W("0").c_str())));
}

TEST(AtoF, NullTextReadsAsZero) { EXPECT_EQ(CUtility::AtoF(nullptr), 0.0); }

TEST(AtoF, NumbersLongerThanAnyFieldAreStillExact)
{
    // 0.1 with 400 more digits of 3: beyond the stack buffer, and a hard case for rounding.
    std::string text = "0.1" + std::string(400, '3') + "e1";
    EXPECT_EQ(Bits(CUtility::AtoF(W(text).c_str())), Bits(Strtod(text)));
    text = "-" + std::string(300, '9') + "," + std::string(300, '9');
    std::string dotted = text;
    dotted[301] = '.';
    EXPECT_EQ(Bits(CUtility::AtoF(W(text).c_str())), Bits(Strtod(dotted)));
}

// Every double written with 17 significant digits, in the shortest form and with a random
// number of digits reads back exactly as the C library reads it, with either separator.
TEST(AtoF, MatchesStrtodToTheLastBitOverRandomDoubles)
{
    std::mt19937_64 random(20240611);
    std::uniform_int_distribution<int> digits(1, 25);
    char buffer[64];
    for (int i = 0; i < 100000; ++i) {
        const double value = RandomFiniteDouble(random);
        const int formats[] = {17, 0, digits(random)};
        for (int precision : formats) {
            if (precision == 0)
                std::snprintf(buffer, sizeof buffer, "%g", value);
            else
                std::snprintf(buffer, sizeof buffer, "%.*e", precision, value);
            const std::string text = buffer;
            const double expected = Strtod(text);
            ASSERT_EQ(Bits(CUtility::AtoF(W(text).c_str())), Bits(expected)) << text;
            std::string comma = text;
            const std::size_t dot = comma.find('.');
            if (dot != std::string::npos)
                comma[dot] = ',';
            ASSERT_EQ(Bits(CUtility::AtoF(W(comma).c_str())), Bits(expected)) << comma;
        }
    }
}

// Survey-sized coordinates: many digits before and after the separator.
TEST(AtoF, MatchesStrtodOnRandomSurveyCoordinates)
{
    std::mt19937_64 random(7);
    std::uniform_int_distribution<int> length(1, 12);
    std::uniform_int_distribution<int> digit(0, 9);
    for (int i = 0; i < 100000; ++i) {
        std::string text = i % 2 ? "-" : "";
        for (int k = length(random); k > 0; --k)
            text += static_cast<char>('0' + digit(random));
        text += '.';
        for (int k = length(random); k > 0; --k)
            text += static_cast<char>('0' + digit(random));
        ASSERT_EQ(Bits(CUtility::AtoF(W(text).c_str())), Bits(Strtod(text))) << text;
    }
}
