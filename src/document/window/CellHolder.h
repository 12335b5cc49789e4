// SPDX-License-Identifier: MIT
#pragma once

class ctrlCell;

// The classic key codes that KeyDown speaks of; every other key is 0.
namespace KeyCode {
inline constexpr int Backspace = 8;
inline constexpr int End = 35;
inline constexpr int Home = 36;
inline constexpr int Left = 37;
inline constexpr int Up = 38;
inline constexpr int Right = 39;
inline constexpr int Down = 40;
inline constexpr int Delete = 46;
}  // namespace KeyCode

// What KeyDown's shift state is the sum of.
namespace ShiftState {
inline constexpr int Shift = 1;
inline constexpr int Control = 2;
inline constexpr int Alt = 4;
}  // namespace ShiftState

// Whoever holds cell views is told what the player does in them.
class CellHolder {
  public:
    virtual ~CellHolder() = default;

    virtual void ctrlCells_Click(ctrlCell& cell) = 0;
    // Every key, by its KeyCode and ShiftState.
    virtual void ctrlCells_KeyDown(ctrlCell& cell, int keyCode, int shift) = 0;
    // What was typed, digits of every keyboard as '0' to '9'.
    virtual void ctrlCells_Keypress(ctrlCell& cell, int keyAscii) = 0;
    // Candidate 1..9 was chosen to be excluded or readmitted; 0: all are to be readmitted.
    virtual void ctrlCells_CandidateChosen(ctrlCell& cell, int digit) = 0;
};
