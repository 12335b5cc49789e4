// SPDX-License-Identifier: MIT
#include "shell/StartHints.h"

#include <QEvent>
#include <QKeySequence>
#include <algorithm>
#include <cassert>
#include <string_view>

#include "platform/qt/Contrast.h"
#include "shell/Commands.h"

namespace {

constexpr std::pair<const char*, const char*> ways[] = {{"mnuFileCreate", "Générer une grille"},
                                                        {"mnuFileNew", "Saisir une grille"},
                                                        {"mnuFileOpen", "Ouvrir une grille"},
                                                        {"mnuEditPaste", "Coller une grille copiée ailleurs"},
                                                        {"mnuHelpHelp", "Lire l'aide"}};

QString KeyOf(std::string_view name) {
    const auto command = std::ranges::find(Commands(), name, &Command::name);
    assert(command != Commands().end());
    return QKeySequence(command->keys.front()).toString(QKeySequence::NativeText);
}

}  // namespace

StartHints::StartHints(QWidget* parent) : QLabel(parent) {
    setObjectName(QStringLiteral("lblStartHints"));
    setAccessibleName(QStringLiteral("Pour commencer"));
    setTextFormat(Qt::RichText);
    setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    setAutoFillBackground(true);
    setMargin(16);
}

void StartHints::Center() {
    move(parentWidget()->rect().center() - rect().center());
}

void StartHints::showEvent(QShowEvent* event) {
    QLabel::showEvent(event);
    Fill();
}

void StartHints::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    const bool looks = event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange;
    if (looks && isVisible()) Fill();
}

// The links' usual blue is not seen on a dark desktop.
void StartHints::Fill() {
    const QColor link =
        platform_qt::Legible(palette().color(QPalette::Link), palette().color(QPalette::Window));
    QString text = QStringLiteral("<h3>Pour commencer</h3><table cellpadding='4'>");
    for (const auto& [name, way] : ways) {
        text += QStringLiteral("<tr><td><a href='%1' style='color:%2'>%3</a></td><td>&nbsp;%4</td></tr>")
                    .arg(QLatin1String(name), link.name(), QString::fromUtf8(way), KeyOf(name));
    }
    text += QStringLiteral("</table><p>Un fichier ou un texte déposé ici s'ouvre aussi.</p>");
    setText(text);
    adjustSize();
    Center();
}
