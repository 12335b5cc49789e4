#pragma once

// The help topics that F1 opens, by their numbers in the help file.
namespace HelpContext {

inline constexpr int Divers = 210;
inline constexpr int Couleurs = 220;
inline constexpr int Impression = 230;
inline constexpr int Niveau = 240;

}  // namespace HelpContext
