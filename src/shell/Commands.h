// SPDX-License-Identifier: MIT
#pragma once

#include <Qt>
#include <array>
#include <span>
#include <vector>

class wMain;

// The commands of the main window, one row each. Menus, toolbar and shortcuts are made from this table.
enum class CommandMenu { File, Edit, Grid, Help };

// The modes of the whole program. A mode is on while its menu item is checked; it is kept nowhere else.
enum class Mode { Initialisation, MasksHidden, ManualMasks };
inline constexpr int ModeCount = 3;

struct Command {
    enum class Kind {
        Item,    // runs its routine
        Check,   // switches a mode
        Rule,    // a line between items
        Hidden,  // where entries are added later
    };
    using Routine = void (wMain::*)();

    CommandMenu menu = CommandMenu::File;
    Kind kind = Kind::Rule;
    const char* name = "";     // of the menu item; the key of its tool button
    const char* caption = "";  // UTF-8, as is all that follows
    Routine click = nullptr;   // of every item and check item
    std::array<QKeyCombination, 2> keys{};

    // ---- Of a check item.
    Mode mode = Mode::Initialisation;
    Routine changed = nullptr;   // what follows from the mode's new state; may be missing
    const char* pictureOn = "";  // of its tool button while the mode is on

    // ---- Of a tool button. Its picture has the command's name.
    int toolPlace = 0;  // from the left, 1..; 0: the command has none
    const char* toolTip = "";
};

// In the order of the menus.
std::span<const Command> Commands();
// Those that have a tool button, from left to right.
std::vector<const Command*> ToolCommands();
