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
    // A command that asks for a file, and the file that it is given.
    void Run(const char* name) const { RunningProgram::Run(name); }
    void Run(const char* name, const std::string& file) {
        host.ExpectFile(file);
        Run(name);
    }
    // Drags files, or another kind of data, over the window and drops them unless it refuses.
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
    bool Drop(const Texts& paths) const {
        QList<QUrl> urls;
        for (const std::string& path : paths) urls.append(QUrl::fromLocalFile(QString::fromStdString(path)));
        QMimeData data;
        data.setUrls(urls);
        return Drop(data);
    }
    static bool Holds(const std::string& file, const char* record) {
        return ScriptedHost::ReadFile(file).find(std::string("\r\n1=") + record + "\r\n") !=
               std::string::npos;
    }
    std::string Folder() const { return host.folder.string(); }
};

// ---- Opening.

TEST_F(Files, AnOpenedFileIsShownAndRemembered) {
    Setting("Files", "LastOpened", "/jeux");
    Run("mnuGridConfig");
    const std::string file = GridFile("Été 1.nx3");
    Run("mnuFileOpen", file);
    EXPECT_EQ(host.questions[0].folder, "/jeux");
    EXPECT_FALSE(host.questions[0].save);
    EXPECT_EQ(Captions(), Texts{"Été 1"});
    EXPECT_EQ(State(1), "7|1|0");
    EXPECT_FALSE(Document().Modified());
    EXPECT_FALSE(main->InitialisationMode());
    EXPECT_EQ(RecentFiles(), Texts{file});
    EXPECT_EQ(Setting("Files", "LastOpened"), Folder());
    EXPECT_EQ(host.shapes.back(), platform::PointerShape::Default);
    Run("mnuFileOpen", "");
    EXPECT_EQ(Setting("Files", "LastOpened"), Folder());
}

TEST_F(Files, AFileThatCannotBeReadIsReportedAndDisturbsNothing) {
    Open(GridFile("a.nx3"));
    Run("mnuFileNew");
    Open(GridFile("z.nx3"));
    Activate(1);
    Run("mnuGridConfig");
    Active().ctrlCells(5).DoSelect();
    const std::pair<std::string, const char*> files[] = {
        {host.PathOf("absent.nx3"), "Error Nr 53"},    {host.folder.string(), "Error Nr 53"},
        {GridFile("b.nx3", "256|0|0"), "Error Nr 6 "}, {GridFile("c.nx3", "abc|0|0"), "Error Nr 13"},
        {GridFile("d.nx3", "1|0"), "Error Nr 9 "},
    };
    for (const auto& [file, error] : files) {
        host.Expect(MessageButton::Ok);
        Run("mnuFileOpen", file);
        EXPECT_TRUE(LastBox().starts_with(error)) << LastBox();
        EXPECT_TRUE(LastBox().ends_with("Module : wMain\r\nFunction : OpenGridFile")) << LastBox();
    }
    EXPECT_EQ(Captions(), (Texts{"a", "Grille1", "z"}));
    EXPECT_EQ(Title(), "Ninarix - Grille1") << "the active grid stays active";
    EXPECT_EQ(main->Cell(), &Active().ctrlCells(5));
    EXPECT_TRUE(main->InitialisationMode());
    EXPECT_TRUE(RecentFiles().empty());
    EXPECT_EQ(host.shapes.back(), platform::PointerShape::Default);
}

// ---- Opening twice.

TEST_F(Files, EveryWindowOfAnOpenFileIsReloadedOnlyOnRequest) {
    const std::string file = GridFile("a.nx3");
    Open(file);
    Run("mnuFileNew");
    Run("mnuFileSaveAs", file);  // a second window of the same file
    Set(2, "5|0|0");
    host.Expect(MessageButton::Ok);
    host.Expect(MessageButton::Cancel);
    EXPECT_FALSE(Open(file));
    EXPECT_EQ(
        LastBox(),
        "Ce fichier est déjà ouvert.\r\nVoulez-vous le recharger \r\net perdre toutes les modifications ?");
    EXPECT_EQ(host.boxes.back().style, 305);
    EXPECT_EQ(Captions(), (Texts{"a", "a"}));
    EXPECT_EQ(State(2), "5|0|0");
    host.Expect(MessageButton::Ok);
    host.Expect(MessageButton::Ok);
    EXPECT_TRUE(Open(file));
    EXPECT_EQ(Captions(), Texts{"a"});
    EXPECT_EQ(State(2), "0|0|0");
    EXPECT_EQ(PathPanel(), file);
}

TEST_F(Files, AReloadThatFailsLosesNothing) {
    const std::string file = GridFile("a.nx3");
    Open(file);
    Set(2, "5|0|0");
    GridFile("a.nx3", "abc|0|0");
    for (int n = 0; n < 2; ++n) {
        host.Expect(MessageButton::Ok);  // reload
        host.Expect(MessageButton::Ok);  // the report
        EXPECT_FALSE(Open(file));
        EXPECT_TRUE(LastBox().starts_with("Error Nr ")) << LastBox();
        EXPECT_EQ(State(1) + " " + State(2), "7|1|0 5|0|0");
        EXPECT_TRUE(Document().Modified());
        std::filesystem::remove(file);
    }
}

