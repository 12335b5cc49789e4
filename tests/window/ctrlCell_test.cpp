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
    ScriptedHost host;
    clsGrid grid;
    std::unique_ptr<ctrlCell> view;
};

TEST_F(CellView, KeysAreReportedByMeaningAndByTypedText) {
    // Key, modifiers, text; "code of KeyDown" and, if there is one, "code of Keypress".
    const std::tuple<int, Qt::KeyboardModifiers, const char*, const char*> presses[] = {
        {Qt::Key_Eacute, Qt::ShiftModifier, "2", "0 50"},  // the upper row types accents
        {Qt::Key_Eacute, Qt::NoModifier, "é", "0 233"},
        {Qt::Key_1, Qt::ControlModifier, "1", "0"},
        {Qt::Key_1, Qt::ControlModifier | Qt::AltModifier, "1", "0 49"},
        {Qt::Key_Left, Qt::KeypadModifier, "", "37"},
        {Qt::Key_Delete, Qt::NoModifier, "\x7f", "46 127"}};
    std::string reported;
    QObject::connect(view.get(), &ctrlCell::KeyDown, [&](int code) { reported += std::to_string(code); });
    QObject::connect(view.get(), &ctrlCell::Keypress,
                     [&](int key) { reported += " " + std::to_string(key); });
    for (const auto& [key, modifiers, text, expected] : presses) {
        reported.clear();
        QKeyEvent event(QEvent::KeyPress, key, modifiers, QString::fromUtf8(text));
        QApplication::sendEvent(view.get(), &event);
        EXPECT_EQ(reported, expected) << text;
    }
}

TEST_F(CellView, PlaceAndContentsAreSpoken) {
    const std::pair<const char*, const char*> cases[] = {{"0|0|994", "vide, candidats 2, 3 et 4"},
                                                         {"0|0|1018", "vide, candidat 2"},
                                                         {"7|1|0", "7, donnée verrouillée"}};
    for (const auto& [record, spoken] : cases) {
        ApplyState(Cell(), ParseRecord(record));
        EXPECT_EQ(QAccessible::queryAccessibleInterface(view.get())->text(QAccessible::Name).toStdString(),
                  std::string("Ligne 3, colonne 5, ") + spoken);
    }
    view.reset();
    Cell().Value(4);  // a model outlives its views
}

}  // namespace
