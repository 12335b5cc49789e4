// SPDX-License-Identifier: MIT

// What remains of a program that ends without its user's doing, and comes back at the next start.

#include <algorithm>
#include <charconv>
#include <memory>
#include <string>

#include "diagnostics/ErrorHandling.h"
#include "document/GridDocument.h"
#include "document/LostGrids.h"
#include "document/window/BusyGuard.h"
#include "document/window/wGrid.h"
#include "platform/Host.h"
#include "settings/IniParamProcs.h"
#include "shell/Recovery.h"
#include "shell/wMain.h"

namespace {

using platform::MessageButton;
using platform::TheHost;
namespace MessageStyle = platform::MessageStyle;

constexpr std::size_t longestList = 10;

std::string List(const std::vector<std::string>& names, std::string_view separator) {
    std::string list;
    for (std::size_t i = 0; i < std::min(names.size(), longestList); ++i) {
        list.append(i == 0 ? "" : separator).append(names[i]);
    }
    if (names.size() > longestList) {
        list.append(separator)
            .append("et ")
            .append(std::to_string(names.size() - longestList))
            .append(" autres");
    }
    return list;
}

void NameDamaged(const LostGrids& lost) {
    if (lost.Damaged().empty()) return;
    const std::string text =
        lost.Damaged().size() == 1
            ? "Une grille n'a pas pu être récupérée.\r\nSon fichier est conservé :\r\n"
            : "Des grilles n'ont pas pu être récupérées.\r\nLeurs fichiers sont conservés :\r\n";
    TheHost().messages->Show(text + List(lost.Damaged(), "\r\n"), MessageStyle::Exclamation);
}

MessageButton AskToRecover(const LostGrids& lost) {
    std::vector<std::string> names;
    for (const GridSnapshot& grid : lost.Grids()) names.push_back(grid.caption);
    const bool one = names.size() == 1;
    return TheHost().messages->Show("Le programme ne s'est pas terminé normalement.\r\n" +
                                        std::string(one ? "Une grille n'était pas enregistrée : "
                                                        : "Des grilles n'étaient pas enregistrées : ") +
                                        List(names, ", ") + ".\r\n" +
                                        (one ? "Voulez-vous la récupérer ?\r\n\r\n« Non » l'abandonne"
                                             : "Voulez-vous les récupérer ?\r\n\r\n« Non » les abandonne") +
                                        ", « Annuler » repose la question au prochain démarrage.",
                                    MessageStyle::Information + MessageStyle::YesNoCancel);
}

// The number of a caption "Grille12", 0 for another one.
std::int16_t NumberOf(std::string_view caption) {
    constexpr std::string_view name = "Grille";
    std::int16_t number = 0;
    if (!caption.starts_with(name)) return 0;
    const auto [end, error] =
        std::from_chars(caption.data() + name.size(), caption.data() + caption.size(), number);
    return error == std::errc() && end == caption.data() + caption.size() ? number : std::int16_t{0};
}

}  // namespace

void wMain::AfterStart() {
    if (!isVisible()) return;
    OfferLostGrids();
    Trap("wMain", "MDIForm_Load", IniParamProcs::TellFailures);
}

void wMain::OfferLostGrids() {
    Trap("wMain", "OfferLostGrids", [this] {
        const std::string folder = Recovery::Folder();
        if (folder.empty()) return;
        LostGrids lost(folder);
        NameDamaged(lost);
        if (lost.Grids().empty()) return lost.Remove();
        const MessageButton answer = AskToRecover(lost);
        if (answer == MessageButton::No) return lost.Remove();
        if (answer != MessageButton::Yes) return;
        for (const GridSnapshot& grid : lost.Grids()) {
            auto document = std::make_unique<GridDocument>();
            document->Resume(grid);
            // A new grid gets a name of its own.
            gridCounter_ = std::max(gridCounter_, NumberOf(grid.caption));
            ShowDocumentWindow(std::move(document));
        }
        // Until they are kept again the old files are all there is.
        if (recovery_->KeepNow()) lost.Remove();
    });
}

void wMain::EndNow() {
    Trap("wMain", "EndNow", [this] {
        recovery_->KeepForNextStart();
        if (BusyGuard* run = BusyGuard::Current()) run->Cancel();
    });
}

bool wMain::CommitSession(bool mayAsk) {
    return Trap(
        "wMain", "CommitSession",
        [&] {
            recovery_->KeepNow();
            const bool asked = mayAsk && !BusyGuard::Active();
            if (asked && !AskAboutEveryGrid()) return false;
            if (asked) committed_ = recovery_->Changes();
            return true;
        },
        true);
}
