#include "document/ctrlCell.h"

#include <QAccessible>
#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <QSignalSpy>
#include <memory>
#include <string>

#include "diagnostics/ErrorHandling.h"
#include "engine/clsGrid.h"
#include "support/ScriptedHost.h"

namespace {

// Red in the low byte: yellow background, red locked and blue other values, green candidates.
constexpr ColorTable::Colors colors{0x00FFFF, 0, 0, 0x0000FF, 0xFF0000, 0, 0x00FF00};

class CellView : public testing::Test {
  protected:
    CellView() : view(std::make_unique<ctrlCell>(nullptr, colors)) {
        view->resize(60, 60);
        view->mCell(&Cell());
        view->show();
    }

    clsCell& Cell() { return *grid.Cells(23); }  // row 3, column 5
    // The candidates that are shown, as one text.
    std::string Candidates() const {
        std::string digits;
        for (int d = 1; d <= 9; ++d) {
            if (view->Mask(d)) digits += std::to_string(d);
        }
        return digits;
    }
    bool Paints(const QColor& color) const {
        const QImage image = view->grab().toImage();
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixelColor(x, y) == color) return true;
            }
        }
        return false;
    }

    ScriptedHost host;
    clsGrid grid;
    std::unique_ptr<ctrlCell> view;
};

// ---- Candidates.

TEST_F(CellView, ACandidateIsShownOnlyWhileNothingSpeaksAgainstIt) {
    EXPECT_EQ(Candidates(), "123456789");
    Cell().Inhib(2, true);
    Cell().Avail(7, false);
    view->ManageMasks();
    EXPECT_EQ(Candidates(), "1345689");
    view->NoMask(true);
    view->ManageMasks();
    EXPECT_EQ(Candidates(), "");
    view->NoMask(false);
    view->ManageMasks();
    EXPECT_EQ(Candidates(), "1345689");
}

TEST_F(CellView, AValueHidesTheCandidatesUntilItGoes) {
    Cell().Inhib(2, true);
    view->Value(4);
    EXPECT_EQ(Candidates(), "");
    EXPECT_EQ(view->lblValue().text, "4");
    view->Value(0);
    EXPECT_EQ(Candidates(), "13456789");
    EXPECT_EQ(view->lblValue().text, "");
}

// ---- The bound cell.

TEST_F(CellView, OnlyTheBoundCellIsListenedTo) {
    view->mCell(grid.Cells(1));
    Cell().Value(8);
    EXPECT_EQ(view->lblValue().text, "");
    grid.Cells(1)->Value(3);
    EXPECT_EQ(view->lblValue().text, "3");
    // A model outlives its views.
    view.reset();
    grid.Cells(1)->Value(4);
}

TEST_F(CellView, WritingAValueWithoutACellRaisesItsOwnError) {
    view->mCell(nullptr);
    try {
        view->Value(1);
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(static_cast<std::uint32_t>(error.Number()), 0x80040001U);
        EXPECT_STREQ(error.what(), "L'objet associé à la cellule n'a pas été créé.");
    }
    EXPECT_EQ(view->Value(), 0);
    view->Locked(true);
    EXPECT_FALSE(view->Locked());
}

// ---- Colours.

TEST_F(CellView, LockedAndOtherValuesHaveTheirOwnColours) {
    view->Value(8);
    EXPECT_TRUE(Paints(Qt::blue) && Paints(Qt::yellow));
    EXPECT_FALSE(Paints(Qt::red) || Paints(Qt::green));
    view->Locked(true);
    EXPECT_TRUE(Paints(Qt::red) && Paints(Qt::yellow));
    EXPECT_FALSE(Paints(Qt::blue));
}

TEST_F(CellView, TheNineCandidatesNeitherOverlapNorLeaveTheCell) {
    for (const QSize size : {QSize(20, 20), QSize(33, 61), QSize(120, 90)}) {
        view->resize(size);
        for (int d = 1; d <= 9; ++d) {
            const QRectF place = view->lblMask(d).place;
            EXPECT_TRUE(QRectF(view->rect()).adjusted(-0.5, -0.5, 0.5, 0.5).contains(place)) << d;
            if (d % 3 != 0) {
                EXPECT_LE(place.right(), view->lblMask(d + 1).place.left() + 0.01) << d;
            }
            if (d <= 6) {
                EXPECT_LE(place.bottom(), view->lblMask(d + 3).place.top() + 0.01) << d;
            }
        }
    }
}

// ---- Keys and clicks.

TEST_F(CellView, KeysAreReportedByMeaningAndByTypedText) {
    struct Press {
        int key;
        Qt::KeyboardModifiers modifiers;
        const char* text;
        int code;   // of KeyDown
        int typed;  // of Keypress, 0 for none
    };
    const Press presses[] = {
        {Qt::Key_5, Qt::NoModifier, "5", 0, '5'},
        {Qt::Key_7, Qt::KeypadModifier, "7", 0, '7'},
        {Qt::Key_Eacute, Qt::ShiftModifier, "2", 0, '2'},  // where the upper row types accents
        {Qt::Key_Eacute, Qt::NoModifier, "é", 0, 0xE9},
        {Qt::Key_1, Qt::ControlModifier, "1", 0, 0},
        {Qt::Key_1, Qt::ControlModifier | Qt::AltModifier, "1", 0, '1'},  // a level of some layouts
        {Qt::Key_Left, Qt::KeypadModifier, "", 37, 0},
        {Qt::Key_Up, Qt::NoModifier, "", 38, 0},
        {Qt::Key_Right, Qt::ShiftModifier, "", 39, 0},
        {Qt::Key_Down, Qt::NoModifier, "", 40, 0},
        {Qt::Key_Delete, Qt::NoModifier, "\x7f", 46, 0x7f},
    };
    QSignalSpy downs(view.get(), &ctrlCell::KeyDown);
    QSignalSpy typed(view.get(), &ctrlCell::Keypress);
    for (const Press& press : presses) {
        downs.clear();
        typed.clear();
        QKeyEvent event(QEvent::KeyPress, press.key, press.modifiers, QString::fromUtf8(press.text));
        QApplication::sendEvent(view.get(), &event);
        ASSERT_EQ(downs.size(), 1) << press.text;
        EXPECT_EQ(downs[0][0].toInt(), press.code) << press.text;
        ASSERT_EQ(typed.size(), press.typed != 0 ? 1 : 0) << press.text;
        if (press.typed != 0) {
            EXPECT_EQ(typed[0][0].toInt(), press.typed);
        }
    }
}

// ---- Assistive technology.

TEST_F(CellView, PlaceAndContentsAreNamed) {
    const auto text = [this](QAccessible::Text kind) {
        return QAccessible::queryAccessibleInterface(view.get())->text(kind).toStdString();
    };
    for (const int d : {1, 3, 4, 5, 6, 8, 9}) Cell().Inhib(d, true);
    view->ManageMasks();
    EXPECT_EQ(text(QAccessible::Name), "Ligne 3, colonne 5, vide, candidats 2 et 7");
    EXPECT_EQ(text(QAccessible::Value), "vide, candidats 2 et 7");
    Cell().Inhib(7, true);
    view->ManageMasks();
    EXPECT_EQ(text(QAccessible::Value), "vide, candidat 2");
    view->NoMask(true);
    view->ManageMasks();
    EXPECT_EQ(text(QAccessible::Value), "vide");
    view->Value(7);
    EXPECT_EQ(text(QAccessible::Value), "7");
    view->Locked(true);
    EXPECT_EQ(text(QAccessible::Name), "Ligne 3, colonne 5, 7, donnée verrouillée");
}

}  // namespace
