#pragma once

#include <QMainWindow>
#include <QPointer>
#include <vector>

#include "document/MainFrame.h"
#include "settings/dialogs/MostRecentFilesClass.h"

class Palette;
class QAction;
class QLabel;
class QMdiArea;
class QMdiSubWindow;
class QMenu;
class QToolBar;
class wGrid;
class wSplash;

// The main window: menus, toolbar, palette, status bar and the area that holds the grid windows. Every
// command is a slot named after its menu item; toolbar buttons run the slot of their key by name. Commands
// that need a grid beep when there is none; nothing is ever disabled.
class wMain : public QMainWindow, public MainFrame {
    Q_OBJECT

  public:
    wMain();
    ~wMain() override;

    // The start-up sequence; shows the window. Call once.
    void MDIForm_Load();

    // ---- MainFrame.
    bool InitialisationMode() const override;
    bool MasksHidden() const override;
    bool ManualMasks() const override;
    ctrlCell* Cell() const override;
    void Cell(ctrlCell* cell) override;
    void UpdateColors() override;
    void ShowDocument(const QString& path, const QString& caption) override;

    // Opens a grid file in a window of its own; true when a window now shows it. Reports what went wrong.
    bool OpenGridFile(const QString& file);

    wGrid* ActiveGrid() const;
    // In the order in which they were made.
    std::vector<wGrid*> Grids() const;
    Palette& picPalette() const { return *palette_; }

  public slots:
    void mnuFileNew_Click();
    void mnuFileCreate_Click();
    void mnuFileOpen_Click();
    void mnuFileSave_Click();
    void mnuFileSaveAs_Click();
    void mnuFileClose_Click();
    void mnuFilePrint_Click();
    void mnuFileMRU_Click(int index);
    void mnuFileQuit_Click();
    void mnuEditUndo_Click();
    void mnuEditRedo_Click();
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

  protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void BuildMenus();
    QMenu* AddMenu(const char* name, const char* caption);
    QAction* AddCommand(QMenu* menu, const char* name, const char* caption);
    void BuildToolbar();
    void BuildStatusBar();
    void BuildPalette();
    QAction* MenuItem(const char* name) const;
    QAction* ToolButton(const char* key) const;
    // Toggles a mode's check mark and makes its toolbar button follow; the new state.
    bool ToggleMode(const char* name, const char* pictureOn, const char* pictureOff);

    // Every grid takes the colours of the shared table.
    void Recolor();
    void WriteFirstSettings();

    void MDIForm_Resize();
    bool MDIForm_QueryUnload();
    void OpenCommandLine();
    void ShowSplash();

    // A loaded, still hidden grid window.
    wGrid* LoadGridWindow();
    void ShowGridWindow(wGrid& grid);
    // Throws a window away without a question.
    void UnloadGrid(wGrid* grid);
    void GridActivated(QMdiSubWindow* window);
    void GridUnloading(wGrid* grid);
    QString NextCaption();
    QString CopyCaption(const QString& caption) const;
    // Runs a command on the active grid, or beeps.
    template <class Command>
    void WithActiveGrid(const char* routine, Command&& command);

    QMdiArea* area_;
    Palette* palette_ = nullptr;
    QToolBar* tbrTools_ = nullptr;
    QLabel* pathPanel_ = nullptr;
    MostRecentFilesClass recentFiles_;
    QPointer<wGrid> activeGrid_;
    ctrlCell* cell_ = nullptr;  // of a live grid window, or none
    QPointer<wSplash> splash_;
    std::int16_t gridCounter_ = 0;
};

// The toolbar's and the palette's picture of a key, crisp at every size.
QIcon ToolPicture(const QString& key);
