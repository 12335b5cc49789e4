// SPDX-License-Identifier: MIT
#include <QtTest>
#include <QtWidgets>

#include "platform/qt/QtFileDialogs.h"
#include "platform/qt/QtMessageBoxes.h"
#include "support/QtSupport.h"
#include "support/ScriptedHost.h"

namespace {

class Dialogs : public testing::Test {
  protected:
    // The number of the answer; 0 if it was not the act that closed the box.
    static int Answer(int style, std::string_view text, int helpContext, const auto& act) {
        bool closed = false;
        InNextDialog([&](QWidget& dialog) {
            act(dynamic_cast<QMessageBox&>(dialog));
            closed = !dialog.isVisible();
        });
        const auto answer = platform_qt::QtMessageBoxes().Show(text, style, helpContext);
        return closed ? static_cast<int>(answer) : 0;
    }

    ScriptedHost host_;
};

TEST_F(Dialogs, EveryStyleOfABoxHasItsButtonsDefaultIconAndTopic) {
    host_.HelpFile("Aide.chm");
    // The icon; the answers to F1, which closes nothing, Enter, Escape and the close box; those of the
    // buttons.
    const std::pair<int, const char*> cases[] = {{0, "0: 0 1 1 1 OK 1 "},
                                                 {256 + 48 + 1, "2: 0 2 2 2 OK 1 Annuler 2 "},
                                                 {256 + 64 + 3, "1: 0 7 2 2 &Oui 6 &Non 7 Annuler 2 "},
                                                 {512 + 3, "0: 0 2 2 2 &Oui 6 &Non 7 Annuler 2 "},
                                                 {48 + 4, "2: 0 6 7 7 &Oui 6 &Non 7 "},
                                                 {256 + 16 + 4, "3: 0 7 7 7 &Oui 6 &Non 7 "}};
    for (const auto& [style, expected] : cases) {
        QString told;
        for (qsizetype way = 0, ways = 1; way < ways; ++way) {
            // Each has a topic of its own, the first has none.
            const int answer = Answer(style, "Texte", style, [&](QMessageBox& box) {
                const auto buttons = box.findChildren<QPushButton*>();
                ways = 4 + buttons.size();
                if (way == 0) told = QString::number(box.icon()) + ": ";
                if (way > 3) told += buttons[way - 4]->text() + ' ';
                if (way > 3) return buttons[way - 4]->click();
                if (way == 3) return void(box.close());
                QTest::keyClick(&box, std::array{Qt::Key_F1, Qt::Key_Return, Qt::Key_Escape}[way]);
            });
            told += QString::number(answer) + ' ';
        }
        EXPECT_EQ(told.toStdString(), expected) << style;
    }
    EXPECT_EQ(host_.helpCalls.at(0), "topic Aide.chm 305");
}

TEST_F(Dialogs, ABoxShowsItsTextAsItStandsUnderTheProgramsTitle) {
    // The toolkit alone would break a line of this length; but a path may be wider than the screen.
    const std::string line(75, 'n'), path = line + ' ' + line;
    std::string shown;
    for (const auto& text : {std::string("<b>é</b> & co\rune\r\ndeux\n\rtrois"), "a b " + line, path}) {
        Answer(0, text, 0, [&](QMessageBox& box) {
            const auto& label = Child<QLabel>(box, "qt_msgbox_label");
            const int lines = label.heightForWidth(label.width()) / label.fontMetrics().lineSpacing();
            shown += label.text().toStdString() + '|' + std::to_string(lines) + '|';
            EXPECT_TRUE(label.textFormat() == Qt::PlainText && box.windowTitle() == "Ninarix");
        });
    }
    EXPECT_EQ(shown, "<b>é</b> & co\nune\ndeux\n\ntrois|5|a b " + line + "|1|" + path + "|2|");
}

TEST_F(Dialogs, AFileIsOpenedOnlyIfItIsThereAndReplacedOnlyWhenAgreed) {
    // What is shown, and what is chosen when a name is entered and what is asked then gets this answer.
    const auto ask = [this](bool save, const std::string& folder, const std::string& name,
                            QMessageBox::StandardButton answer = QMessageBox::NoButton, qsizetype kind = 0) {
        QString shown;
        InNextDialog([&](QWidget& window) {
            auto& dialog = dynamic_cast<QFileDialog&>(window);
            auto& field = Child<QLineEdit>(dialog, "fileNameEdit");
            shown = dialog.windowTitle() + '|' + field.text() + '|' + dialog.directory().path() + '|';
            EXPECT_EQ(dialog.nameFilters().join('|'), "Grilles Ninarix 3 (*.nx3)|Tous les fichiers (*)");
            const auto press = [=](QWidget& box) { dynamic_cast<QMessageBox&>(box).button(answer)->click(); };
            if (answer != QMessageBox::NoButton) InNextDialog(press);
            dialog.selectNameFilter(dialog.nameFilters()[kind]);
            field.setText(QString::fromStdString(name));
            QTest::keyClick(&field, Qt::Key_F1);
            EXPECT_EQ(host_.helpCalls.back(), "topic  280");
            QTest::keyClick(&field, Qt::Key_Return);
        });
        const std::string filter = "Grilles Ninarix 3|*.nx3|Tous les fichiers|*.*";
        const std::string chosen =
            platform_qt::QtFileDialogs().Ask({save, filter, folder, "Grille1.v2", 280});
        return shown.toStdString() + chosen;
    };
    const std::string own = host_.folder.string(), old = own + "/Ancienne.nx3", absent = own + "/absent";
    const std::string saving = "Enregistrer sous|Grille1.v2.nx3|" + own + '|';
    const std::string opening = "Ouvrir||" + QDir::homePath().toStdString() + '|';
    ScriptedHost::WriteFile(old, "");
    EXPECT_EQ(ask(true, own, "Été"), saving + own + "/Été.nx3");
    const std::pair<std::string, std::string> names[] = {
        {"v1.2", "v1.2.nx3 v1.2"}, {"v1", "v1.nx3 v1.nx3"}, {"V1.NX3", "V1.NX3 V1.NX3"}};
    for (const auto& [name, kept] : names) {
        const std::string chosen = ask(true, own, name),
                          ofAnyKind = ask(true, own, name, QMessageBox::NoButton, 1);
        EXPECT_EQ(
            chosen.substr(chosen.rfind('/') + 1) + ofAnyKind.substr(ofAnyKind.rfind('/')).replace(0, 1, " "),
            kept);
    }
    EXPECT_EQ(ask(true, own, "Ancienne", QMessageBox::No), saving);
    EXPECT_EQ(ask(true, own, "Ancienne", QMessageBox::Yes), saving + old);
    EXPECT_EQ(ask(false, own, "Ancienne.nx3"), "Ouvrir||" + own + '|' + old);
    EXPECT_EQ(ask(false, "", old), opening + old);
    EXPECT_EQ(ask(false, absent, absent + ".nx3", QMessageBox::Ok), opening);
}

TEST_F(Dialogs, NamesThatTheToolkitCannotWriteAreFoundAndAskedAbout) {
    const std::string folder = host_.PathOf("d\xE9"), old = folder + "/Gril\xE9.nx3";
    std::filesystem::create_directory(folder);
    ScriptedHost::WriteFile(old, "");
    const auto ask = [](bool save, const std::string& start, const QString& name,
                        QMessageBox::StandardButton answer = QMessageBox::NoButton) {
        InNextDialog([&](QWidget& dialog) {
            auto& field = Child<QLineEdit>(dialog, "fileNameEdit");
            const auto press = [=](QWidget& box) { dynamic_cast<QMessageBox&>(box).button(answer)->click(); };
            if (answer != QMessageBox::NoButton) InNextDialog(press);
            if (!name.isEmpty()) field.setText(name);
            QTest::keyClick(&field, Qt::Key_Return);
        });
        return platform_qt::QtFileDialogs().Ask({save, "Grilles|*.nx3", start, "Gril\xE9"});
    };
    const QString unknown(QChar::ReplacementCharacter);
    EXPECT_EQ(ask(false, folder, "Gril" + unknown + ".nx3"), old);
    EXPECT_EQ(ask(true, folder, {}, QMessageBox::No), "");
    EXPECT_EQ(ask(true, folder, {}, QMessageBox::Yes), old);
    EXPECT_EQ(ask(true, host_.folder, {}), host_.PathOf("Gril\xE9.nx3")) << "the proposed name is kept";
    EXPECT_EQ(ask(true, "", QString::fromStdString(host_.folder) + "/d" + unknown + "/neuf"),
              folder + "/neuf.nx3");
    for (const char* name : {"/x\xE8.nx3", "/x\xE9.nx3"}) ScriptedHost::WriteFile(folder + name, "");
    EXPECT_EQ(ask(true, folder, "x" + unknown), folder + "/x\xEF\xBF\xBD.nx3") << "it could be either";
}

}  // namespace
