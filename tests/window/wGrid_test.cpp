#include "document/window/wGrid.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTest>
#include <algorithm>
#include <functional>
#include <set>

#include "FakeFrame.h"
#include "document/window/BusyGuard.h"
#include "document/window/OpenGrid.h"
#include "settings/IniParamProcs.h"
#include "support/DigitReader.h"

namespace {

using IniParamProcs::WriteIniParam;
using platform::MessageButton;
using platform::PointerShape;

// ---- What is on the picture.

class Picture : public GridWindow {
  protected:
    Picture() {
        for (std::size_t i = 0; i < colors.size(); ++i) {
            WriteIniParam("Options", "Color_" + std::to_string(i), std::to_string(colors[i]));
        }
        grid->SetColors(colors);
    }
    QImage Render(double scale = 1) const {
        QImage image(grid->size() * scale, QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        grid->render(&image);
        image.setDevicePixelRatio(1);
        return image;
    }
    // Every size and scale that a window is likely to have; sides that nine divides. `line`: what of a cell's
    // edge may be covered.
    void AtEverySize(const std::function<void(const QImage& image, int line)>& look) {
        for (const QSize size : {QSize(180, 180), QSize(576, 657), QSize(1008, 900)}) {
            for (const int scale : {1, 2}) {
                SCOPED_TRACE(testing::Message() << size.width() << " x " << scale);
                grid->resize(size);
                ServeEvents();
                look(Render(scale), 2 * scale);
            }
        }
    }

    // Red in the low byte: pale paper, yellow selection, black lines, red givens, blue and green digits.
    const ColorTable::Colors colors{0xE0FFFF, 0x00FFFF, 0, 0x0000FF, 0xFF0000, 0, 0x008000};
    const QColor paper{0xFF, 0xFF, 0xE0};
};

TEST_F(Picture, ShowsEveryValueInTheColourOfItsKind) {
    for (int i = 1; i <= 81; ++i) Set(i, std::to_string(SolutionAt(i)) + (i % 2 == 0 ? "|1|0" : "|0|0"));
    AtEverySize([&](const QImage& image, int line) {
        for (int i = 1; i <= 81; ++i) {
            const auto found = DigitReader::Read(image, DigitReader::CellPart(image, i, line), paper);
            EXPECT_EQ(found.digit, SolutionAt(i)) << i;
            EXPECT_EQ(found.ink, i % 2 == 0 ? QColor(Qt::red) : QColor(Qt::blue)) << i;
            EXPECT_NEAR(found.place.center().x(), 0.5, 0.1) << i;
            EXPECT_NEAR(found.place.center().y(), 0.5, 0.12) << i;
            EXPECT_GT(found.place.height(), 0.5) << i;
        }
    });
}

TEST_F(Picture, ShowsTheCandidatesThatAreLeftEachInItsNinth) {
    Set(41, "5|1|0");
    for (const int i : {1, 9, 30, 32, 50, 77, 81}) Set(i, "0|0|" + std::to_string(i * 12 & 1022));
    int digitsRead = 0;
    AtEverySize([&](const QImage& image, int line) {
        for (int n = 0; n < 9 * 81; ++n) {
            const int i = n / 9 + 1;
            const int d = n % 9 + 1;
            if (i == 41) continue;
            const auto found = DigitReader::Read(image, DigitReader::CandidatePart(image, i, d, line), paper);
            const bool shown = document.Grid().Cells(i)->Avail(d) && !document.Grid().Cells(i)->Inhib(d);
            EXPECT_EQ(found.digit != 0, shown) << i << ": " << d;
            if (!shown) continue;
            EXPECT_GT(found.ink.green(), found.ink.red()) << i << ": " << d;
            EXPECT_NEAR(found.place.center().x(), 0.5, 0.3) << i << ": " << d;
            EXPECT_NEAR(found.place.center().y(), 0.5, 0.3) << i << ": " << d;
            // The smallest ones have too few pixels to tell a 5 from a 6.
            if (found.place.height() * image.height() / 27 <= 12) continue;
            EXPECT_EQ(found.digit, d) << i;
            ++digitsRead;
        }
    });
    EXPECT_GT(digitsRead, 1000);
    frame.hidden = true;
    grid->UpdateGrid();
    const QImage image = Render();
    for (int i = 1; i <= 81; ++i) {
        EXPECT_EQ(DigitReader::Read(image, DigitReader::CellPart(image, i, 2), paper).digit, i == 41 ? 5 : 0)
            << i;
    }
}

TEST_F(Picture, MarksTheSelectedCellAlone) {
    for (const int i : {40, 41, 81}) {
        QTest::mouseClick(&grid->ctrlCells(i), Qt::LeftButton);
        if (i == 41) grid->SetColors(colors);  // confirmed anew, as by the options dialog
        const QImage image = Render();
        for (int k = 1; k <= 81; ++k) {
            const QColor corner = image.pixelColor(DigitReader::CellPart(image, k, 3).topLeft());
            EXPECT_EQ(corner, k == i ? QColor(Qt::yellow) : paper) << k;
        }
    }
}

TEST_F(Picture, IsPaintedAgainWhereSomethingChanged) {
    struct Painted : QObject {
        bool eventFilter(QObject* cell, QEvent* event) override {
            if (event->type() == QEvent::Paint)
                cells.insert(static_cast<ctrlCell*>(cell)->mCell()->GridIndex());
            return false;
        }
        std::set<int> cells;
    } painted;
    const auto cellsPaintedAfter = [&](const std::function<void()>& change) {
        ServeEvents();
        painted.cells.clear();
        change();
        ServeEvents();
        return painted.cells;
    };
    for (int i = 1; i <= 81; ++i) grid->ctrlCells(i).installEventFilter(&painted);
    EXPECT_EQ(
        cellsPaintedAfter([&] { Set(41, "5|0|0"); }),
        (std::set<int>{5, 14, 23, 31, 32, 33, 37, 38, 39, 40, 41, 42, 43, 44, 45, 49, 50, 51, 59, 68, 77}));
    grid->ctrlCells(7).DoSelect();
    EXPECT_EQ(cellsPaintedAfter([&] { grid->ctrlCells(8).DoSelect(); }), (std::set<int>{7, 8}));
    EXPECT_EQ(cellsPaintedAfter([&] { Set(41, "5|1|0"); }), (std::set<int>{41}));
}

TEST_F(Picture, DrawsThickLinesAroundBoxesAndThinOnesInside) {
    frame.hidden = true;
    grid->UpdateGrid();
    grid->resize(450, 540);
    ServeEvents();
    const QImage image = Render();
    for (int k = 0; k <= 9; ++k) {
        int across = 0;
        int down = 0;
        for (int offset = -6; offset <= 6; ++offset) {
            const QPoint onRow(k * 50 + offset, 30);
            const QPoint onColumn(25, k * 60 + offset);
            across += image.valid(onRow) && image.pixelColor(onRow) == Qt::black ? 1 : 0;
            down += image.valid(onColumn) && image.pixelColor(onColumn) == Qt::black ? 1 : 0;
        }
        // Half of the frame lies outside.
        const int expected = k == 0 || k == 9 ? 2 : k % 3 == 0 ? 4 : 1;
        EXPECT_EQ(across, expected) << k;
        EXPECT_EQ(down, expected) << k;
    }
}

// ---- Selection and keys.

class Grid : public GridWindow {};

TEST_F(Grid, ACellIsChosenByMouseTabArrowsAndKeys) {
    const auto expectChosen = [this](int index) {
        EXPECT_EQ(frame.cell, &grid->ctrlCells(index)) << index;
        EXPECT_EQ(grid->CurrentCell(), &grid->ctrlCells(index)) << index;
    };
    // Before a cell was chosen, or while another window's is, keys begin where the keyboard is.
    wGrid other(frame, std::make_unique<GridDocument>());
    for (ctrlCell* elsewhere : {static_cast<ctrlCell*>(nullptr), &other.ctrlCells(41)}) {
        frame.cell = elsewhere;
        QTest::keyClick(&grid->ctrlCells(7), Qt::Key_Right);
        expectChosen(7);
    }
    QTest::mouseClick(grid->childAt(grid->ctrlCells(31).geometry().topLeft()), Qt::LeftButton);
    expectChosen(31);  // through the line that lies above it
    QTest::mouseClick(&grid->ctrlCells(1), Qt::RightButton);
    expectChosen(31);
    QApplication::setActiveWindow(grid);
    grid->ctrlCells(5).setFocus(Qt::TabFocusReason);
    expectChosen(5);
    grid->ctrlCells(4).setFocus(Qt::BacktabFocusReason);
    expectChosen(4);
    struct Move {
        int from;
        Qt::Key key;
        int to;
    };
    const Move moves[] = {{41, Qt::Key_Right, 42}, {41, Qt::Key_Left, 40},  {41, Qt::Key_Down, 50},
                          {41, Qt::Key_Up, 32},    {9, Qt::Key_Right, 9},   {73, Qt::Key_Left, 73},
                          {10, Qt::Key_Left, 10},  {72, Qt::Key_Right, 72}, {5, Qt::Key_Up, 5},
                          {77, Qt::Key_Down, 77},  {8, Qt::Key_Right, 9},   {74, Qt::Key_Left, 73},
                          {64, Qt::Key_Down, 73},  {18, Qt::Key_Up, 9},     {2, Qt::Key_Left, 1}};
    for (const Move& move : moves) {
        QTest::mouseClick(&grid->ctrlCells(move.from), Qt::LeftButton);
        QTest::keyClick(grid->focusWidget(), move.key);
        expectChosen(move.to);
        EXPECT_EQ(grid->focusWidget(), frame.cell);
    }
}

TEST_F(Grid, OnlyDigitsAndDeleteEnterSomething) {
    QTest::keyClicks(&grid->ctrlCells(7), "0a1 9-");
    EXPECT_EQ(frame.cell, &grid->ctrlCells(7)) << "the cell that is typed into is the current one";
    for (const int typed : {0xE9, 0x661, '9' + 1}) emit grid->ctrlCells(5).Keypress(typed);
    QTest::keyClick(grid->focusWidget(), Qt::Key_Delete);
    QTest::keyClick(grid->focusWidget(), Qt::Key_5, Qt::KeypadModifier);
    EXPECT_EQ(frame.entered, (std::vector<int>{1, 9, 0, 5}));
}

TEST_F(Grid, ActivationShowsNameAndCurrentCell) {
    grid->Path("/jeux/a[*]b.nx3");
    // The toolkit's mark of modified windows, written twice, shows once.
    EXPECT_EQ(grid->windowTitle(), "a[*][*]b");
    grid->ctrlCells(5).DoSelect();
    frame.cell = nullptr;
    grid->Form_Activate();
    EXPECT_EQ(frame.shown, "/jeux/a[*]b.nx3|a[*]b");
    EXPECT_EQ(frame.cell, &grid->ctrlCells(5));
    grid->Form_Deactivate();
    EXPECT_EQ(frame.shown, "|");
}

TEST_F(Grid, PrintsTheCandidatesThatItShows) {
    const std::string page = host.PathOf("page.pdf");
    SetPuzzle(document, 1, 2);  // one candidate in each of the two cells that stay empty
    for (const auto& [hidden, digits] : {std::pair{false, 81}, {true, 79}}) {
        frame.hidden = hidden;
        grid->ShowCells();
        host.ExpectFile(page);
        InNextDialog([](QWidget& dialog) {
            Child<QComboBox>(dialog, "cboPrinter").setCurrentText("Fichier PDF");
            Child<QPushButton>(dialog, "cmdCommands(1)").click();
        });
        grid->PrintGrid();
        QProcess reader;
        reader.start("pdftotext", {QString::fromStdString(page), "-"});
        ASSERT_TRUE(reader.waitForFinished());
        EXPECT_EQ(std::ranges::count_if(reader.readAllStandardOutput(),
                                        [](char c) { return c >= '1' && c <= '9'; }),
                  digits);
    }
}

// ---- History.

TEST_F(Grid, UndoAndRedoSelectTheChangedCellOrSayThatThereIsNothing) {
    const auto expectRefusal = [this](void (wGrid::*step)(), const char* text) {
        host.Expect(MessageButton::Ok);
        ((*grid).*step)();
        EXPECT_EQ(LastBox(), text);
        EXPECT_EQ(host.boxes.back().style, 64);
    };
    grid->SetFocus();
    expectRefusal(&wGrid::Undo, "Rien à annuler");
    document.EnterValue(50, 7, {});
    document.EnterValue(3, 1, {});
    expectRefusal(&wGrid::Redo, "Rien à rétablir");
    for (const int changed : {3, 50}) {
        const int refreshes = frame.refreshes;
        grid->Undo();
        EXPECT_EQ(frame.cell, &grid->ctrlCells(changed));
        EXPECT_EQ(grid->focusWidget(), &grid->ctrlCells(changed));
        EXPECT_GT(frame.refreshes, refreshes) << "the palette shows the cell as it was";
        EXPECT_EQ(grid->ctrlCells(changed).lblValue().text, "");
    }
    // With the keyboard elsewhere undo only beeps; redo asks for no focus.
    QLineEdit elsewhere(grid);
    elsewhere.show();
    elsewhere.setFocus();
    grid->Redo();
    EXPECT_EQ(State(50), "7|0|0");
    EXPECT_TRUE(grid->ctrlCells(59).lblMask(7).visible == false);
    elsewhere.setFocus();
    grid->Undo();
    EXPECT_EQ(host.beeps, 1);
    EXPECT_EQ(State(50), "7|0|0");
}

// ---- The engine.

TEST_F(Grid, ARunShowsItsProgressAndRefusesEverythingElse) {
    SetPuzzle(document, 1, 9);
    int yields = 0;
    host.onYield = [&] {
        if (++yields > 1) return;
        host.beeps = 0;
        EXPECT_TRUE(Child<wCancel>(*grid, "wCancel").isVisible());
        grid->SolveGrid();
        EXPECT_EQ(grid->TestGrid(), 0);
        grid->close();
        EXPECT_EQ(host.beeps, 3);
        EXPECT_EQ(host.shapes.back(), PointerShape::Hourglass);
    };
    Set(1, "9|0|0");
    EXPECT_EQ(grid->TestGrid(), 1);
    EXPECT_GT(yields, 0);
    EXPECT_EQ(host.shapes.back(), PointerShape::Default);
    const int tested = yields;
    Set(2, "9|0|0");
    EXPECT_EQ(grid->TestGrid(), 2);
    EXPECT_EQ(yields, tested) << "the solution is known";
    yields = 0;
    grid->SolveGrid();
    EXPECT_GT(yields, 0);
    EXPECT_EQ(grid->ctrlCells(1).lblValue().text, "1");
    EXPECT_EQ(grid->findChild<wCancel*>(), nullptr);
    EXPECT_FALSE(OpenGrid(grid)->Closed());
}

TEST_F(Grid, ACancelledSolveLeavesTheGivensAndReinitAsksFirst) {
    // No two givens clash, but no digit is left for cell 1.
    for (int i = 2; i <= 9; ++i) Set(i, std::to_string(i - 1) + "|1|0");
    Set(28, "9|1|0");
    Set(81, "5|0|36");
    host.Expect(MessageButton::Cancel);
    grid->Reinit();
    EXPECT_EQ(State(81), "5|0|36");
    EXPECT_EQ(LastBox(),
              "Attention, vous allez rétablir cette grille à son état initial.\r\nÊtes-vous sûr ?");
    EXPECT_EQ(host.boxes.back().style, 305);
    host.onYield = [this] { Child<wCancel>(*grid, "wCancel").cmdCancel_Click(); };
    grid->SolveGrid();
    EXPECT_EQ(State(2) + " " + State(28) + " " + State(81), "1|1|0 9|1|0 0|0|36");
    host.Expect(MessageButton::Ok);
    grid->Reinit();
    EXPECT_EQ(State(2) + " " + State(81), "1|1|0 0|0|0");
    EXPECT_TRUE(grid->ctrlCells(81).lblMask(2).visible);
}

// ---- Saving and closing.

class Closing : public GridWindow {
  protected:
    Closing() {
        document.Caption("Grille1");
        Set(1, "5|0|0");
    }
    // True when the window went.
    bool Close() {
        grid->close();
        ServeEvents();
        return !grid;
    }
    bool Saved() const { return ScriptedHost::ReadFile(file).find("\r\n1=5|0|0\r\n") != std::string::npos; }

