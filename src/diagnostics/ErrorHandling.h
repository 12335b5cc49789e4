// SPDX-License-Identifier: MIT
#pragma once

#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>

// A failure with a number, as the error report shows it. Carries the runtime's text of the number unless it
// is given one of its own.
class RuntimeError : public std::runtime_error {
  public:
    explicit RuntimeError(int number);
    RuntimeError(int number, const std::string& text) : std::runtime_error(text), number_(number) {}
    int Number() const { return number_; }

  private:
    int number_;
};

namespace ErrorNumber {
inline constexpr int Overflow = 6;
inline constexpr int OutOfMemory = 7;
inline constexpr int OutOfBounds = 9;
inline constexpr int TypeMismatch = 13;
inline constexpr int Internal = 51;
inline constexpr int FileNotFound = 53;
inline constexpr int FileAccess = 75;
inline constexpr int FileFormat = 321;
inline constexpr int ObjectNotSet = static_cast<int>(0x80040001U);  // raised by a cell view without a cell
}  // namespace ErrorNumber

// The French text that the runtime gives to an error number; empty for an unknown number.
std::string_view ErrorText(int errorNumber);

// Puts the pointer back to the arrow and shows the one error report. `location` is object.routine, or
// object.control_event for a handler. Never throws.
void ShowError(std::string_view location, int errorNumber) noexcept;

// Runs `body` under the error trap of `object`.`routine`: a failure is reported once, then the routine ends
// with `fallback` (by default its result type's default value).
template <class Body, class Result = std::invoke_result_t<Body>>
Result Trap(std::string_view object, std::string_view routine, Body&& body,
            std::conditional_t<std::is_void_v<Result>, int, Result> fallback = {}) noexcept;

namespace diagnostics {
// The number of the exception being handled; call it in a catch block only.
int CurrentErrorNumber() noexcept;
void Report(std::string_view object, std::string_view routine, int errorNumber) noexcept;
}  // namespace diagnostics

template <class Body, class Result>
Result Trap(std::string_view object, std::string_view routine, Body&& body,
            std::conditional_t<std::is_void_v<Result>, int, Result> fallback) noexcept {
    try {
        return body();
    } catch (...) {
        diagnostics::Report(object, routine, diagnostics::CurrentErrorNumber());
    }
    if constexpr (!std::is_void_v<Result>) return fallback;
}
