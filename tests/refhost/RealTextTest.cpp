// The text of a real: std::to_chars's shortest digits, in plain notation from 1e-7 up to
// 1e21 and in scientific notation beyond, whichever way the digits are found.

#include "refhost/gis/RealText.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

std::string RealText(double value)
{
    char text[refhost::kRealTextCapacity];
    return std::string(text, refhost::AppendRealText(value, text));
}

// The reference: the standard library's shortest text in the notation the range calls for.
std::string ReferenceText(double value)
{
    const double magnitude = std::fabs(value);
    const bool plain = (magnitude >= 1e-7 && magnitude < 1e21) || magnitude == 0;
    char text[64];
    const auto end = std::to_chars(text, text + sizeof text, value,
                                   plain ? std::chars_format::fixed : std::chars_format::scientific).ptr;
    return std::string(text, end);
}

double FromBits(std::uint64_t bits)
{
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

// Values of every shape a writer meets: survey decimals of all magnitudes, integers, values
// where the product with a power of ten nears 2^50 to 2^53, neighbours of integers and of the
// notation limits, subnormals and arbitrary bit patterns.
std::vector<double> ValuesOfManyShapes()
{
    std::mt19937_64 random(20240612);
    std::vector<double> values;
    const auto add = [&values](double value) {
        values.push_back(value);
        values.push_back(-value);
    };
    for (int i = 0; i < 150000; ++i) {
        const int decimals = static_cast<int>(random() % 10);
        const std::uint64_t units = random() >> (random() % 64);
        add(static_cast<double>(units % 10000000000000000ULL) / std::pow(10.0, decimals));
        add(static_cast<double>(units % 1000000000) / std::pow(10.0, random() % 23));
        add(static_cast<double>(units % 1000000000) * std::pow(10.0, random() % 14));
        add(static_cast<double>(random() >> (random() % 64)));
        const int exponent = 49 + static_cast<int>(random() % 5);
        add(std::ldexp(1.0, exponent) + static_cast<double>(random() % 2001) / std::pow(10.0, decimals) - 1000);
        const double limit = std::ldexp(1.0, 50) / std::pow(10.0, decimals);
        add(std::nearbyint(limit * std::pow(10.0, random() % 10) + static_cast<double>(random() % 5) - 2) /
            std::pow(10.0, random() % 10));
        const double integer = static_cast<double>(random() % 100000000);
        add(std::nextafter(integer, 0.0));
        add(std::nextafter(integer, 1e300));
        values.push_back(FromBits(random()));
        values.push_back(FromBits(random() & 0x800FFFFFFFFFFFFFULL)); // subnormal
    }
    for (const double limit : {1e-7, 1e21, 0.1, 1.0, 1e15, 1e16, 1e17, std::ldexp(1.0, 50), std::ldexp(1.0, 53)}) {
        double below = limit;
        double above = limit;
        for (int step = 0; step < 20; ++step) {
            add(below = std::nextafter(below, 0.0));
            add(above = std::nextafter(above, 1e300));
        }
        add(limit);
    }
    for (int power = -30; power <= 30; ++power)
        add(std::pow(10.0, power));
    for (const double special : {0.0, std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::min(),
                                 std::numeric_limits<double>::max(), std::numeric_limits<double>::infinity(),
                                 std::numeric_limits<double>::quiet_NaN()})
        add(special);
    return values;
}

TEST(RealText, ReadableValuesInTheirUsualForm)
{
    const struct {
        double value;
        const char* text;
    } cases[] = {
        // Survey values and round numbers: plain, with their few decimals.
        {456789.123, "456789.123"}, {5123456.789, "5123456.789"}, {890.59, "890.59"}, {-12.5, "-12.5"},
        {300.0, "300"}, {5000000.0, "5000000"}, {3e9, "3000000000"}, {12.123456789, "12.123456789"},
        {0.0005, "0.0005"}, {0.1, "0.1"}, {0.0, "0"}, {-0.0, "-0"},
        // Computed values keep every digit they need, and no more.
        {0.1 + 0.2, "0.30000000000000004"}, {1.0 / 3, "0.3333333333333333"},
        {123456789012345678.0, "123456789012345680"}, {9007199254740993.0, "9007199254740992"},
        // Plain from 1e-7 up to 1e21, scientific beyond.
        {1e-7, "0.0000001"}, {1.5e-7, "0.00000015"}, {1e-8, "1e-08"}, {-2.5e-10, "-2.5e-10"},
        {1e20, "100000000000000000000"}, {1e21, "1e+21"}, {5e-324, "5e-324"},
        {1.7976931348623157e308, "1.7976931348623157e+308"},
        {std::numeric_limits<double>::infinity(), "inf"}, {-std::numeric_limits<double>::infinity(), "-inf"},
        {std::numeric_limits<double>::quiet_NaN(), "nan"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(RealText(c.value), c.text) << c.text;
}

TEST(RealText, MatchesTheStandardLibraryOverValuesOfManyShapes)
{
    for (const double value : ValuesOfManyShapes())
        ASSERT_EQ(RealText(value), ReferenceText(value)) << std::hexfloat << value;
}

} // namespace