    const std::string file = host.PathOf("a.nx3");
};

TEST_F(Closing, AWindowThatWasClosedIsNoOpenGridFromThatMomentOn) {
    const OpenGrid open(grid);
    wGrid other(frame, std::make_unique<GridDocument>());
    EXPECT_TRUE(open == OpenGrid(grid) && !(open == OpenGrid(&other)));
    int told = 0;
    QObject::connect(grid, &wGrid::Unloading, [&] { ++told; });
    host.Expect(MessageButton::Cancel);
    grid->close();
    EXPECT_TRUE(open);
    grid->Discard();
    grid->close();
    ASSERT_TRUE(grid) << "its memory goes with the event loop";
    EXPECT_FALSE(open);
    EXPECT_EQ(open.Get(), nullptr);
    EXPECT_EQ(told, 1);
    ServeEvents();
    EXPECT_FALSE(grid);
    EXPECT_EQ(told, 1);
}

TEST_F(Closing, OnlyAModifiedGridIsAskedAbout) {
    host.Expect(MessageButton::Cancel);
    EXPECT_FALSE(Close());
    EXPECT_EQ(LastBox(), "La grille Grille1 a été modifiée.\r\nVoulez-vous la sauvegarder ?");
    EXPECT_EQ(host.boxes.back().style, 563);
    document.Grid().Modified(false);
    EXPECT_TRUE(Close());
    EXPECT_EQ(host.boxes.size(), 1U);
}

TEST_F(Closing, YesSavesToTheGridsOwnFileNoDoesNot) {
    grid->Path(QString::fromStdString(file));
    host.Expect(MessageButton::No);
    EXPECT_TRUE(grid->AskBeforeUnload());
    EXPECT_FALSE(std::filesystem::exists(file));
    host.Expect(MessageButton::Yes);
    EXPECT_TRUE(Close());
    EXPECT_TRUE(Saved());
}

TEST_F(Closing, YesAsksForAFileWhenThereIsNone) {
    WriteIniParam("Files", "LastOpened", "/jeux");
    host.Expect(MessageButton::Yes);
    host.ExpectFile("");
    EXPECT_FALSE(Close()) << "no file was chosen";
    EXPECT_TRUE(host.questions[0].save);
    EXPECT_EQ(host.questions[0].folder, "/jeux");
    EXPECT_EQ(host.questions[0].proposedName, "Grille1");
    EXPECT_EQ(host.questions[0].filter, "Grilles Ninarix 3|*.nx3|Tous les fichiers|*.*");
    host.Expect(MessageButton::Yes);
    host.ExpectFile(host.PathOf("absent/a.nx3"));
    host.Expect(MessageButton::Ok);
    EXPECT_FALSE(Close());
    EXPECT_TRUE(LastBox().starts_with("Error Nr 75")) << LastBox();
    EXPECT_TRUE(LastBox().ends_with("Module : wGrid\r\nFunction : SaveFile")) << LastBox();
    EXPECT_EQ(grid->Caption() + grid->Path(), "Grille1") << "a file that was never written is not its own";
    host.Expect(MessageButton::Yes);
    host.ExpectFile(file);
    EXPECT_TRUE(Close());
    EXPECT_TRUE(Saved());
}

}  // namespace
