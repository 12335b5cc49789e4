// SPDX-License-Identifier: MIT
#include "shell/TerminalWords.h"

#include <chrono>
#include <filesystem>
#include <iostream>
#include <string>
#include <system_error>

#include "platform/DesktopAssociation.h"
#include "platform/ProgramPath.h"
#include "platform/qt/AssociationIcons.h"
#include "shell/GridFileType.h"

namespace {

constexpr std::string_view help =
    "Usage : Ninarix [FICHIER.nx3]\n"
    "Joue au Sudoku, résout et crée des grilles.\n"
    "\n"
    "  --associer  inscrit ce programme au menu du bureau et l'associe aux fichiers .nx3\n"
    "  --help      affiche cette aide\n"
    "  --version   affiche la version\n"
    "\n"
    "Les préférences sont dans Ninarix.ini, à côté du programme. Dans le programme, F1 ouvre l'aide.\n";

// A person asked for it, so whatever the system has counts less.
int Associate(std::string_view startedAs) {
    platform::DesktopAssociation desktop(platform::DesktopFolders::OfEnvironment(),
                                         platform_qt::AssociationIcons);
    const bool published = desktop.PublishOwn(
        {GridFileType::extension, platform::ProgramPath(startedAs), GridFileType::description});
    desktop.ToolsEnded(std::chrono::seconds(20));
    if (!published)
        std::cerr << "Ninarix : le dossier de données de l'utilisateur est protégé en écriture.\n";
    return published ? 0 : 1;
}

}  // namespace

std::optional<int> AnswerOnTerminal(std::span<const char* const> words, std::string_view version) {
    std::error_code failed;
    if (words.size() != 2 || std::filesystem::exists(words[1], failed)) return std::nullopt;
    const std::string_view word = words[1];
    if (word == "--associer") return Associate(words.front());
    if (word != "--version" && word != "--help") return std::nullopt;
    std::cout << "Ninarix " << version << '\n';
    if (word == "--help") std::cout << '\n' << help;
    return std::cout.flush() ? 0 : 1;
}
