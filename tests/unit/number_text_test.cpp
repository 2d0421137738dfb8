#include "platform/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(NumberText, Reals) {
    struct Row {
        const char* label;
        WText text;
        double value;
        std::size_t consumed;
    };
    const Row rows[] = {
        {"fraction", TEXT("1.5mm"), 1.5, 3},
        {"white space and sign", TEXT(" \t-2.25"), -2.25, 7},
        {"no digit in front", TEXT(".5"), 0.5, 2},
        {"negative exponent", TEXT("25E-1x"), 2.5, 5},
        {"exponent without digits", TEXT("7e+"), 7, 1},
        {"comma of another locale", TEXT("1,5"), 1, 1},
        {"hexadecimal", TEXT("0x1.8p1"), 3, 7},
        {"hexadecimal without digits", TEXT("0xg"), 0, 1},
        {"infinity", TEXT("-Infinity"), -kInfinity, 9},
        {"short infinity", TEXT("infi"), kInfinity, 3},
        {"too large", TEXT("1e999"), kInfinity, 5},
        {"too small", TEXT("-1e-999"), 0, 7},
        {"most", TEXT("1.7976931348623157e308"), std::numeric_limits<double>::max(), 22},
        {"sign only", TEXT("-"), 0, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        double value = -7;
        std::size_t consumed = 99;
        EXPECT_EQ(row.consumed != 0, ParseReal(row.text, value, consumed));
        EXPECT_EQ(row.value, value);
        EXPECT_EQ(row.consumed, consumed);
    }
    double value = 0;
    std::size_t consumed = 0;
    EXPECT_TRUE(ParseReal(TEXT("nan"), value, consumed));
    EXPECT_TRUE(std::isnan(value));
}

TEST(NumberText, IntegersStopAtTheEnds) {
    struct Row {
        const char* label;
        WText text;
        LONG value;
        std::size_t consumed;
    };
    const Row rows[] = {
        {"white space, sign, rest", TEXT("\n -17.9"), -17, 5},
        {"most", TEXT("2147483647"), 2147483647, 10},
        {"one above", TEXT("2147483648"), 2147483647, 10},
        {"least", TEXT("-2147483648"), -2147483647 - 1, 11},
        {"one below", TEXT("-2147483649"), -2147483647 - 1, 11},
        {"very long", WText(60, '9'), 2147483647, 60},
        {"empty", TEXT(""), 0, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        LONG value = -7;
        std::size_t consumed = 99;
        EXPECT_EQ(row.consumed != 0, ParseInteger(row.text, value, consumed));
        EXPECT_EQ(row.value, value);
        EXPECT_EQ(row.consumed, consumed);
    }
}

}  // namespace
