// Opening and saving.

#include <QDialog>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWindow>

#include "Program.h"
#include "document/window/BusyGuard.h"

namespace {

using platform::MessageButton;

class Files : public RunningProgram {
  protected:
    void OpenWithDialog(const std::string& path) {
        host.ExpectFile(path);
        Run("mnuFileOpen");
    }
    // What the window says to dragged data; a drop follows unless it refuses.
    bool Drop(const QMimeData& data) const {
        QWindow* window = main->windowHandle();
        const QPoint place(100, 200);
        QDragEnterEvent enter(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QCoreApplication::sendEvent(window, &enter);
        QDragMoveEvent move(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        move.ignore();
        QCoreApplication::sendEvent(window, &move);
        if (!move.isAccepted()) return false;
        EXPECT_EQ(move.dropAction(), Qt::CopyAction);
        QDropEvent drop(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window, &drop);
        EXPECT_EQ(drop.dropAction(), Qt::CopyAction);
        return drop.isAccepted();
    }
    static QList<QUrl> Urls(const Texts& paths) {
        QList<QUrl> urls;
        for (const std::string& path : paths) urls.append(QUrl::fromLocalFile(QString::fromStdString(path)));
        return urls;
    }
    std::string Folder() const { return host.folder.string(); }
};

// ---- Opening.

TEST_F(Files, AnOpenedFileIsShownAndRemembered) {
    Setting("Files", "LastOpened", "/jeux");
    Run("mnuGridConfig");
    const std::string file = GridFile("Été 1.nx3");
    OpenWithDialog(file);
    EXPECT_EQ(host.questions[0].folder, "/jeux");
    EXPECT_FALSE(host.questions[0].save);
    EXPECT_EQ(Captions(), Texts{"Été 1"});
    EXPECT_EQ(State(1), "7|1|0");
    EXPECT_FALSE(Document().Modified());
    EXPECT_FALSE(main->InitialisationMode());
    EXPECT_EQ(RecentFiles(), Texts{file});
    EXPECT_EQ(Setting("Files", "LastOpened"), Folder());
    EXPECT_EQ(host.shapes.back(), platform::PointerShape::Default);
}

TEST_F(Files, AFileThatCannotBeReadIsReportedAndLeavesNoWindow) {
    const std::string open = GridFile("a.nx3");
    Open(open);
    Run("mnuFileNew");
    Active().ctrlCells(5).DoSelect();
    const std::pair<std::string, const char*> files[] = {
        {host.PathOf("absent.nx3"), "Error Nr 53"},
        {GridFile("b.nx3", "256|0|0"), "Error Nr 6 "},
        {GridFile("c.nx3", "abc|0|0"), "Error Nr 13"},
        {GridFile("d.nx3", "1|0"), "Error Nr 9 "},
    };
    for (const auto& [file, error] : files) {
        host.boxes.clear();
        host.Expect(MessageButton::Ok);
        OpenWithDialog(file);
        EXPECT_EQ(host.boxes.size(), 1U);
        EXPECT_TRUE(LastBox().starts_with(error)) << LastBox();
        EXPECT_TRUE(LastBox().ends_with("Module : wMain\r\nFunction : OpenGridFile")) << LastBox();
    }
    EXPECT_EQ(Captions(), (Texts{"a", "Grille1"}));
    EXPECT_EQ(Title(), "Ninarix - Grille1") << "the active grid stays active";
    EXPECT_EQ(main->Cell(), &Active().ctrlCells(5));
    EXPECT_TRUE(main->InitialisationMode());
    EXPECT_TRUE(RecentFiles().empty());
    EXPECT_EQ(Setting("Files", "LastOpened"), Folder());
    EXPECT_EQ(host.shapes.back(), platform::PointerShape::Default);
}

// ---- Opening twice.

TEST_F(Files, AnOpenFileIsReloadedOnlyOnRequest) {
    const std::string file = GridFile("a.nx3");
    Open(file);
    Set(2, "5|0|0");
    host.Expect(MessageButton::Cancel);
    EXPECT_FALSE(Open(file));
    EXPECT_EQ(
        LastBox(),
        "Ce fichier est déjà ouvert.\r\nVoulez-vous le recharger \r\net perdre toutes les modifications ?");
    EXPECT_EQ(host.boxes.back().style, 305);
    EXPECT_EQ(State(2), "5|0|0");
    host.Expect(MessageButton::Ok);
    EXPECT_TRUE(Open(file));
    EXPECT_EQ(Captions(), Texts{"a"});
    EXPECT_EQ(State(1) + " " + State(2), "7|1|0 0|0|0");
    EXPECT_EQ(PathPanel(), file);
}

TEST_F(Files, AReloadThatFailsLosesNothing) {
    const std::string file = GridFile("a.nx3");
    Open(file);
    Set(2, "5|0|0");
    for (const char* damage : {"[]\r\n1=abc|0|0\r\n", ""}) {
        if (*damage == '\0') {
            std::filesystem::remove(file);
        } else {
            ScriptedHost::WriteFile(file, damage);
        }
        host.Expect(MessageButton::Ok);  // reload
        host.Expect(MessageButton::Ok);  // the report
        EXPECT_FALSE(Open(file));
        EXPECT_TRUE(LastBox().starts_with("Error Nr ")) << LastBox();
        EXPECT_EQ(Captions(), Texts{"a"});
        EXPECT_EQ(State(1) + " " + State(2), "7|1|0 5|0|0");
        EXPECT_TRUE(Document().Modified());
    }
}

TEST_F(Files, EveryWindowOfAFileIsAskedAbout) {
    const std::string file = GridFile("a.nx3");
    Open(file);
    Run("mnuFileNew");
    host.ExpectFile(file);
    Run("mnuFileSaveAs");
    host.Expect(MessageButton::Ok);
    host.Expect(MessageButton::Ok);
    EXPECT_TRUE(Open(file));
    EXPECT_EQ(Captions(), Texts{"a"});
}

// ---- Recent files.

TEST_F(Files, ARecentFileComesToTheTopWhenItIsOpened) {
    const std::string first = GridFile("a.nx3");
    const std::string second = GridFile("b.nx3");
    OpenWithDialog(first);
    OpenWithDialog(second);
    Run("mnuFileClose");
    Run("mnuFileClose");
    Run("mnuFileMRU(2)");
    EXPECT_EQ(Captions(), Texts{"a"});
    EXPECT_EQ(RecentFiles(), (Texts{first, second}));
}

TEST_F(Files, ARecentFileThatHasGoneIsDroppedFromTheMenu) {
    const std::string first = GridFile("a.nx3");
    OpenWithDialog(first);
    OpenWithDialog(GridFile("b.nx3"));
    std::filesystem::remove(first);
    host.Expect(MessageButton::Ok);
    Run("mnuFileMRU(2)");
    EXPECT_EQ(LastBox(), "Le fichier \"" + first + "\" n'existe plus ou a été déplacé");
    EXPECT_EQ(RecentFiles(), Texts{host.PathOf("b.nx3")});
    EXPECT_EQ(Captions().size(), 2U);
}

// ---- Saving.

TEST_F(Files, SaveAsGivesTheGridItsNewFile) {
    Setting("Files", "LastSaved", "/jeux");
    Run("mnuFileNew");
    Set(1, "5|1|0");
    const std::string file = host.PathOf("neuf.nx3");
    host.ExpectFile(file);
    Run("mnuFileSaveAs");
    EXPECT_TRUE(host.questions[0].save);
    EXPECT_EQ(host.questions[0].folder, "/jeux");
    EXPECT_EQ(host.questions[0].proposedName, "Grille1");
    EXPECT_NE(ScriptedHost::ReadFile(file).find("\r\n1=5|1|0\r\n"), std::string::npos);
    EXPECT_EQ(Title() + "|" + PathPanel(), "Ninarix - neuf|" + file);
    EXPECT_EQ(RecentFiles(), Texts{file});
    EXPECT_EQ(Setting("Files", "LastSaved"), Folder());
    EXPECT_EQ(Setting("Files", "LastOpened"), "none");
}

TEST_F(Files, AFirstSaveAsksOnceALaterOneNever) {
    Run("mnuFileNew");
    Set(1, "5|1|0");
    const std::string file = host.PathOf("neuf.nx3");
    host.ExpectFile(file);
    Run("mnuFileSave");
    EXPECT_FALSE(Document().Modified());
    Set(1, "6|1|0");
    Run("mnuFileSave");
    EXPECT_EQ(host.questions.size(), 1U);
    EXPECT_TRUE(host.boxes.empty());
    EXPECT_EQ(RecentFiles(), Texts{file});
    EXPECT_NE(ScriptedHost::ReadFile(file).find("\r\n1=6|1|0\r\n"), std::string::npos);
}

TEST_F(Files, ACancelledFirstSaveIsSilent) {
    Run("mnuFileNew");
    Set(1, "5|1|0");
    host.ExpectFile("");
    Run("mnuFileSave");
    EXPECT_TRUE(host.boxes.empty() && RecentFiles().empty());
    EXPECT_EQ(host.beeps, 0);
    EXPECT_TRUE(Document().Modified());
    EXPECT_EQ(Active().Caption(), "Grille1");
}

TEST_F(Files, AFailedSaveKeepsTheOldFileAndName) {
    const std::string file = GridFile("a.nx3");
    OpenWithDialog(file);
    Set(2, "5|0|0");
    host.ExpectFile(host.PathOf("absent/b.nx3"));
    host.Expect(MessageButton::Ok);
    Run("mnuFileSaveAs");
    EXPECT_TRUE(LastBox().starts_with("Error Nr 75")) << LastBox();
    EXPECT_EQ(PathPanel(), file);
    EXPECT_TRUE(Document().Modified());
    EXPECT_EQ(RecentFiles(), Texts{file});
}

// ---- Dropping.

TEST_F(Files, DroppedFilesAreOpenedInOrderAfterTheDrop) {
    QMimeData data;
    data.setUrls(Urls({GridFile("c.nx3"), GridFile("a.nx3"), GridFile("b.nx3")}));
    EXPECT_TRUE(Drop(data));
    EXPECT_TRUE(Captions().empty()) << "the drag's source still waits";
    ServeEvents();
    EXPECT_EQ(Captions(), (Texts{"c", "a", "b"}));
    EXPECT_TRUE(RecentFiles().empty());
}

TEST_F(Files, AFileThatIsDroppedTwiceIsReloadedOnce) {
    const std::string file = GridFile("a.nx3");
    Open(file);
    Set(2, "5|0|0");
    QMimeData data;
    data.setUrls(Urls({file, file}));
    // While the question is open the same file comes once more.
    host.onShow = [&] {
        host.onShow = {};
        main->OpenGridFile(QString::fromStdString(file));
    };
    host.AnswerAlways(MessageButton::Ok);
    EXPECT_TRUE(Drop(data));
    ServeEvents();
    EXPECT_EQ(Captions(), Texts{"a"});
    EXPECT_EQ(State(1) + " " + State(2), "7|1|0 0|0|0");
    EXPECT_EQ(Title(), "Ninarix - a");
}

TEST_F(Files, AGridThatIsReplacedWhileItsSaveDialogIsOpenIsNotSaved) {
    const std::string file = GridFile("a.nx3");
    Open(file);
    Set(2, "5|0|0");
    host.onShow = [&] {
        host.onShow = {};
        host.AnswerAlways(MessageButton::Ok);
        main->OpenGridFile(QString::fromStdString(file));
    };
    host.ExpectFile(host.PathOf("b.nx3"));
    Run("mnuFileSaveAs");
    EXPECT_FALSE(std::filesystem::exists(host.PathOf("b.nx3")));
    EXPECT_EQ(Captions(), Texts{"a"});
}

// What is dragged onto a window that waits for a dialog is refused; what was dropped before waits for it.
TEST_F(Files, ADropAndADialogDoNotMeet) {
    QMimeData data;
    data.setUrls(Urls({GridFile("a.nx3")}));
    ASSERT_TRUE(Drop(data));
    QDialog dialog(main.get());
    dialog.setModal(true);
    dialog.show();
    ServeEvents();
    EXPECT_TRUE(Captions().empty());
    QMimeData later;
    later.setUrls(Urls({GridFile("b.nx3")}));
    EXPECT_FALSE(Drop(later));
    dialog.close();
    ServeEvents();
    EXPECT_EQ(Captions(), Texts{"a"});
}

TEST_F(Files, ADropWaitsForTheEndOfARun) {
    QMimeData data;
    data.setUrls(Urls({GridFile("a.nx3")}));
    ASSERT_TRUE(Drop(data));
    {
        const BusyGuard run(main.get());
        ServeEvents();
        EXPECT_TRUE(Captions().empty());
    }
    ServeEvents();
    EXPECT_EQ(Captions(), Texts{"a"});
    EXPECT_EQ(host.beeps, 0);
}

TEST_F(Files, WhatHoldsNoFileIsRefused) {
    QMimeData text;
    text.setText(QString::fromStdString(GridFile("a.nx3")));
    EXPECT_FALSE(Drop(text));
    QMimeData link;
    link.setUrls({QUrl("http://exemple.invalid/a.nx3")});
    EXPECT_FALSE(Drop(link));
    ServeEvents();
    EXPECT_TRUE(Captions().empty());
}

}  // namespace
