#include "document/wGrid.h"

#include <QComboBox>
#include <QProcess>
#include <QPushButton>
#include <QTest>
#include <algorithm>
#include <filesystem>
#include <utility>

#include "FakeFrame.h"
#include "settings/IniParamProcs.h"

namespace {

using platform::MessageButton;

class Grid : public GridWindow {};

// ---- Name and contents.

TEST_F(Grid, IsNamedAfterItsFileWithoutFolderAndExtension) {
    const std::pair<const char*, const char*> names[] = {{"/jeux/Facile.2.nx3", "Facile.2"},
                                                         {"C:\\Jeux\\Dur.nx3", "Dur"},
                                                         {"/jeux.d/sans-point", "sans-point"},
                                                         {"/jeux/a[*]b.nx3", "a[*]b"}};
    for (const auto& [path, caption] : names) {
        grid->Path(path);
        EXPECT_EQ(grid->Caption(), caption);
        EXPECT_EQ(grid->Path(), path);
    }
    // The toolkit's mark of modified windows, written twice, shows once.
    EXPECT_EQ(grid->windowTitle(), "a[*][*]b");
}

TEST_F(Grid, ACopyHasTheCellsAndItsOwnName) {
    grid->Path("/jeux/a.nx3");
    Set(1, "5|1|0");
    Set(2, "0|0|1022");
    wGrid copy(frame);
    copy.ctrlCells(3).Value(9);
    copy.CopyFrom(*grid, "a (1)");
    EXPECT_EQ(RecordText(*copy.Grid()->Cells(1)), "5|1|0");
    EXPECT_EQ(RecordText(*copy.Grid()->Cells(2)), "0|0|1022");
    EXPECT_EQ(RecordText(*copy.Grid()->Cells(3)), "0|0|0");
    EXPECT_FALSE(copy.Grid()->Cells(9)->Avail(5));
    EXPECT_EQ(copy.Caption(), "a (1)");
    EXPECT_EQ(copy.Path(), "");
    copy.ctrlCells(1).Value(6);
    EXPECT_EQ(State(1), "5|1|0");
}

TEST_F(Grid, ReinitAsksThenKeepsOnlyTheGivens) {
    Set(1, "5|1|4");
    Set(2, "6|0|36");
    Set(3, "0|0|8");
    host.Expect(MessageButton::Cancel);
    grid->Reinit();
    EXPECT_EQ(State(2) + " " + State(3), "6|0|36 0|0|8");
    EXPECT_EQ(LastBox(),
              "Attention, vous allez rétablir cette grille à son état initial.\r\nÊtes-vous sûr ?");
    EXPECT_EQ(host.boxes.back().style, 305);
    host.Expect(MessageButton::Ok);
    grid->Reinit();
    EXPECT_EQ(State(1) + " " + State(2) + " " + State(3), "5|1|4 0|0|0 0|0|0");
    EXPECT_TRUE(Cell(9).Avail(6));
}

TEST_F(Grid, PrintsTheCandidatesThatItShows) {
    const std::string page = host.PathOf("page.pdf");
    const auto digitsOnPaper = [&] {
        host.ExpectFile(page);
        InNextDialog([](QWidget& dialog) {
            Child<QComboBox>(dialog, "cboPrinter").setCurrentText("Fichier PDF");
            Child<QPushButton>(dialog, "cmdCommands(1)").click();
        });
        grid->PrintGrid();
        QProcess reader;
        reader.start("pdftotext", {QString::fromStdString(page), "-"});
        EXPECT_TRUE(reader.waitForFinished());
        const QByteArray text = reader.readAllStandardOutput();
        return std::count_if(text.begin(), text.end(), [](char c) { return c >= '1' && c <= '9'; });
    };
    SetPuzzle(1, 2);  // one candidate in each of the two cells that stay empty
    EXPECT_EQ(digitsOnPaper(), 81);
    frame.hidden = true;
    grid->UpdateGrid();
    EXPECT_EQ(digitsOnPaper(), 79);
}

// ---- Selection and keys.

TEST_F(Grid, AClickMovesTheSelectionAndItsColour) {
    IniParamProcs::WriteIniParam("Options", "Color_0", "16711680");
    IniParamProcs::WriteIniParam("Options", "Color_1", "255");
    QTest::mouseClick(&grid->ctrlCells(40), Qt::LeftButton);
    QTest::mouseClick(&grid->ctrlCells(41), Qt::LeftButton);
    EXPECT_EQ(frame.cell, &grid->ctrlCells(41));
    EXPECT_EQ(grid->ctrlCells(41).BackColor(), QColor(Qt::red));
    EXPECT_EQ(grid->ctrlCells(40).BackColor(), QColor(Qt::blue));
}

TEST_F(Grid, TheMouseReachesACellThroughTheLines) {
    const QPoint boxCorner = grid->ctrlCells(31).geometry().topLeft();
    QTest::mouseClick(grid->childAt(boxCorner), Qt::LeftButton);
    EXPECT_EQ(frame.cell, &grid->ctrlCells(31));
}

TEST_F(Grid, ArrowsMoveByOneCellAndStopAtTheBorders) {
    struct Move {
        int from;
        Qt::Key key;
        int to;
    };
    const Move moves[] = {{41, Qt::Key_Right, 42}, {41, Qt::Key_Left, 40},  {41, Qt::Key_Down, 50},
                          {41, Qt::Key_Up, 32},    {9, Qt::Key_Right, 9},   {73, Qt::Key_Left, 73},
                          {10, Qt::Key_Left, 10},  {72, Qt::Key_Right, 72}, {5, Qt::Key_Up, 5},
                          {77, Qt::Key_Down, 77},  {1, Qt::Key_Left, 1},    {81, Qt::Key_Right, 81},
                          {8, Qt::Key_Right, 9},   {74, Qt::Key_Left, 73},  {64, Qt::Key_Down, 73}};
    for (const Move& move : moves) {
        QTest::mouseClick(&grid->ctrlCells(move.from), Qt::LeftButton);
        QTest::keyClick(grid->focusWidget(), move.key);
        EXPECT_EQ(frame.cell, &grid->ctrlCells(move.to)) << move.from;
        EXPECT_EQ(grid->focusWidget(), frame.cell);
        EXPECT_EQ(frame.cell->BackColor(), QColor(Qt::yellow));
    }
}

TEST_F(Grid, OnlyDigitsAndDeleteEnterSomething) {
    QTest::mouseClick(&grid->ctrlCells(5), Qt::LeftButton);
    QTest::keyClicks(grid->focusWidget(), "0a1 9-");
    for (const int typed : {0xE9, 0x661, int{'0'}, '9' + 1}) emit grid->ctrlCells(5).Keypress(typed);
    QTest::keyClick(grid->focusWidget(), Qt::Key_Delete);
    QTest::keyClick(grid->focusWidget(), Qt::Key_5, Qt::KeypadModifier);
    QTest::keyClick(grid->focusWidget(), Qt::Key_Backspace);
    EXPECT_EQ(frame.entered, (std::vector<int>{1, 9, 0, 5}));
}

TEST_F(Grid, ArrowsNeverMoveInAnotherWindowsCell) {
    wGrid other(frame);
    other.ctrlCells(41).DoSelect();
    QTest::keyClick(&grid->ctrlCells(7), Qt::Key_Right);
    EXPECT_EQ(frame.cell, &grid->ctrlCells(7));
}

// ---- Closing.

class Closing : public GridWindow {
  protected:
    Closing() {
        grid->Caption("Grille1");
        Set(1, "5|0|0");
    }
    // True when the window went.
    bool Close() {
        grid->close();
        ServeEvents();
        return !grid;
    }
    const std::string file = host.PathOf("a.nx3");
};

TEST_F(Closing, AsksNothingAboutAGridThatIsNotModified) {
    grid->Grid()->Modified(false);
    EXPECT_TRUE(Close());
    EXPECT_TRUE(host.boxes.empty());
}

TEST_F(Closing, CancelKeepsTheWindow) {
    host.Expect(MessageButton::Cancel);
    EXPECT_FALSE(Close());
    EXPECT_EQ(LastBox(), "La grille Grille1 a été modifiée.\r\nVoulez-vous la sauvegarder ?");
    EXPECT_EQ(host.boxes.back().style, 563);
    EXPECT_EQ(State(1), "5|0|0");
}

TEST_F(Closing, YesSavesToTheGridsOwnFile) {
    grid->Path(QString::fromStdString(file));
    host.Expect(MessageButton::Yes);
    EXPECT_TRUE(Close());
    EXPECT_NE(ScriptedHost::ReadFile(file).find("\r\n1=5|0|0\r\n"), std::string::npos);
}

TEST_F(Closing, YesAsksForAFileWhenThereIsNone) {
    IniParamProcs::WriteIniParam("Files", "LastOpened", "/jeux");
    host.Expect(MessageButton::Yes);
    host.ExpectFile("");
    EXPECT_FALSE(Close()) << "no file was chosen";
    EXPECT_TRUE(host.questions[0].save);
    EXPECT_EQ(host.questions[0].folder, "/jeux");
    EXPECT_EQ(host.questions[0].proposedName, "Grille1");
    EXPECT_EQ(host.questions[0].filter, "Grilles Ninarix 3|*.nx3|Tous les fichiers|*.*");
    host.Expect(MessageButton::Yes);
    host.ExpectFile(file);
    EXPECT_TRUE(Close());
    EXPECT_NE(ScriptedHost::ReadFile(file).find("\r\n1=5|0|0\r\n"), std::string::npos);
}

TEST_F(Closing, AFailedSaveKeepsTheWindow) {
    grid->Path(QString::fromStdString(host.PathOf("absent/a.nx3")));
    host.Expect(MessageButton::Yes);
    host.Expect(MessageButton::Ok);
    EXPECT_FALSE(Close());
    EXPECT_TRUE(LastBox().starts_with("Error Nr 75")) << LastBox();
    EXPECT_EQ(State(1), "5|0|0");
}

}  // namespace