TEST_F(Files, AGridThatIsReplacedWhileAQuestionIsOpenIsLeftAlone) {
    const std::string file = GridFile("a.nx3");
    const auto replaceMeanwhile = [&] {
        host.onShow = [&] {
            host.onShow = {};
            main->OpenGridFile(QString::fromStdString(file));
        };
    };
    host.AnswerAlways(MessageButton::Ok);
    Open(file);
    replaceMeanwhile();
    EXPECT_TRUE(Drop({file, file}));
    ServeEvents();
    replaceMeanwhile();
    Run("mnuFileSaveAs", host.PathOf("b.nx3"));
    EXPECT_FALSE(std::filesystem::exists(host.PathOf("b.nx3")));
    EXPECT_EQ(Captions(), Texts{"a"});
    EXPECT_EQ(Title(), "Ninarix - a");
}

// ---- Recent files.

TEST_F(Files, ARecentFileComesToTheTopOrGoesWithItsFile) {
    const std::string first = GridFile("a.nx3");
    const std::string second = GridFile("b.nx3");
    Run("mnuFileOpen", first);
    Run("mnuFileOpen", second);
    Run("mnuFileClose");
    Run("mnuFileClose");
    Run("mnuFileMRU(2)");
    EXPECT_EQ(Captions(), Texts{"a"});
    EXPECT_EQ(RecentFiles(), (Texts{first, second}));
    std::filesystem::remove(second);
    host.Expect(MessageButton::Ok);
    Run("mnuFileMRU(2)");
    EXPECT_EQ(LastBox(), "Le fichier \"" + second + "\" n'existe plus ou a été déplacé");
    EXPECT_EQ(RecentFiles(), Texts{first});
    EXPECT_EQ(Captions().size(), 1U);
}

// ---- Saving.

TEST_F(Files, SaveAsGivesTheGridItsNewFile) {
    Setting("Files", "LastSaved", "/jeux");
    Run("mnuFileNew");
    Set(1, "5|1|0");
    const std::string file = host.PathOf("neuf.nx3");
    Run("mnuFileSaveAs", file);
    EXPECT_TRUE(host.questions[0].save);
    EXPECT_EQ(host.questions[0].folder + host.questions[0].proposedName, "/jeuxGrille1");
    EXPECT_TRUE(Holds(file, "5|1|0"));
    EXPECT_EQ(Title() + "|" + PathPanel(), "Ninarix - neuf|" + file);
    EXPECT_EQ(RecentFiles(), Texts{file});
    EXPECT_EQ(Setting("Files", "LastSaved") + Setting("Files", "LastOpened"), Folder() + "none");
    Set(1, "6|1|0");
    host.Expect(MessageButton::Ok);
    Run("mnuFileSaveAs", host.PathOf("absent/b.nx3"));
    EXPECT_TRUE(LastBox().starts_with("Error Nr 75")) << LastBox();
    EXPECT_EQ(PathPanel(), file) << "a failed save keeps name and file";
    EXPECT_TRUE(Document().Modified());
    EXPECT_EQ(RecentFiles(), Texts{file});
}

TEST_F(Files, AFirstSaveAsksOnceALaterOneNever) {
    Run("mnuFileNew");
    Set(1, "5|1|0");
    Run("mnuFileSave", "");
    EXPECT_TRUE(Document().Modified());
    EXPECT_TRUE(host.boxes.empty() && RecentFiles().empty()) << "a cancelled save is silent";
    const std::string file = host.PathOf("neuf.nx3");
    Run("mnuFileSave", file);
    EXPECT_FALSE(Document().Modified());
    Set(1, "6|1|0");
    Run("mnuFileSave");
    EXPECT_TRUE(Holds(file, "6|1|0"));
    EXPECT_EQ(RecentFiles(), Texts{file});
}

// ---- Dropping.

TEST_F(Files, DroppedFilesAreOpenedInOrderAfterTheDrop) {
    EXPECT_TRUE(Drop({GridFile("c.nx3"), GridFile("a.nx3"), GridFile("b.nx3")}));
    EXPECT_TRUE(Captions().empty()) << "the drag's source still waits";
    ServeEvents();
    EXPECT_EQ(Captions(), (Texts{"c", "a", "b"}));
    EXPECT_TRUE(RecentFiles().empty());
    QMimeData text;
    text.setText(QString::fromStdString(GridFile("d.nx3")));
    EXPECT_FALSE(Drop(text));
    QMimeData link;
    link.setUrls({QUrl("http://exemple.invalid/a.nx3")});
    EXPECT_FALSE(Drop(link));
}

// What is dragged onto a window that waits for a dialog is refused; what was dropped before waits for it.
TEST_F(Files, ADropMeetsNeitherADialogNorARun) {
    ASSERT_TRUE(Drop({GridFile("a.nx3")}));
    QDialog dialog(main.get());
    dialog.setModal(true);
    dialog.show();
    ServeEvents();
    EXPECT_TRUE(Captions().empty());
    EXPECT_FALSE(Drop({GridFile("b.nx3")}));
    dialog.close();
    ServeEvents();
    EXPECT_EQ(Captions(), Texts{"a"});
    ASSERT_TRUE(Drop({GridFile("c.nx3")}));
    {
        const BusyGuard run(main.get());
        ServeEvents();
        EXPECT_EQ(Captions().size(), 1U);
    }
    ServeEvents();
    EXPECT_EQ(Captions(), (Texts{"a", "c"}));
    EXPECT_EQ(host.beeps, 0);
}

}  // namespace
