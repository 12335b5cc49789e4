// SPDX-License-Identifier: MIT
#include "settings/Conversions.h"

#include <sstream>

#include "diagnostics/ErrorHandling.h"
#include "support/ScriptedHost.h"

namespace {

// "byte integer long boolean prefix"; an error is "!".
std::string Outcomes(std::string_view text) {
    std::ostringstream outcomes;
    const auto add = [&](auto convert) {
        try {
            outcomes << +convert(text) << ' ';
        } catch (const RuntimeError& error) {
            outcomes << (error.Number() == 13 ? "- " : error.Number() == 6 ? "! " : "? ");
        }
    };
    add(Conversions::ToByte);
    add(Conversions::ToInteger);
    add(Conversions::ToLong);
    add(Conversions::ToBoolean);
    add(Conversions::NumericPrefix);
    return outcomes.str();
}

// "-": not a number; "!": out of range.
TEST(Conversions, TextsBecomeNumbersOrTheRightError) {
    const std::pair<const char*, const char*> cases[] = {
        {" \t 7 ", "7 7 7 1 7 "}, {"+7", "7 7 7 1 7 "},    {"255.5", "! 256 256 1 255.5 "},
        {"-1", "! -1 -1 1 -1 "},  {"-0.0", "0 0 0 0 -0 "}, {"32768", "! ! 32768 1 32768 "},
        {"0.5", "0 0 0 1 0.5 "},  {"1.5", "2 2 2 1 1.5 "}, {"-1e-400", "0 0 0 0 -0 "},
        {"7.", "7 7 7 1 7 "},     {".7e1", "7 7 7 1 7 "},  {"1e400", "! ! ! 1 1.79769e+308 "},
        {"9e0", "9 9 9 1 9 "},    {"True", "- - - 1 0 "},  {" fALSE ", "- - - 0 0 "},
        {"", "- - - - 0 "},       {"Truer", "- - - - 0 "}, {"-3.5|4", "- - - - -3.5 "},
        {"-", "- - - - 0 "},      {"+-7", "- - - - 0 "},   {"0x10", "- - - - 0 "},
        {"7x", "- - - - 7 "},     {"2e", "- - - - 2 "},    {"inf", "- - - - 0 "},
        {"nan", "- - - - 0 "},    {"/1:", "- - - - 0 "},   {"x", "- - - - 0 "}};
    for (const auto& [text, outcomes] : cases) EXPECT_EQ(Outcomes(text), outcomes) << text;
    EXPECT_EQ(Outcomes(std::string_view("7\0", 2)), "- - - - 7 ");
    EXPECT_EQ(Outcomes("0." + std::string(500, '0') + "1"), "0 0 0 0 0 ");
    EXPECT_EQ(Outcomes("-" + std::string(500, '9')), "! ! ! 1 -1.79769e+308 ");
    EXPECT_EQ(Conversions::RoundToInteger(-32768.5), -32768);
    EXPECT_THROW(Conversions::RoundToInteger(32767.5), RuntimeError);
    EXPECT_EQ(Conversions::RoundToLong(2147483647.4), 2147483647);
    EXPECT_THROW(Conversions::RoundToLong(2147483647.5), RuntimeError);
}

}  // namespace
