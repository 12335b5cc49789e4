// SPDX-License-Identifier: MIT
#pragma once

// The help topics that F1 opens, by their numbers in the help file.
namespace HelpContext {

inline constexpr int Divers = 210;
inline constexpr int Couleurs = 220;
inline constexpr int Impression = 230;
inline constexpr int Niveau = 240;
inline constexpr int Generer = 250;   // the level dialog
inline constexpr int Imprimer = 260;  // the choice of a printer
inline constexpr int Calcul = 270;    // the progress window
inline constexpr int Fichiers = 280;  // the file dialogs

}  // namespace HelpContext
