#include "settings/Conversions.h"

#include <gtest/gtest.h>
#include <limits>

#include "diagnostics/ErrorHandling.h"

namespace {

// The result of a conversion as text, or "error" and its number.
template <class Convert>
std::string Outcome(Convert convert, std::string_view text) {
    try {
        return std::to_string(static_cast<int>(convert(text)));
    } catch (const RuntimeError& error) {
        return "error " + std::to_string(error.Number());
    }
}

}  // namespace

TEST(Conversions, TextsBecomeNumbersOrTheRightError) {
    const std::string mismatch = "error 13";
    const std::string overflow = "error 6";
    const struct {
        std::string_view text;
        std::string byte, integer, boolean;
    } cases[] = {
        {" \t 7 ", "7", "7", "1"},
        {"+7", "7", "7", "1"},
        {"255", "255", "255", "1"},
        {"-1", overflow, "-1", "1"},
        {"32767", overflow, "32767", "1"},
        {"0", "0", "0", "0"},
        {"-0.0", "0", "0", "0"},
        {"0.5", "0", "0", "1"},
        {"2.5", "2", "2", "1"},
        {"-0.5", "0", "0", "1"},
        {"255.5", overflow, "256", "1"},
        {"7.", "7", "7", "1"},
        {".7e1", "7", "7", "1"},
        {"1e400", overflow, overflow, "1"},
        {"-1e400", overflow, overflow, "1"},
        {"1e-400", "0", "0", "0"},
        {"True", mismatch, mismatch, "1"},
        {" fALSE ", mismatch, mismatch, "0"},
        {"Truer", mismatch, mismatch, mismatch},
        {"", mismatch, mismatch, mismatch},
        {"-", mismatch, mismatch, mismatch},
        {"+-7", mismatch, mismatch, mismatch},
        {"7x", mismatch, mismatch, mismatch},
        {"0x10", mismatch, mismatch, mismatch},
        {"inf", mismatch, mismatch, mismatch},
        {std::string_view("7\0", 2), mismatch, mismatch, mismatch},
    };
    for (const auto& [text, byte, integer, boolean] : cases) {
        EXPECT_EQ(Outcome(Conversions::ToByte, text), byte) << text;
        EXPECT_EQ(Outcome(Conversions::ToInteger, text), integer) << text;
        EXPECT_EQ(Outcome(Conversions::ToBoolean, text), boolean) << text;
    }
}

TEST(Conversions, PrefixOfAnyTextIsAFiniteNumber) {
    const struct {
        std::string_view text;
        double number;
    } cases[] = {
        {"", 0},       {"abc", 0},     {"-", 0},        {"-x5", 0},     {" 12abc", 12}, {"-3.5|4", -3.5},
        {"4 5", 4},    {"0x1F", 0},    {"2e", 2},       {"1.5.5", 1.5}, {"inf", 0},     {"nan", 0},
        {"1e-400", 0}, {"36\0 7", 36}, {".25,5", 0.25}, {"- 5", 0},
    };
    for (const auto& [text, number] : cases) EXPECT_EQ(Conversions::NumericPrefix(text), number) << text;
    EXPECT_EQ(Conversions::NumericPrefix("0." + std::string(500, '0') + "1"), 0);
    EXPECT_EQ(Conversions::NumericPrefix("-" + std::string(500, '9')), -std::numeric_limits<double>::max());
}

TEST(Conversions, RoundingStopsAtTheTypesLimits) {
    EXPECT_EQ(Conversions::RoundToInteger(-32768.5), -32768);
    EXPECT_THROW(Conversions::RoundToInteger(32767.5), RuntimeError);
    EXPECT_EQ(Conversions::RoundToLong(2147483647.4), 2147483647);
    EXPECT_THROW(Conversions::RoundToLong(2147483647.5), RuntimeError);
}
