// The main window's menus, toolbar, status bar and palette panel.

#include <QAction>
#include <QDockWidget>
#include <QIcon>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>
#include <array>

#include "diagnostics/ErrorHandling.h"
#include "shell/Palette.h"
#include "shell/wMain.h"

namespace {

struct ToolEntry {
    const char* key;
    const char* toolTip;
};

constexpr std::array<ToolEntry, 14> toolEntries{{
    {"mnuFileQuit", "Quitter"},
    {"mnuFileNew", "Nouvelle grille"},
    {"mnuFileCreate", "Générer une grille"},
    {"mnuFileOpen", "Ouvrir une grille"},
    {"mnuFileClose", "Fermer la grille courante"},
    {"mnuFileSave", "Sauvegarder la grille"},
    {"mnuFilePrint", "Imprimer la grille"},
    {"mnuEditUndo", "Annuler"},
    {"mnuEditRedo", "Refaire"},
    {"mnuGridConfig", "Mode Initialisation"},
    {"mnuGridHelpNone", "Pas de masques"},
    {"mnuGridNoAutoMasks", "Masques automatiques"},
    {"mnuHelpSolve", "Résoudre la grille"},
    {"mnuHelpAsk", "Réponses actuelles correctes ?"},
}};

struct Shortcut {
    const char* name;
    QList<QKeySequence> keys;
};

std::array<Shortcut, 20> Shortcuts() {
    return {{
        {"mnuFileNew", {Qt::CTRL | Qt::Key_N}},
        {"mnuFileCreate", {Qt::CTRL | Qt::Key_G}},
        {"mnuFileOpen", {Qt::CTRL | Qt::Key_O}},
        {"mnuFileSave", {Qt::CTRL | Qt::Key_S}},
        {"mnuFileSaveAs", {Qt::CTRL | Qt::SHIFT | Qt::Key_S}},
        {"mnuFileClose", {Qt::CTRL | Qt::Key_W}},
        {"mnuFilePrint", {Qt::CTRL | Qt::Key_P}},
        {"mnuFileQuit", {Qt::CTRL | Qt::Key_Q}},
        {"mnuEditUndo", {Qt::CTRL | Qt::Key_Z}},
        {"mnuEditRedo", {Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::SHIFT | Qt::Key_Z}},
        {"mnuGridConfig", {Qt::CTRL | Qt::Key_I}},
        {"mnuGridHelpNone", {Qt::CTRL | Qt::Key_H}},
        {"mnuGridNoAutoMasks", {Qt::CTRL | Qt::Key_M}},
        {"mnGridCopy", {Qt::CTRL | Qt::Key_D}},
        {"mnuGridReinit", {Qt::CTRL | Qt::Key_R}},
        {"mnuHelpAsk", {Qt::Key_F4}},
        {"mnuHelpSolve", {Qt::Key_F9}},
        {"mnuHelpHelp", {Qt::Key_F1}},
        {"mnuEditOptions", {}},
        {"mnuHelpAbout", {}},
    }};
}

bool IsMode(const QString& name) {
    return name == QLatin1String("mnuGridConfig") || name == QLatin1String("mnuGridHelpNone") ||
           name == QLatin1String("mnuGridNoAutoMasks");
}

// Runs the slot that is named after a menu item.
void RunByName(QObject& window, const QString& key) {
    if (!QMetaObject::invokeMethod(&window, (key + QStringLiteral("_Click")).toLatin1().constData())) {
        throw RuntimeError(ErrorNumber::Internal);
    }
}

}  // namespace

QIcon ToolPicture(const QString& key) {
    return QIcon(QStringLiteral(":/icons/%1.svg").arg(key));
}

QMenu* wMain::AddMenu(const char* name, const char* caption) {
    QMenu* menu = menuBar()->addMenu(QString::fromUtf8(caption));
    menu->setObjectName(QLatin1String(name));
    menu->setToolTipsVisible(true);
    return menu;
}

// Without a caption: a rule.
QAction* wMain::AddCommand(QMenu* menu, const char* name, const char* caption) {
    auto* action = new QAction(QString::fromUtf8(caption), this);
    action->setObjectName(QLatin1String(name));
    menu->addAction(action);
    if (*caption == '\0') {
        action->setSeparator(true);
        return action;
    }
    const QString key = action->objectName();
    action->setCheckable(IsMode(key));
    connect(action, &QAction::triggered, this, [this, action, key] {
        Trap("wMain", key.toStdString(), [&] {
            // A checkable action toggled itself before this; the command's own toggle is the one that counts.
            if (action->isCheckable()) action->setChecked(!action->isChecked());
            RunByName(*this, key);
        });
    });
    return action;
}

