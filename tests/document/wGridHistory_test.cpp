#include <QLineEdit>

#include "FakeFrame.h"

namespace {

class History : public GridWindow {
  protected:
    History() { grid->SetFocus(); }

    void ExpectRefusal(void (wGrid::*step)(), const std::string& text) {
        host.boxes.clear();
        host.Expect(platform::MessageButton::Ok);
        ((*grid).*step)();
        EXPECT_EQ(LastBox(), text);
        EXPECT_EQ(host.boxes.back().style, 64);
    }
};

TEST_F(History, NothingToUndoOrRedoIsSaid) {
    ExpectRefusal(&wGrid::Undo, "Rien à annuler");
    ExpectRefusal(&wGrid::Redo, "Rien à rétablir");
    Enter(5, "7|0|0");
    ExpectRefusal(&wGrid::Redo, "Rien à rétablir");
    grid->Undo();
    ExpectRefusal(&wGrid::Undo, "Rien à annuler");
    EXPECT_EQ(State(5), "0|0|0");
}

TEST_F(History, UndoAndRedoWalkThroughEveryState) {
    const char* states[] = {"0|0|0", "7|1|0", "0|0|0", "0|0|36", "3|0|512"};
    for (const char* state : {states[1], states[2], states[3], states[4]}) Enter(5, state);
    for (int round = 0; round < 2; ++round) {
        for (const int i : {3, 2, 1, 0}) {
            grid->Undo();
            EXPECT_EQ(State(5), states[i]);
        }
        for (const int i : {1, 2, 3, 4}) {
            grid->Redo();
            EXPECT_EQ(State(5), states[i]);
        }
    }
}

TEST_F(History, ANewChangeDropsWhatCouldBeRedone) {
    Enter(1, "1|0|0");
    Enter(2, "2|0|0");
    Enter(3, "3|0|0");
    grid->Undo();
    grid->Undo();
    Enter(4, "4|0|0");
    ExpectRefusal(&wGrid::Redo, "Rien à rétablir");
    grid->Undo();
    grid->Undo();
    EXPECT_EQ(State(1) + " " + State(2) + " " + State(4), "0|0|0 0|0|0 0|0|0");
    grid->Redo();
    grid->Redo();
    EXPECT_EQ(State(1) + " " + State(2) + " " + State(4), "1|0|0 0|0|0 4|0|0");
}

TEST_F(History, UndoReplacesExclusionsAndRecomputesCandidates) {
    Enter(5, "7|0|4");
    grid->UpdateGrid();
    ApplyExclusionMask(Cell(5), 1016);
    grid->Undo();
    EXPECT_EQ(State(5), "0|0|0");
    EXPECT_TRUE(Cell(9).Avail(7));
    grid->Redo();
    EXPECT_EQ(State(5), "7|0|4");
    EXPECT_FALSE(Cell(9).Avail(7));
}

TEST_F(History, TheChangedCellIsSelected) {
    Enter(50, "7|0|0");
    Enter(3, "1|0|0");
    grid->Undo();
    EXPECT_EQ(frame.cell, &grid->ctrlCells(3));
    grid->Undo();
    EXPECT_EQ(frame.cell, &grid->ctrlCells(50));
    EXPECT_EQ(grid->focusWidget(), &grid->ctrlCells(50));
    EXPECT_EQ(grid->ctrlCells(50).BackColor(), QColor(Qt::yellow));
    EXPECT_EQ(grid->ctrlCells(3).BackColor(), QColor(Qt::white));
}

TEST_F(History, WithTheKeyboardElsewhereUndoOnlyBeeps) {
    Enter(5, "7|0|0");
    QLineEdit elsewhere(grid);
    elsewhere.show();
    elsewhere.setFocus();
    grid->Undo();
    EXPECT_EQ(host.beeps, 1);
    EXPECT_EQ(State(5), "7|0|0");
    // Redo asks for no focus.
    grid->SetFocus();
    grid->Undo();
    elsewhere.setFocus();
    grid->Redo();
    EXPECT_EQ(State(5), "7|0|0");
    EXPECT_EQ(host.beeps, 1);
}

TEST_F(History, ABrokenRecordIsReportedAndPassedOver) {
    for (const char* record : {"5|7|0", "", "82|7|0|0|82|0|0|0", "x|7|0|0|x|0|0|0"}) {
        Enter(5, "7|0|0");
        grid->RegUndo(record);
        host.Expect(platform::MessageButton::Ok);
        grid->Undo();
        EXPECT_TRUE(LastBox().ends_with("Module : wGrid\r\nFunction : Undo")) << LastBox();
        EXPECT_EQ(State(5), "7|0|0");
        grid->Undo();
        EXPECT_EQ(State(5), "0|0|0");
    }
}

}  // namespace
