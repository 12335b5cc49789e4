#include "document/window/ctrlCell.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <memory>
#include <string>

#include "diagnostics/ErrorHandling.h"
#include "engine/clsGrid.h"
#include "support/ScriptedHost.h"

namespace {

class CellView : public testing::Test {
  protected:
    CellView() : view(std::make_unique<ctrlCell>(nullptr, ColorTable::Defaults)) {
        view->mCell(&Cell());
        view->show();
    }

    clsCell& Cell() { return *grid.Cells(23); }  // row 3, column 5
    std::string Spoken(QAccessible::Text kind) const {
        return QAccessible::queryAccessibleInterface(view.get())->text(kind).toStdString();
    }

    ScriptedHost host;
    clsGrid grid;
    std::unique_ptr<ctrlCell> view;
};

TEST_F(CellView, OnlyTheBoundCellIsListenedToAndChanged) {
    view->mCell(grid.Cells(1));
    Cell().Value(8);
    EXPECT_EQ(view->lblValue().text, "");
    grid.Cells(1)->Value(3);
    EXPECT_EQ(view->lblValue().text, "3");
    view->mCell(nullptr);
    view->Locked(true);
    EXPECT_FALSE(view->Locked() || grid.Cells(1)->Locked());
    EXPECT_EQ(view->Value(), 0);
    try {
        view->Value(1);
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::ObjectNotSet);
        EXPECT_STREQ(error.what(), "L'objet associé à la cellule n'a pas été créé.");
    }
    // A model outlives its views.
    view->mCell(grid.Cells(1));
    view.reset();
    grid.Cells(1)->Value(4);
}

TEST_F(CellView, KeysAreReportedByMeaningAndByTypedText) {
    struct Press {
        int key;
        Qt::KeyboardModifiers modifiers;
        const char* text;
        const char* reported;  // "code of KeyDown" and, if there is one, "code of Keypress"
    };
    const Press presses[] = {{Qt::Key_5, Qt::NoModifier, "5", "0 53"},
                             {Qt::Key_7, Qt::KeypadModifier, "7", "0 55"},
                             {Qt::Key_Eacute, Qt::ShiftModifier, "2", "0 50"},  // the upper row types accents
                             {Qt::Key_Eacute, Qt::NoModifier, "é", "0 233"},
                             {Qt::Key_1, Qt::ControlModifier, "1", "0"},
                             {Qt::Key_1, Qt::ControlModifier | Qt::AltModifier, "1", "0 49"},
                             {Qt::Key_Left, Qt::KeypadModifier, "", "37"},
                             {Qt::Key_Up, Qt::NoModifier, "", "38"},
                             {Qt::Key_Right, Qt::ShiftModifier, "", "39"},
                             {Qt::Key_Down, Qt::NoModifier, "", "40"},
                             {Qt::Key_Delete, Qt::NoModifier, "\x7f", "46 127"}};
    std::string reported;
    QObject::connect(view.get(), &ctrlCell::KeyDown, [&](int code) { reported += std::to_string(code); });
    QObject::connect(view.get(), &ctrlCell::Keypress,
                     [&](int code) { reported += " " + std::to_string(code); });
    for (const Press& press : presses) {
        reported.clear();
        QKeyEvent event(QEvent::KeyPress, press.key, press.modifiers, QString::fromUtf8(press.text));
        QApplication::sendEvent(view.get(), &event);
        EXPECT_EQ(reported, press.reported) << press.text;
    }
}

TEST_F(CellView, PlaceAndContentsAreSpoken) {
    struct Case {
        const char* excluded;
        int value;
        bool locked, hidden;
        const char* spoken;
    };
    const Case cases[] = {{"1345689", 0, false, false, "vide, candidats 2 et 7"},
                          {"156789", 0, false, false, "vide, candidats 2, 3 et 4"},
                          {"13456789", 0, false, false, "vide, candidat 2"},
                          {"13456789", 0, false, true, "vide"},
                          {"", 7, false, false, "7"},
                          {"", 7, true, false, "7, donnée verrouillée"}};
    for (const Case& c : cases) {
        for (int d = 1; d <= 9; ++d)
            Cell().Inhib(d, std::string(c.excluded).find(char('0' + d)) != std::string::npos);
        view->NoMask(c.hidden);
        view->Value(static_cast<std::uint8_t>(c.value));
        view->Locked(c.locked);
        EXPECT_EQ(Spoken(QAccessible::Name), std::string("Ligne 3, colonne 5, ") + c.spoken);
        EXPECT_EQ(Spoken(QAccessible::Value), c.spoken);
    }
}

}  // namespace
