// SPDX-License-Identifier: MIT

// Every way in which a grid file reaches a grid window, and the two save commands.

#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <filesystem>
#include <memory>
#include <utility>

#include "diagnostics/ErrorHandling.h"
#include "document/GridDocument.h"
#include "document/window/BusyGuard.h"
#include "document/window/wGrid.h"
#include "platform/Host.h"
#include "platform/SafeFile.h"
#include "platform/qt/QtHost.h"
#include "settings/FilesPaths.h"
#include "settings/Settings.h"
#include "shell/WithActiveGrid.h"
#include "shell/wMain.h"

namespace {

// As the names' own bytes, which a URL's text would not keep.
QStringList DraggedFiles(const QMimeData& data) {
    QStringList files;
    for (const QUrl& url : data.urls()) {
        if (!url.isLocalFile()) continue;
        const QByteArray encoded = url.path(QUrl::FullyEncoded).toLatin1();
        files.append(platform_qt::PathFromBytes(QByteArray::fromPercentEncoding(encoded).toStdString()));
    }
    return files;
}

// Text of its own; links have one too.
QString DraggedText(const QMimeData& data) {
    return data.hasUrls() ? QString() : data.text();
}

bool AgreeToReload() {
    using namespace platform;
    const auto answer = TheHost().messages->Show(
        "Ce fichier est déjà ouvert.\r\nVoulez-vous le recharger \r\net perdre toutes les modifications ?",
        MessageStyle::Exclamation + MessageStyle::OkCancel + MessageStyle::SecondDefault);
    return answer == MessageButton::Ok;
}

}  // namespace

// The file is read before any window is touched: when that fails, all of them stay as they were.
bool wMain::OpenGridFile(const QString& file) {
    return Trap("wMain", "OpenGridFile", [&] {
        if (RefusedWhileBusy()) return false;
        std::vector<OpenGrid> replaced;
        for (const OpenGrid& grid : Grids()) {
            if (!grid || grid->Path() != file) continue;
            if (!AgreeToReload()) return false;
            replaced.push_back(grid);
        }
        platform::TheHost().pointer->Shape(platform::PointerShape::Hourglass);
        const std::string path = platform_qt::PathToBytes(file);
        auto document = std::make_unique<GridDocument>();
        if (!document->LoadFile(path)) {
            const bool exists = platform::IsRegularFile(path);
            throw RuntimeError(exists ? ErrorNumber::FileAccess : ErrorNumber::FileNotFound);
        }
        document->Path(path);
        ShowDocumentWindow(std::move(document));
        for (const OpenGrid& grid : replaced) UnloadGrid(grid);
        if (InitialisationMode()) mnuGridConfig_Click();
        platform::TheHost().pointer->Shape(platform::PointerShape::Default);
        return true;
    });
}

// The list is written at once: the end may be none. With it goes the folder, where that is a setting.
void wMain::RememberFile(const std::string& file, const Settings::Text* folder) {
    recentFiles_.Add(*this, file);
    Settings::ProfileChanges changes;
    if (folder) Settings::Write(changes, *folder, FilesPaths::FolderOf(file));
    recentFiles_.Save(*this, std::move(changes));
}

void wMain::mnuFileOpen_Click() {
    Trap("wMain", "mnuFileOpen_Click", [this] {
        if (RefusedWhileBusy()) return;
        const std::string file = FilesPaths::AskOpenFile(Settings::Read(Settings::LastOpened));
        if (file.empty()) return;
        if (OpenGridFile(platform_qt::PathFromBytes(file))) return RememberFile(file, &Settings::LastOpened);
        Settings::Write(Settings::LastOpened, FilesPaths::FolderOf(file));
    });
}

