// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>
#include <string_view>

// What the program does instead of showing a window when its one word is --version, --help or --associer and
// no file has that name. Nothing for all other words; else what the process returns.
std::optional<int> AnswerOnTerminal(std::span<const char* const> words, std::string_view version);
