// Start, shutdown and the windows inside the main window.

#include "shell/wMain.h"

#include <QTest>
#include <QTimer>

#include "Program.h"
#include "settings/ColorTable.h"
#include "shell/wSplash.h"

namespace {

using platform::MessageButton;

class StartUp : public Program {
  protected:
    bool SplashShown() const {
        const auto* splash = main->findChild<wSplash*>();
        return splash && splash->isVisible();
    }
};

TEST_F(StartUp, OneFileIsOpenedOfTheWholeCommandLine) {
    const std::string file = GridFile("ma grille.nx3");
    const std::string quoted = GridFile("ma fin\"");
    for (const auto& [line, caption] : {std::pair{'"' + file + '"', "ma grille"},
                                        {file, "ma grille"},
                                        {quoted, "ma fin\""},
                                        {'"' + file, ""},
                                        {std::string("\""), ""}}) {
        const std::string expected = caption;
        host.commandLine = line;
        if (expected.empty()) host.Expect(MessageButton::Ok);
        Start();
        EXPECT_EQ(Captions(), expected.empty() ? Texts{} : Texts{expected}) << line;
        EXPECT_TRUE(RecentFiles().empty());
        EXPECT_TRUE(main->isVisible());
    }
    EXPECT_TRUE(LastBox().starts_with("Error Nr 53")) << LastBox();
}

// ---- Splash.

TEST_F(StartUp, OnlyOneInTheSettingsKeepsTheSplashAway) {
    for (const auto& [setting, shown] : {std::pair{"1", false}, {"0", true}, {"2", true}, {"", true}}) {
        Setting("Options", "NoSplash", setting);
        Start();
        EXPECT_EQ(SplashShown(), shown) << setting;
    }
    host.commandLine = GridFile("a.nx3");
    Start();
    EXPECT_TRUE(SplashShown());
}

TEST_F(StartUp, TheSplashIsClosedByItsTimerTheAboutBoxByItsReader) {
    Setting("Options", "NoSplash", "0");
    Start();
    auto* splash = main->findChild<wSplash*>();
    QTest::mouseClick(splash, Qt::LeftButton);
    QTest::keyClick(splash, Qt::Key_Escape);
    EXPECT_TRUE(SplashShown());
    EXPECT_EQ(Child<QLabel>(*splash, "lblVersion").text(), "12.34");
    splash->tmrClose().setInterval(0);
    splash->tmrClose().start();
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    ServeEvents();
    EXPECT_EQ(main->findChild<wSplash*>(), nullptr);
    for (const bool byMouse : {true, false}) {
        Run("mnuHelpAbout");
        EXPECT_TRUE(SplashShown());
        QTest::keyClick(main->findChild<wSplash*>(), Qt::Key_A);
        EXPECT_TRUE(SplashShown());
        if (byMouse) {
            QTest::mouseClick(main->findChild<wSplash*>(), Qt::LeftButton);
        } else {
            QTest::keyClick(main->findChild<wSplash*>(), Qt::Key_Escape);
        }
        EXPECT_FALSE(SplashShown());
    }
}

// ---- Settings.

TEST_F(StartUp, AFirstStartWritesTheColoursBeforeItReadsThem) {
    ColorTable::Shared() = {};
    IniParamProcs::DeleteIniParam("Options", "Color_0");
    Start();
    EXPECT_EQ(Setting("Options", "Color_0"), "16777215");
    EXPECT_EQ(Setting("Options", "Color_3"), "255");
    EXPECT_EQ(ColorTable::Shared(), ColorTable::Defaults);
}

TEST_F(StartUp, TheModesOfTheLastTimeComeBack) {
    Setting("Options", "GridHelpNone", "1");
    Setting("Options", "NoAutoMasks", "1");
    Start();
    EXPECT_TRUE(main->MasksHidden() && main->ManualMasks());
    EXPECT_TRUE(Tool("mnuGridHelpNone").isChecked() && Tool("mnuGridNoAutoMasks").isChecked());
    EXPECT_EQ(Setting("Options", "GridHelpNone"), "1");
    EXPECT_EQ(Setting("Options", "NoAutoMasks"), "1");
    EXPECT_FALSE(main->InitialisationMode());
}

TEST_F(StartUp, ASettingThatCannotBeReadEndsTheSequenceNotTheProgram) {
    Setting("Options", "NoAutoMasks", "abc");
    host.Expect(MessageButton::Ok);
    Start();
    EXPECT_TRUE(LastBox().starts_with("Error Nr 13")) << LastBox();
    EXPECT_TRUE(LastBox().ends_with("Object : MDIForm\r\nEvent : Load")) << LastBox();
    EXPECT_TRUE(main->isVisible());
}

TEST_F(StartUp, RecentFilesSurviveARestart) {
    for (int i = 1; i <= 10; ++i) Setting("MRU", std::to_string(i).c_str(), "/jeux/" + std::to_string(i));
    Start();
    EXPECT_EQ(RecentFiles().size(), 9U);
    EXPECT_EQ(RecentFiles().front(), "/jeux/1");
    main->close();
    EXPECT_EQ(Setting("MRU", "9"), "/jeux/9");
    EXPECT_EQ(Setting("MRU", "10"), "none");
}

// ---- The windows.

class Windows : public RunningProgram {};

TEST_F(Windows, FillTheAreaAtEverySize) {
    Run("mnuFileNew");
    Run("mnuFileNew");
    for (const QSize size : {QSize(700, 600), QSize(1200, 800), QSize(700, 650)}) {
        main->resize(size);
        ServeEvents();
        for (const OpenGrid& grid : main->Grids()) {
            EXPECT_EQ(grid->parentWidget()->geometry(), Area().viewport()->rect());
        }
    }
}

TEST_F(Windows, TitleAndPathFollowTheActiveGrid) {
    const std::string file = GridFile("a.nx3");
    EXPECT_EQ(Title() + "|" + PathPanel(), "Ninarix|");
    Run("mnuFileNew");
    EXPECT_EQ(Title() + "|" + PathPanel(), "Ninarix - Grille1|");
    Open(file);
    EXPECT_EQ(Title() + "|" + PathPanel(), "Ninarix - a|" + file);
    Activate(0);
    EXPECT_EQ(Title() + "|" + PathPanel(), "Ninarix - Grille1|");
    Run("mnuFileClose");
    EXPECT_EQ(Title() + "|" + PathPanel(), "Ninarix - a|" + file);
    Run("mnuFileClose");
    EXPECT_EQ(Title() + "|" + PathPanel(), "Ninarix|");
}

TEST_F(Windows, EachKeepsItsOwnCurrentCell) {
    Run("mnuFileNew");
    Active().ctrlCells(5).DoSelect();
    Run("mnuFileNew");
    EXPECT_EQ(main->Cell(), nullptr);
    Active().ctrlCells(80).DoSelect();
    Activate(0);
    EXPECT_EQ(main->Cell(), &main->Grids()[0]->ctrlCells(5));
    main->Grids()[1]->parentWidget()->close();
    EXPECT_EQ(main->Cell(), &Active().ctrlCells(5)) << "closing an inactive one changes nothing";
    EXPECT_EQ(Title(), "Ninarix - Grille1");
    Run("mnuFileClose");
    EXPECT_EQ(main->Cell(), nullptr);
}

TEST_F(Windows, QuittingClosesNoneUntilEveryQuestionIsAnswered) {
    for (int n = 0; n < 3; ++n) {
        Run("mnuFileNew");
        Set(1, "5|1|0");
    }
    host.Expect(MessageButton::No);
    host.Expect(MessageButton::Cancel);
    Run("mnuFileQuit");
    EXPECT_TRUE(main->isVisible());
    EXPECT_EQ(Captions(), (Texts{"Grille1", "Grille2", "Grille3"}));
    EXPECT_EQ(Title(), "Ninarix - Grille2") << "who is asked about is shown";
    // The first answer is forgotten: the next time every grid is asked about again.
    for (int i = 0; i < 3; ++i) host.Expect(MessageButton::No);
    Run("mnuFileQuit");
    EXPECT_FALSE(main->isVisible());
}

}  // namespace
