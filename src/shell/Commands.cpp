// SPDX-License-Identifier: MIT
#include "shell/Commands.h"

#include <algorithm>
#include <string_view>

#include "shell/wMain.h"

namespace {

using enum CommandMenu;
using Keys = std::array<QKeyCombination, 2>;

// Not a constant: a row whose making calls it does not compile.
void RowWithoutRoutine() {}

consteval Command Item(CommandMenu menu, const char* name, const char* caption, Command::Routine click,
                       Keys keys = {}) {
    if (!click) RowWithoutRoutine();
    return {.menu = menu,
            .kind = Command::Kind::Item,
            .name = name,
            .caption = caption,
            .click = click,
            .keys = keys};
}

consteval Command Check(Mode mode, Command::Routine changed, const char* pictureOn, Command row) {
    row.kind = Command::Kind::Check;
    row.mode = mode;
    row.changed = changed;
    row.pictureOn = pictureOn;
    return row;
}

consteval Command Rule(CommandMenu menu, const char* name) {
    return {.menu = menu, .name = name};
}

consteval Command Hidden(CommandMenu menu, const char* name, const char* caption) {
    return {.menu = menu, .kind = Command::Kind::Hidden, .name = name, .caption = caption};
}

// The row with a tool button.
consteval Command Tool(int place, const char* toolTip, Command row) {
    row.toolPlace = place;
    row.toolTip = toolTip;
    return row;
}

constexpr auto ctrl = Qt::CTRL;
constexpr auto ctrlShift = Qt::CTRL | Qt::SHIFT;

constexpr std::array commands{
    Tool(2, "Nouvelle grille",
         Item(File, "mnuFileNew", "Nouvelle grille", &wMain::mnuFileNew_Click, {ctrl | Qt::Key_N})),
    Tool(3, "Générer une grille",
         Item(File, "mnuFileCreate", "&Générer", &wMain::mnuFileCreate_Click, {ctrl | Qt::Key_G})),
    Tool(4, "Ouvrir une grille",
         Item(File, "mnuFileOpen", "&Ouvrir...", &wMain::mnuFileOpen_Click, {ctrl | Qt::Key_O})),
    Tool(6, "Sauvegarder la grille",
         Item(File, "mnuFileSave", "&Enregistrer", &wMain::mnuFileSave_Click, {ctrl | Qt::Key_S})),
    Item(File, "mnuFileSaveAs", "Enregistrer &Sous...", &wMain::mnuFileSaveAs_Click, {ctrlShift | Qt::Key_S}),
    Tool(5, "Fermer la grille courante",
         Item(File, "mnuFileClose", "&Fermer", &wMain::mnuFileClose_Click,
              {ctrl | Qt::Key_W, ctrl | Qt::Key_F4})),
    Rule(File, "mnuFileSep1"),
    Tool(7, "Imprimer la grille",
         Item(File, "mnuFilePrint", "&Imprimer la grille", &wMain::mnuFilePrint_Click, {ctrl | Qt::Key_P})),
    Rule(File, "mnuFileSepMRU"),
    Hidden(File, "mnuFileMRU", "(Vide)"),
    Rule(File, "mnuFileSep2"),
    Tool(1, "Quitter", Item(File, "mnuFileQuit", "&Quitter", &wMain::mnuFileQuit_Click, {ctrl | Qt::Key_Q})),

    Tool(8, "Annuler", Item(Edit, "mnuEditUndo", "&Annuler", &wMain::mnuEditUndo_Click, {ctrl | Qt::Key_Z})),
    Tool(9, "Refaire",
         Item(Edit, "mnuEditRedo", "&Rétablir", &wMain::mnuEditRedo_Click,
              {ctrl | Qt::Key_Y, ctrlShift | Qt::Key_Z})),
    Rule(Edit, "mnuEditSep2"),
    Item(Edit, "mnuEditCopy", "&Copier la grille", &wMain::mnuEditCopy_Click, {ctrl | Qt::Key_C}),
    Item(Edit, "mnuEditPaste", "C&oller une grille", &wMain::mnuEditPaste_Click, {ctrl | Qt::Key_V}),
    Rule(Edit, "mnuEditSep1"),
    Item(Edit, "mnuEditOptions", "&Préférences...", &wMain::mnuEditOptions_Click),

    Tool(10, "Mode Initialisation",
         Check(Mode::Initialisation, nullptr, "mnuGridConfig",
               Item(Grid, "mnuGridConfig", "&Mode Initialisation", &wMain::mnuGridConfig_Click,
                    {ctrl | Qt::Key_I}))),
    Tool(11, "Pas de masques",
         Check(Mode::MasksHidden, &wMain::MasksHiddenChanged, "mnuGridHelpDisplay",
               Item(Grid, "mnuGridHelpNone", "Masquer les &Chiffres d'aide", &wMain::mnuGridHelpNone_Click,
                    {ctrl | Qt::Key_H}))),
    Tool(12, "Masques automatiques",
         Check(Mode::ManualMasks, &wMain::ManualMasksChanged, "mnuGridNoAutoMasksOn",
               Item(Grid, "mnuGridNoAutoMasks", "&Chiffres d'aide manuels", &wMain::mnuGridNoAutoMasks_Click,
                    {ctrl | Qt::Key_M}))),
    Item(Grid, "mnGridCopy", "&Dupliquer la grille", &wMain::mnGridCopy_Click, {ctrl | Qt::Key_D}),
    Item(Grid, "mnuGridReinit", "&Réinitialiser", &wMain::mnuGridReinit_Click, {ctrl | Qt::Key_R}),

    Tool(14, "Réponses actuelles correctes ?",
         Item(Help, "mnuHelpAsk", "Réponse actuelle &correcte ?", &wMain::mnuHelpAsk_Click, {Qt::Key_F4})),
    Tool(13, "Résoudre la grille",
         Item(Help, "mnuHelpSolve", "Résoudre la grille", &wMain::mnuHelpSolve_Click, {Qt::Key_F9})),
    Rule(Help, "mnuHelpSep1"),
    Item(Help, "mnuHelpHelp", "&Rubriques d'aide", &wMain::mnuHelpHelp_Click, {Qt::Key_F1}),
    Item(Help, "mnuHelpAbout", "&Au sujet de...", &wMain::mnuHelpAbout_Click),
};

// How many rows have the key.
consteval int Uses(QKeyCombination key) {
    int uses = 0;
    for (const Command& row : commands) uses += static_cast<int>(std::ranges::count(row.keys, key));
    return uses;
}

consteval bool KeysAreUnique() {
    for (const Command& row : commands) {
        for (const QKeyCombination key : row.keys) {
            if (key != QKeyCombination() && Uses(key) != 1) return false;
        }
    }
    return true;
}
static_assert(KeysAreUnique(), "two commands have the same shortcut");

consteval bool NamesAreUnique() {
    for (const Command& row : commands) {
        const auto sameName = [&row](const Command& other) {
            return std::string_view(other.name) == std::string_view(row.name);
        };
        if (std::ranges::count_if(commands, sameName) != 1) return false;
    }
    return true;
}
static_assert(NamesAreUnique(), "two commands have the same name");

consteval bool EveryModeHasOneItem() {
    for (int mode = 0; mode < ModeCount; ++mode) {
        const auto switches = [mode](const Command& row) {
            return row.kind == Command::Kind::Check && row.mode == static_cast<Mode>(mode);
        };
        if (std::ranges::count_if(commands, switches) != 1) return false;
    }
    return true;
}
static_assert(EveryModeHasOneItem(), "a mode has no check item, or two");

consteval int ToolCount() {
    return static_cast<int>(
        std::ranges::count_if(commands, [](const Command& row) { return row.toolPlace != 0; }));
}

consteval bool ToolPlacesAreARow() {
    for (int place = 1; place <= ToolCount(); ++place) {
        if (std::ranges::count(commands, place, &Command::toolPlace) != 1) return false;
    }
    return true;
}
static_assert(ToolPlacesAreARow(), "the tool buttons' places are not 1, 2, 3, ...");

}  // namespace

std::span<const Command> Commands() {
    return commands;
}

std::vector<const Command*> ToolCommands() {
    std::vector<const Command*> tools(static_cast<std::size_t>(ToolCount()));
    for (const Command& row : commands) {
        if (row.toolPlace != 0) tools[static_cast<std::size_t>(row.toolPlace - 1)] = &row;
    }
    return tools;
}
