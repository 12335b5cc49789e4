// Every way in which a grid file reaches a grid window, and the two save commands.

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QTimer>
#include <QUrl>

#include "diagnostics/ErrorHandling.h"
#include "document/BusyGuard.h"
#include "document/wGrid.h"
#include "platform/Host.h"
#include "platform/SafeFile.h"
#include "settings/FilesPaths.h"
#include "settings/IniParamProcs.h"
#include "shell/WithActiveGrid.h"
#include "shell/wMain.h"

namespace {

using namespace IniParamProcs;

QStringList DraggedFiles(const QMimeData& data) {
    QStringList files;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile()) files.append(url.toLocalFile());
    }
    return files;
}

bool AgreeToReload() {
    using namespace platform;
    const auto answer = TheHost().messages->Show(
        "Ce fichier est déjà ouvert.\r\nVoulez-vous le recharger \r\net perdre toutes les modifications ?",
        MessageStyle::Exclamation + MessageStyle::OkCancel + MessageStyle::SecondDefault);
    return answer == MessageButton::Ok;
}

}  // namespace

bool wMain::OpenGridFile(const QString& file) {
    return Trap("wMain", "OpenGridFile", [&] {
        if (RefusedWhileBusy()) return false;
        for (wGrid* grid : Grids()) {
            if (grid->Path() != file) continue;
            if (!AgreeToReload()) return false;
            UnloadGrid(grid);
        }
        wGrid* grid = LoadGridWindow();
        platform::TheHost().pointer->Shape(platform::PointerShape::Hourglass);
        try {
            if (!grid->LoadFile(file)) {
                const bool exists = platform::IsRegularFile(file.toStdString());
                throw RuntimeError(exists ? ErrorNumber::FileAccess : ErrorNumber::FileNotFound);
            }
        } catch (...) {
            UnloadGrid(grid);
            throw;
        }
        grid->Path(file);
        ShowGridWindow(*grid);
        if (InitialisationMode()) mnuGridConfig_Click();
        platform::TheHost().pointer->Shape(platform::PointerShape::Default);
        return true;
    });
}

void wMain::mnuFileOpen_Click() {
    Trap("wMain", "mnuFileOpen_Click", [this] {
        if (RefusedWhileBusy()) return;
        const std::string file = FilesPaths::AskOpenFile(ReadIniParam("Files", "LastOpened", ""));
        if (file.empty()) return;
        if (OpenGridFile(QString::fromStdString(file))) recentFiles_.Add(*this, file);
        WriteIniParam("Files", "LastOpened", FilesPaths::FolderOf(file));
    });
}

void wMain::mnuFileMRU_Click(int index) {
    Trap("wMain", "mnuFileMRU_Click", [&] {
        if (RefusedWhileBusy()) return;
        const std::string file = MostRecentFilesClass::PathOf(*this, index);
        if (!QFileInfo::exists(QString::fromStdString(file))) return recentFiles_.Delete(*this, index);
        if (OpenGridFile(QString::fromStdString(file))) recentFiles_.Add(*this, file);
    });
}

void wMain::mnuFileSaveAs_Click() {
    WithActiveGrid("mnuFileSaveAs_Click", [this](wGrid& grid) {
        const std::string file =
            FilesPaths::AskSaveFile(ReadIniParam("Files", "LastSaved", ""), grid.Caption().toStdString());
        if (file.empty()) return;
        const QString path = QString::fromStdString(file);
        if (grid.SaveFile(path)) {
            grid.Path(path);
            recentFiles_.Add(*this, file);
            grid.Form_Activate();
        }
        WriteIniParam("Files", "LastSaved", FilesPaths::FolderOf(file));
    });
}

// A first save goes through Save As and is followed by a second one to the same file; after a cancelled
// Save As the empty path fails without a word.
void wMain::mnuFileSave_Click() {
    WithActiveGrid("mnuFileSave_Click", [this](wGrid& grid) {
        if (grid.Path().isEmpty()) mnuFileSaveAs_Click();
        if (grid.SaveFile(grid.Path())) recentFiles_.Add(*this, grid.Path().toStdString());
    });
}

void wMain::dragEnterEvent(QDragEnterEvent* event) {
    dragMoveEvent(event);
}

void wMain::dragMoveEvent(QDragMoveEvent* event) {
    Trap("wMain", "MDIForm_OLEDragOver", [&] {
        if (DraggedFiles(*event->mimeData()).isEmpty()) return event->ignore();
        event->setDropAction(Qt::CopyAction);
        event->accept();
    });
}

// The files are opened after the drop has ended: a message box must not keep the drag's source waiting.
void wMain::dropEvent(QDropEvent* event) {
    Trap("wMain", "MDIForm_OLEDragDrop", [&] {
        const QStringList files = DraggedFiles(*event->mimeData());
        if (files.isEmpty()) return event->ignore();
        event->setDropAction(Qt::CopyAction);
        event->accept();
        QTimer::singleShot(0, this, [this, files] {
            for (const QString& file : files) OpenGridFile(file);
        });
    });
}