void wMain::mnuFileMRU_Click(int index) {
    Trap("wMain", "mnuFileMRU_Click", [&] {
        if (RefusedWhileBusy()) return;
        const std::string file = MostRecentFilesClass::PathOf(*this, index);
        std::error_code failed;
        if (!std::filesystem::exists(file, failed)) {
            recentFiles_.Delete(*this, index);
            return SaveRecentFiles();
        }
        if (OpenGridFile(platform_qt::PathFromBytes(file))) RememberFile(file);
    });
}

void wMain::mnuFileSaveAs_Click() {
    WithActiveGrid("mnuFileSaveAs_Click", [this](const OpenGrid& grid) {
        const std::string file =
            FilesPaths::AskSaveFile(Settings::Read(Settings::LastSaved), grid->Document().Caption());
        if (file.empty() || !grid) return;
        const QString path = platform_qt::PathFromBytes(file);
        if (!grid->SaveFile(path)) return Settings::Write(Settings::LastSaved, FilesPaths::FolderOf(file));
        grid->Path(path);
        RememberFile(file, &Settings::LastSaved);
        if (grid == ActiveGrid()) grid->Form_Activate();
    });
}

// A first save goes through Save As and is followed by a second one to the same file; after a cancelled
// Save As the empty path fails without a word.
void wMain::mnuFileSave_Click() {
    WithActiveGrid("mnuFileSave_Click", [this](const OpenGrid& grid) {
        if (grid->Path().isEmpty()) mnuFileSaveAs_Click();
        if (grid && grid->SaveOwnFile()) RememberFile(grid->Document().Path());
        ShowState();
    });
}

void wMain::dragEnterEvent(QDragEnterEvent* event) {
    dragMoveEvent(event);
}

// What is dragged onto a window that waits for a dialog is refused.
void wMain::dragMoveEvent(QDragMoveEvent* event) {
    Trap("wMain", "MDIForm_OLEDragOver", [&] {
        const bool waits = QApplication::activeModalWidget() != nullptr;
        const QMimeData& dragged = *event->mimeData();
        if (waits || (DraggedFiles(dragged).isEmpty() && DraggedText(dragged).isEmpty()))
            return event->ignore();
        event->setDropAction(Qt::CopyAction);
        event->accept();
    });
}

// Files are opened, and a text is read, after the drop has ended: a message box must not keep the drag's
// source waiting.
void wMain::dropEvent(QDropEvent* event) {
    Trap("wMain", "MDIForm_OLEDragDrop", [&] {
        const QStringList files = DraggedFiles(*event->mimeData());
        const QString text = DraggedText(*event->mimeData());
        if (files.isEmpty() && text.isEmpty()) return event->ignore();
        event->setDropAction(Qt::CopyAction);
        event->accept();
        droppedFiles_ += files;
        QTimer::singleShot(0, this, &wMain::OpenDroppedFiles);
        if (!files.isEmpty()) return;
        QTimer::singleShot(0, this, [this, text] {
            Trap("wMain", "MDIForm_OLEDragDrop", [&] {
                // A dialog may have come up in between.
                if (QApplication::activeModalWidget()) return platform::TheHost().messages->Beep();
                PasteGrid(text);
            });
        });
    });
}

// One after another, and none beside a run or a dialog: the end of either comes here again.
void wMain::OpenDroppedFiles() {
    if (const BusyGuard* run = BusyGuard::Current(); run && !droppedFiles_.isEmpty()) {
        connect(run, &QObject::destroyed, this, &wMain::OpenDroppedFiles, Qt::QueuedConnection);
        return;
    }
    while (!droppedFiles_.isEmpty() && !QApplication::activeModalWidget()) {
        const QString file = droppedFiles_.takeFirst();
        // A box that comes up is about one of many: the panel says which.
        ShowPath(file);
        OpenGridFile(file);
        ShowPath(ActiveGrid() ? ActiveGrid()->Path() : QString());
    }
}

bool wMain::event(QEvent* event) {
    if (event->type() == QEvent::WindowUnblocked) QTimer::singleShot(0, this, &wMain::OpenDroppedFiles);
    return QMainWindow::event(event);
}
