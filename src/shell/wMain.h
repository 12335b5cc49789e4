// SPDX-License-Identifier: MIT
#pragma once

#include <QMainWindow>
#include <QPointer>
#include <QStringList>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "document/window/MainFrame.h"
#include "document/window/OpenGrid.h"
#include "settings/Settings.h"
#include "settings/dialogs/MostRecentFilesClass.h"
#include "shell/Commands.h"

class GridDocument;
class GridTabs;
class Palette;
class QAction;
class QMdiArea;
class QMdiSubWindow;
class QMenu;
class QToolBar;
class Recovery;
class StartHints;
class StatusPanel;
class wGrid;
class wSplash;

// The main window: menus, toolbar, palette, status bar and the area that holds the grid windows. It routes:
// what a command does to a grid is the grid's own business. Every command is a routine named after its menu
// item; the table of commands says which one. Commands that need a grid beep when there is none; nothing is
// ever disabled.
class wMain : public QMainWindow, public MainFrame {
    Q_OBJECT

  public:
    wMain();
    ~wMain() override;

    // The start-up sequence; shows the window. Call once.
    void MDIForm_Load();

    // ---- MainFrame.
    bool InitialisationMode() const override { return IsOn(Mode::Initialisation); }
    bool MasksHidden() const override { return IsOn(Mode::MasksHidden); }
    bool ManualMasks() const override { return IsOn(Mode::ManualMasks); }
    ctrlCell* Cell() const override;
    void Cell(ctrlCell* cell) override;
    void UpdateColors() override;
    void ShowStanding() override;
    void ShowDocument(const QString& path, const QString& caption) override;

    // Opens a grid file in a window of its own; true when a window now shows it. Reports what went wrong.
    bool OpenGridFile(const QString& file);

    // ---- The end of the session, or of the process, that is not this window's doing.

    // Nobody can be asked any more: what is not saved is kept for the next start, and a run is cancelled.
    void EndNow();
    // The session may end. Everything is kept, and unsaved grids are asked about where that is allowed.
    // False: the user wants to go on.
    bool CommitSession(bool mayAsk);

    OpenGrid ActiveGrid() const { return activeGrid_; }
    // The open ones, in the order in which they were made.
    std::vector<OpenGrid> Grids() const;
    Palette& picPalette() const { return *palette_; }

    // ---- The commands.
    void mnuFileNew_Click();
    void mnuFileCreate_Click();
    void mnuFileOpen_Click();
    void mnuFileSave_Click();
    void mnuFileSaveAs_Click();
    void mnuFileClose_Click();
    void mnuFilePrint_Click();
    void mnuFileQuit_Click();
    void mnuEditUndo_Click();
    void mnuEditRedo_Click();
    void mnuEditCopy_Click();
    void mnuEditPaste_Click();
    void mnuEditOptions_Click();
    void mnuGridConfig_Click();
    void mnuGridHelpNone_Click();
    void mnuGridNoAutoMasks_Click();
    void mnGridCopy_Click();
    void mnuGridReinit_Click();
    void mnuHelpAsk_Click();
    void mnuHelpSolve_Click();
    void mnuHelpHelp_Click();
    void mnuHelpAbout_Click();
    void cmdValue_Click(int index) override;
    void cmdMask_Click(int index);
    void ToggleCandidate(int digit) override;

    // ---- What follows from a mode's new state.
    void MasksHiddenChanged();
    void ManualMasksChanged();

  public slots:
    // Found by its name by the list of recent files.
    void mnuFileMRU_Click(int index);

  protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void BuildMenus();
    void AddMenuItem(QMenu& menu, const Command& command);
    void BuildToolbar();
    void BuildStatusBar();
    void BuildPalette();
    void BuildTabs();
    void BuildHints();
    void BuildFocusRing();
    // Square cells, and no more than the screen has.
    void TakeFirstSize();
    int HeightAroundGrids() const;
    void ShareWidth();

    bool IsOn(Mode mode) const;
    void Switch(Mode mode);
    // Makes the tool button follow, then does what follows from the new state.
    void ModeSwitched(const Command& command);

    // Every grid takes the colours of the shared table.
    void Recolor();
    void WriteFirstSettings();

    // The current cell, if there is one, shows what the beep tells, and the reason is said: the digit.
    void Refuse(int digit) const;

    void MDIForm_Resize();
    void FillArea(const wGrid& grid);
    bool MDIForm_QueryUnload();
    bool AskAboutEveryGrid();
    void RememberFile(const std::string& file, const Settings::Text* folder = nullptr);
    void SaveRecentFiles();
    void OpenCommandLine();
    void ShowSplash();
    // What the start has to ask and to tell.
    void AfterStart();
    // Says what earlier runs that did not end orderly left, and brings it back.
    void OfferLostGrids();

    // Shows the document in a new window and makes it the active grid.
    void ShowDocumentWindow(std::unique_ptr<GridDocument> document);
    // Throws a window away without a question.
    void UnloadGrid(const OpenGrid& grid);
    void GridActivated(QMdiSubWindow* window);
    void GridUnloading();
    void Activate(const OpenGrid& grid);
    void ShowTabs();
    void OpenDroppedFiles();
    // Shows the puzzle that a text holds as a new grid; beeps at any other text.
    void PasteGrid(const QString& text);
    // A new grid to type givens into.
    void ShowNewGrid(std::unique_ptr<GridDocument> document);
    // In the status bar.
    void ShowPath(const QString& path);
    // How far the active grid is, in the status bar; which grids are modified, on the tabs.
    void ShowState();
    std::string NextCaption();
    std::string CopyCaption(const std::string& caption) const;
    // Runs a command on the active grid, or beeps. The command gets an OpenGrid: it asks whether the grid is
    // still open after everything that lets events happen.
    template <class Routine>
    void WithActiveGrid(const char* routine, Routine&& command);

    QMdiArea* area_;
    GridTabs* tabs_ = nullptr;
    QToolBar* toolbar_ = nullptr;
    Palette* palette_ = nullptr;
    StartHints* hints_ = nullptr;
    StatusPanel* pathPanel_ = nullptr;
    StatusPanel* statePanel_ = nullptr;
    struct ModeActions {
        QAction* item = nullptr;
        QAction* button = nullptr;
    };
    std::array<ModeActions, ModeCount> modes_;
    MostRecentFilesClass recentFiles_;
    std::unique_ptr<Recovery> recovery_;
    // How often grids had changed when the user agreed to the session's end.
    std::optional<std::uint64_t> committed_;
    OpenGrid activeGrid_;
    std::vector<OpenGrid> used_;  // the last used one last; may hold closed ones
    QPointer<ctrlCell> cell_;
    QPointer<wSplash> splash_;
    QStringList droppedFiles_;  // that still have to be opened
    std::int16_t gridCounter_ = 0;
};

// The toolbar's and the palette's picture of a key, crisp at every size.
QIcon ToolPicture(const QString& key);
