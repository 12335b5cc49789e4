// SPDX-License-Identifier: MIT
#include "document/window/ctrlCell.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <memory>
#include <string>
#include <utility>

#include "document/DocumentSupport.h"
#include "document/window/CellHolder.h"
#include "engine/clsGrid.h"
#include "support/ScriptedHost.h"

namespace {

// What the view tells: a click; k: a key and its shift state, p: what was typed, c: a candidate.
class Told : public CellHolder {
  public:
    std::string Take() { return std::exchange(words_, {}); }

    void ctrlCells_Click(ctrlCell& /*cell*/) override { Add("click"); }
    void ctrlCells_KeyDown(ctrlCell& /*cell*/, int keyCode, int shift) override {
        Add("k" + std::to_string(keyCode) + "/" + std::to_string(shift));
    }
    void ctrlCells_Keypress(ctrlCell& /*cell*/, int keyAscii) override {
        Add("p" + std::to_string(keyAscii));
    }
    void ctrlCells_CandidateChosen(ctrlCell& /*cell*/, int digit) override {
        Add("c" + std::to_string(digit));
    }

  private:
    void Add(const std::string& word) { words_ += (words_.empty() ? "" : " ") + word; }
    std::string words_;
};

class CellView : public testing::Test {
  protected:
    CellView() : view(std::make_unique<ctrlCell>(nullptr, told, ColorTable::Defaults)) {
        view->mCell(&Cell());
        view->show();
    }

    clsCell& Cell() { return *grid.Cells(23); }  // row 3, column 5
    ScriptedHost host;
    clsGrid grid;
    Told told;
    std::unique_ptr<ctrlCell> view;
};

// The digits of a French keyboard stand behind Shift; the row's keys are scan codes 10 to 19 all the same.
TEST_F(CellView, KeysAreReportedByMeaningByTypedTextAndByPlace) {
    using Qt::Key_Ampersand, Qt::Key_Eacute, Qt::Key_Agrave;
    // Key, scan code, modifiers, text; what is told.
    const std::tuple<int, int, Qt::KeyboardModifiers, const char*, const char*> presses[] = {
        {Key_Eacute, 11, Qt::ShiftModifier, "2", "k0/1 p50"},
        {Key_Eacute, 11, Qt::NoModifier, "é", "k0/0 p50"},
        {Qt::Key_At, 11, Qt::ShiftModifier, "@", "k0/1 p64"},
        {Key_Ampersand, 10, Qt::ControlModifier, "&", "k0/2 c1"},
        {Key_Agrave, 19, Qt::ControlModifier, "", "k0/2 c0"},
        {Qt::Key_9, 81, Qt::ControlModifier | Qt::KeypadModifier, "9", "k0/2 c9"},
        {Qt::Key_1, 10, Qt::AltModifier, "1", "k0/4"},
        {Key_Ampersand, 10, Qt::MetaModifier, "&", "k0/0"},
        {Qt::Key_1, 10, Qt::ControlModifier | Qt::AltModifier, "1", "k0/6"},
        {Qt::Key_A, 24, Qt::ControlModifier, "\x01", "k0/2"},
        {Qt::Key_5, 84, Qt::KeypadModifier, "5", "k0/0 p53"},
        {Qt::Key_twosuperior, 49, Qt::NoModifier, "²", "k0/0 p178"},
        {Qt::Key_Left, 83, Qt::KeypadModifier, "", "k37/0"},
        {Qt::Key_Backspace, 22, Qt::NoModifier, "\b", "k8/0 p8"},
        {Qt::Key_End, 115, Qt::ControlModifier, "", "k35/2"}};
    for (const auto& [key, scanCode, modifiers, text, expected] : presses) {
        told.Take();
        QKeyEvent event(QEvent::KeyPress, key, modifiers, quint32(scanCode), 0, 0, QString::fromUtf8(text));
        QApplication::sendEvent(view.get(), &event);
        EXPECT_EQ(told.Take(), expected) << text;
    }
}

TEST_F(CellView, IsANumberFieldForTheEarThatCanBePlayedIn) {
    auto* spoken = QAccessible::queryAccessibleInterface(view.get());
    view->Current(true);  // the keyboard selects it no more
    // A record; place and value as they are said; candidates on demand.
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"0|0|994", "Ligne 3, colonne 5 vide", "candidats 2, 3 et 4"},
        {"0|0|1018", "Ligne 3, colonne 5 vide", "candidat 2"},
        {"0|0|1022", "Ligne 3, colonne 5 vide", "aucun candidat"},
        {"6|0|0", "Ligne 3, colonne 5 6", ""},
        {"7|1|0", "Ligne 3, colonne 5, donnée 7", ""}};
    for (const auto& [record, place, candidates] : cases) {
        ApplyState(Cell(), ParseRecord(record));
        view->ManageMasks();
        auto* text = spoken->textInterface();
        EXPECT_EQ(
            (spoken->text(QAccessible::Name) + ' ' + text->text(0, text->characterCount())).toStdString(),
            place);
        EXPECT_EQ(spoken->text(QAccessible::Help).toStdString(), candidates);
    }
    EXPECT_TRUE(spoken->role() == QAccessible::SpinBox && spoken->state().readOnly);
    told.Take();
    spoken->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    for (const int value : {5, 0, 10, -1}) {
        spoken->valueInterface()->setCurrentValue(value);
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(told.Take(), "click click p53 click k46/0");
    view.reset();
    Cell().Value(4);  // a model outlives its views
}

}  // namespace
