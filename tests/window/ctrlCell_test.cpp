#include "document/window/ctrlCell.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <memory>
#include <string>

#include "document/DocumentSupport.h"
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
    EXPECT_FALSE(view->Locked() || grid.Cells(1)->Locked() || view->Value());
    EXPECT_EQ(ErrorOf([&] { view->Value(1); }), ErrorNumber::ObjectNotSet);
    // A model outlives its views.
    view->mCell(grid.Cells(1));
    view.reset();
    grid.Cells(1)->Value(4);
}

TEST_F(CellView, KeysAreReportedByMeaningAndByTypedText) {
    // Key, modifiers, text; "code of KeyDown" and, if there is one, "code of Keypress".
    const std::tuple<int, Qt::KeyboardModifiers, const char*, const char*> presses[] = {
        {Qt::Key_7, Qt::KeypadModifier, "7", "0 55"},
        {Qt::Key_Eacute, Qt::ShiftModifier, "2", "0 50"},  // the upper row types accents
        {Qt::Key_Eacute, Qt::NoModifier, "é", "0 233"},
        {Qt::Key_1, Qt::ControlModifier, "1", "0"},
        {Qt::Key_1, Qt::ControlModifier | Qt::AltModifier, "1", "0 49"},
        {Qt::Key_Left, Qt::KeypadModifier, "", "37"},
        {Qt::Key_Right, Qt::ShiftModifier, "", "39"},
        {Qt::Key_Delete, Qt::NoModifier, "\x7f", "46 127"}};
    std::string reported;
    QObject::connect(view.get(), &ctrlCell::KeyDown, [&](int code) { reported += std::to_string(code); });
    QObject::connect(view.get(), &ctrlCell::Keypress,
                     [&](int code) { reported += " " + std::to_string(code); });
    for (const auto& [key, modifiers, text, expected] : presses) {
        reported.clear();
        QKeyEvent event(QEvent::KeyPress, key, modifiers, QString::fromUtf8(text));
        QApplication::sendEvent(view.get(), &event);
        EXPECT_EQ(reported, expected) << text;
    }
}

TEST_F(CellView, PlaceAndContentsAreSpoken) {
    // The cell's record, whether candidates are hidden.
    const std::tuple<const char*, bool, const char*> cases[] = {
        {"0|0|890", false, "vide, candidats 2 et 7"},
        {"0|0|994", false, "vide, candidats 2, 3 et 4"},
        {"0|0|1018", false, "vide, candidat 2"},
        {"0|0|1018", true, "vide"},
        {"7|0|0", false, "7"},
        {"7|1|0", false, "7, donnée verrouillée"}};
    for (const auto& [record, hidden, spoken] : cases) {
        view->NoMask(hidden);
        ApplyState(Cell(), ParseRecord(record));
        EXPECT_EQ(Spoken(QAccessible::Name), std::string("Ligne 3, colonne 5, ") + spoken);
        EXPECT_EQ(Spoken(QAccessible::Value), spoken);
    }
}

}  // namespace
