// SPDX-License-Identifier: MIT
#pragma once

#include <QAction>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMimeData>
#include <QUrl>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "document/DocumentSupport.h"
#include "document/window/ctrlCell.h"
#include "document/window/wGrid.h"
#include "settings/IniParamProcs.h"
#include "shell/Palette.h"
#include "shell/wMain.h"
#include "support/QtSupport.h"
#include "support/ScriptedHost.h"

// The real main window on a scripted host, with a settings file in a folder of its own.
class Program : public testing::Test {
  protected:
    Program() {
        ScriptedHost::WriteFile(IniParamProcs::IniFilePath(),
                                "[Options]\r\nNoSplash=1\r\nColor_0=16777215\r\n");
    }

    void Start() {
        main = std::make_unique<wMain>();
        main->MDIForm_Load();
        ServeEvents();
    }
    static void Setting(const char* section, const char* key, const std::string& value) {
        IniParamProcs::WriteIniParam(section, key, value);
    }
    static std::string Setting(const char* section, const char* key) {
        return IniParamProcs::ReadIniParam(section, key, "none");
    }

    // ---- Commands by the name of their menu item.
    QAction& Item(const char* name) const { return Child<QAction>(*main, name); }
    QAction& Tool(const char* key) const {
        return Child<QAction>(*main, QStringLiteral("tbrTools(%1)").arg(QLatin1String(key)));
    }
    void Run(const char* name) const {
        Item(name).trigger();
        ServeEvents();
    }
    // With the answer to the one box or file dialog that it shows.
    void Run(const char* name, platform::MessageButton answer) {
        host.Expect(answer);
        Run(name);
    }
    void Run(const char* name, const std::string& file) {
        host.ExpectFile(file);
        Run(name);
    }

    // ---- Grids.
    wGrid& Active() const { return *main->ActiveGrid(); }
    GridDocument& Document() const { return Active().Document(); }
    std::string State(int index) const { return StateText(Document(), index); }
    void Set(int index, std::string_view record) const {
        ::Set(Document(), index, record);
        Active().UpdateGrid();
    }
    QMdiArea& Area() const { return *main->findChild<QMdiArea*>(); }
    void Activate(std::size_t number) const {
        Area().setActiveSubWindow(qobject_cast<QMdiSubWindow*>(main->Grids().at(number)->parentWidget()));
        ServeEvents();
    }

    // ---- Files.
    // Writes a grid file that holds one record, for cell 1.
    std::string GridFile(const std::string& name, const std::string& record = "7|1|0") const {
        ScriptedHost::WriteFile(host.PathOf(name), "[]\r\n1=" + record + "\r\n");
        return host.PathOf(name);
    }
    bool Open(const std::string& path) const {
        const bool opened = main->OpenGridFile(QString::fromStdString(path));
        ServeEvents();
        return opened;
    }
    // Drags something over the window and drops it unless it is refused.
    bool Drop(const QMimeData& data) const {
        constexpr auto actions = Qt::CopyAction | Qt::MoveAction;
        const QPoint place(100, 200);
        QDragEnterEvent enter(place, actions, &data, Qt::LeftButton, Qt::NoModifier);
        QDragMoveEvent move(place, actions, &data, Qt::LeftButton, Qt::NoModifier);
        QDropEvent drop(place, actions, &data, Qt::LeftButton, Qt::NoModifier);
        for (QDropEvent* event : {static_cast<QDropEvent*>(&enter), static_cast<QDropEvent*>(&move), &drop}) {
            event->ignore();
            QCoreApplication::sendEvent(main->windowHandle(), event);
            if (!event->isAccepted()) return false;
            EXPECT_EQ(event->dropAction(), Qt::CopyAction);
        }
        return true;
    }
    bool Drop(const std::vector<std::string>& paths) const {
        QList<QUrl> urls;
        for (const std::string& path : paths) urls.append(QUrl::fromLocalFile(QString::fromStdString(path)));
        QMimeData data;
        data.setUrls(urls);
        return Drop(data);
    }

    // ---- What the user sees.
    // The captions of the grids, "a, [b], c" with b active; the title has to agree.
    std::string Grids() const {
        std::string captions;
        std::string title = "Ninarix";
        for (const OpenGrid& grid : main->Grids()) {
            const bool active = grid == main->ActiveGrid();
            const std::string caption = grid->Caption().toStdString();
            if (active) title += " - " + caption;
            captions += (captions.empty() ? "" : ", ") + (active ? "[" + caption + "]" : caption);
        }
        EXPECT_EQ(main->windowTitle().toStdString(), title);
        return captions;
    }
    // The names of the recent files, "a.nx3 b.nx3".
    std::string RecentFiles() const {
        std::string names;
        for (int i = 1; !MostRecentFilesClass::PathOf(*main, i).empty(); ++i) {
            const std::filesystem::path path(MostRecentFilesClass::PathOf(*main, i));
            names += (i > 1 ? " " : "") + path.filename().string();
        }
        return names;
    }
    std::string PathPanel() const { return Child<QLabel>(*main, "path").text().toStdString(); }
    // The last box, "style text".
    std::string LastBox() const {
        if (host.boxes.empty()) return {};
        return std::to_string(host.boxes.back().style) + " " + host.boxes.back().text;
    }

    ScriptedHost host;
    std::unique_ptr<wMain> main;
};

// A program that has started.
class RunningProgram : public Program {
  protected:
    RunningProgram() { Start(); }
};
