// SPDX-License-Identifier: MIT
#include "document/GridText.h"

#include <gtest/gtest.h>

namespace {

const std::string line = "53..7....6..195....98....6.8...6...34..8.3..17...2...6.6....28....419..5....8..79";

// The line with another character for empty cells, `ends` after every nine cells and `gap` between the
// others.
std::string Laid(char empty, const std::string& gap, const std::string& ends) {
    std::string text;
    for (std::size_t i = 0; i < line.size(); ++i) {
        text += line[i] == '.' ? (empty == ' ' ? "" : std::string(1, empty)) : std::string(1, line[i]);
        text += i % 9 == 8 ? ends : gap;
    }
    return text;
}

// Three digits between bars, three lines between rules.
std::string Framed(const std::string& bar, const std::string& rule) {
    std::string text = rule;
    for (std::size_t i = 0; i < line.size(); ++i) {
        text += (i % 3 == 0 ? bar : " ") + line[i];
        if (i % 9 == 8) text += bar + "\r\n" + (i % 27 == 26 ? rule : "");
    }
    return text;
}

TEST(GridText, IsReadInAllTheFormsThatPuzzlesArePassedOnIn) {
    for (const std::string& text :
         {line, "  " + line + "\r\n\r\n", "\xEF\xBB\xBF# facile\n" + line, Laid('0', "", "\n"),
          Laid('*', " ", "\r"), Laid('_', "\t", "\r\n"), Laid('-', "", "\n"), Laid('-', "", ""),
          Laid('.', ",", "\n"), Laid('0', ", ", ",\n"), Laid(' ', ";", "\n"), Laid(' ', "\t", "\n"),
          Laid(' ', ",", ","), Framed("|", "+---+---+---+\n"),
          Framed("\xE2\x94\x82", "\xE2\x95\x94\xE2\x95\x90\xE2\x95\x97\n"), Framed("|", "*-----*-----*\n"),
          Framed(":", ".=====.=====.\n")}) {
        const auto values = GridText::Read(text);
        ASSERT_TRUE(values) << text;
        EXPECT_EQ(GridText::Write(*values), [] {
            std::string nine = line;
            for (std::size_t i = 9; i <= nine.size(); i += 10) nine.insert(i, "\n");
            return nine;
        }()) << text;
    }
}

TEST(GridText, WhatIsNoGridOrMoreThanOneIsRefused) {
    std::string candidates;  // as solvers write them: one cell has a single digit, the others more
    for (int i = 0; i < 81; ++i)
        candidates += (i % 9 == 4 ? "7" : "12") + std::string(i % 9 == 8 ? "\n" : " ");
    std::string wrapped = line;
    for (const std::string& text : {std::string(), std::string("53"), line.substr(1), line + "1",
                                    line + "\n" + line, wrapped.insert(80, "\n"), candidates, line + " x",
                                    "A" + line, "\xD9\xA1" + line.substr(1), std::string(65537, ' ') + line,
                                    Laid('-', "", "\n").replace(0, 9, "---------"), std::string(81, '-')}) {
        EXPECT_FALSE(GridText::Read(text)) << text;
    }
}

}  // namespace