void wMain::BuildMenus() {
    QMenu* file = AddMenu("mnuFile", "&Fichier");
    AddCommand(file, "mnuFileNew", "Nouvelle grille");
    AddCommand(file, "mnuFileCreate", "&Générer");
    AddCommand(file, "mnuFileOpen", "&Ouvrir...");
    AddCommand(file, "mnuFileSave", "&Enregistrer");
    AddCommand(file, "mnuFileSaveAs", "Enregistrer &Sous...");
    AddCommand(file, "mnuFileClose", "&Fermer");
    AddCommand(file, "mnuFileSep1", "");
    AddCommand(file, "mnuFilePrint", "&Imprimer la grille");
    AddCommand(file, "mnuFileSepMRU", "")->setVisible(false);
    AddCommand(file, "mnuFileMRU", "(Vide)")->setVisible(false);
    AddCommand(file, "mnuFileSep2", "");
    AddCommand(file, "mnuFileQuit", "&Quitter");

    QMenu* edit = AddMenu("mnuEdit", "&Edition");
    AddCommand(edit, "mnuEditUndo", "&Annuler");
    AddCommand(edit, "mnuEditRedo", "&Rétablir");
    AddCommand(edit, "mnuEditSep1", "");
    AddCommand(edit, "mnuEditOptions", "&Préférences...");

    QMenu* grid = AddMenu("mnuGrid", "&Grille");
    AddCommand(grid, "mnuGridConfig", "&Mode Initialisation");
    AddCommand(grid, "mnuGridHelpNone", "Masquer les &Chiffres d'aide");
    AddCommand(grid, "mnuGridNoAutoMasks", "&Chiffres d'aide manuels");
    AddCommand(grid, "mnGridCopy", "&Dupliquer la grille");
    AddCommand(grid, "mnuGridReinit", "&Réinitialiser");

    QMenu* help = AddMenu("mnuHelp", "&Aide");
    AddCommand(help, "mnuHelpAsk", "Réponse actuelle &correcte ?");
    AddCommand(help, "mnuHelpSolve", "Résoudre la grille");
    AddCommand(help, "mnuHelpSep1", "");
    AddCommand(help, "mnuHelpHelp", "&Rubriques d'aide");
    AddCommand(help, "mnuHelpAbout", "&Au sujet de...");

    for (const Shortcut& shortcut : Shortcuts()) MenuItem(shortcut.name)->setShortcuts(shortcut.keys);
}

QAction* wMain::MenuItem(const char* name) const {
    auto* item = findChild<QAction*>(QLatin1String(name));
    if (!item) throw RuntimeError(ErrorNumber::Internal);
    return item;
}

void wMain::BuildToolbar() {
    tbrTools_ = addToolBar(QStringLiteral("Outils"));
    tbrTools_->setObjectName(QStringLiteral("tbrTools"));
    tbrTools_->setMovable(false);
    tbrTools_->setIconSize(QSize(32, 32));
    tbrTools_->setContextMenuPolicy(Qt::PreventContextMenu);
    for (const ToolEntry& entry : toolEntries) {
        const QString key = QLatin1String(entry.key);
        const QString text = QString::fromUtf8(entry.toolTip);
        QAction* button = tbrTools_->addAction(ToolPicture(key), text);
        button->setObjectName(QStringLiteral("tbrTools(%1)").arg(key));
        button->setToolTip(text);
        button->setCheckable(IsMode(key));
        connect(button, &QAction::triggered, this,
                [this, key] { Trap("wMain", "tbrTools_ButtonClick", [&] { RunByName(*this, key); }); });
    }
}

QAction* wMain::ToolButton(const char* key) const {
    return MenuItem(QStringLiteral("tbrTools(%1)").arg(QLatin1String(key)).toLatin1().constData());
}

bool wMain::ToggleMode(const char* name, const char* pictureOn, const char* pictureOff) {
    QAction* item = MenuItem(name);
    const bool checked = !item->isChecked();
    item->setChecked(checked);
    QAction* button = ToolButton(name);
    button->setChecked(checked);
    button->setIcon(ToolPicture(QLatin1String(checked ? pictureOn : pictureOff)));
    return checked;
}

void wMain::BuildStatusBar() {
    statusBar()->setObjectName(QStringLiteral("sbrStatus"));
    pathPanel_ = new QLabel(this);
    pathPanel_->setObjectName(QStringLiteral("path"));
    pathPanel_->setTextFormat(Qt::PlainText);
    // A long path must not widen the window.
    pathPanel_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    statusBar()->addWidget(pathPanel_, 1);
}

void wMain::BuildPalette() {
    auto* dock = new QDockWidget(this);
    dock->setObjectName(QStringLiteral("dckPalette"));
    dock->setFeatures(QDockWidget::NoDockWidgetFeatures);
    dock->setTitleBarWidget(new QWidget(dock));
    palette_ = new Palette(dock);
    dock->setWidget(palette_);
    addDockWidget(Qt::RightDockWidgetArea, dock);
    dock->setContextMenuPolicy(Qt::PreventContextMenu);
    connect(palette_, &Palette::cmdValue_Clicked, this, &wMain::cmdValue_Click);
    connect(palette_, &Palette::cmdMask_Clicked, this, &wMain::cmdMask_Click);
}
