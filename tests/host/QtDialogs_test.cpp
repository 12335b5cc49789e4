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
    int Answer(int style, const std::function<void(QMessageBox&)>& act, std::string_view text = "Texte",
               int helpContext = 0) {
        bool closed = false;
        InNextDialog([&](QWidget& dialog) {
            act(dynamic_cast<QMessageBox&>(dialog));
            closed = !dialog.isVisible();
        });
        const auto answer = platform_qt::QtMessageBoxes().Show(text, style, helpContext);
        return closed ? static_cast<int>(answer) : 0;
    }
    std::string Ask(bool save, const std::function<void(QFileDialog&)>& act) {
        InNextDialog([&](QWidget& dialog) { act(dynamic_cast<QFileDialog&>(dialog)); });
        return platform_qt::QtFileDialogs().Ask(
            {save, "Grilles Ninarix 3|*.nx3|Tous les fichiers|*.*", folder_, "Grille1.v2"});
    }
    // Enters a name and gives this answer to what is asked then, if anything is.
    std::string Enter(bool save, const char* name,
                      QMessageBox::StandardButton answer = QMessageBox::NoButton) {
        return Ask(save, [&](QFileDialog& dialog) {
            if (answer != QMessageBox::NoButton) {
                InNextDialog([=](QWidget& box) { dynamic_cast<QMessageBox&>(box).button(answer)->click(); });
            }
            auto& field = Child<QLineEdit>(dialog, "fileNameEdit");
            field.setText(QString::fromUtf8(name));
            QTest::keyClick(&field, Qt::Key_Return);
        });
    }

    ScriptedHost host_;
    std::string folder_ = host_.folder.string();
};

TEST_F(Dialogs, EveryStyleOfABoxHasItsButtonsDefaultAndIcon) {
    struct Case {
        int style;
        QMessageBox::Icon icon;
        const char* answers;  // by each button, and by Enter, Escape and the close box
    };
    const Case cases[] = {
        {0, QMessageBox::NoIcon, "OK 1, 111"},
        {48 + 1, QMessageBox::Warning, "OK 1, Annuler 2, 122"},
        {256 + 48 + 1, QMessageBox::Warning, "OK 1, Annuler 2, 222"},
        {64 + 3, QMessageBox::Information, "&Oui 6, &Non 7, Annuler 2, 622"},
        {256 + 3, QMessageBox::NoIcon, "&Oui 6, &Non 7, Annuler 2, 722"},
        {512 + 3, QMessageBox::NoIcon, "&Oui 6, &Non 7, Annuler 2, 222"},
        {48 + 4, QMessageBox::Warning, "&Oui 6, &Non 7, 677"},
        {256 + 16 + 4, QMessageBox::Critical, "&Oui 6, &Non 7, 777"},
    };
    for (const Case& one : cases) {
        QString answers;
        for (int i = 0, count = 1; i < count; ++i) {
            const int answer = Answer(one.style, [&](QMessageBox& box) {
                const auto buttons = box.findChildren<QPushButton*>();
                EXPECT_EQ(box.icon(), one.icon);
                count = static_cast<int>(buttons.size());
                answers += buttons[i]->text();
                buttons[i]->click();
            });
            answers += QStringLiteral(" %1, ").arg(answer);
        }
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
            answers +=
                QString::number(Answer(one.style, [&](QMessageBox& box) { QTest::keyClick(&box, key); }));
        }
        answers += QString::number(Answer(one.style, [](QMessageBox& box) { box.close(); }));
        EXPECT_EQ(answers.toStdString(), one.answers) << one.style;
    }
}

TEST_F(Dialogs, ABoxShowsItsTextAsItStandsUnderTheProgramsTitle) {
    const auto expect = [this](const std::string& text, const std::string& shown, int lines) {
        const auto look = [&](QMessageBox& box) {
            const auto& label = Child<QLabel>(box, "qt_msgbox_label");
            EXPECT_EQ(label.text().toStdString(), shown);
            EXPECT_EQ(label.textFormat(), Qt::PlainText);
            EXPECT_EQ(label.heightForWidth(label.width()) / label.fontMetrics().lineSpacing(), lines);
            EXPECT_EQ(box.windowTitle(), "Ninarix");
        };
        Answer(0, look, text);
    };
    expect("<b>é</b> & co\rune\r\ndeux\n\rtrois", "<b>é</b> & co\nune\ndeux\n\ntrois", 5);
    // The toolkit alone would break a line of this length; but a path may be wider than the screen.
    const std::string line(75, 'n');
    const std::string path = line + ' ' + line;
    expect("a b " + line, "a b " + line, 1);
    expect(path, path, 2);
}

TEST_F(Dialogs, F1OpensTheTopicOfABoxThatHasOne) {
    host_.HelpFile("/aide/Ninarix.chm");
    const auto ask = [](QMessageBox& box) {
        QTest::keyClick(box.findChild<QPushButton*>(), Qt::Key_F1);
        QTest::keyClick(&box, Qt::Key_F2);
    };
    EXPECT_EQ(Answer(4, ask, "Continuer ?", 0), 0);
    EXPECT_EQ(Answer(4, ask, "Continuer ?", 240), 0);
    EXPECT_EQ(host_.helpCalls, std::vector<std::string>{"topic /aide/Ninarix.chm 240"});
}

TEST_F(Dialogs, AFileIsAskedForWhereAndWithWhatTheQuestionSays) {
    for (const bool save : {true, false}) {
        const auto look = [&](QFileDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), save ? "Enregistrer sous" : "Ouvrir");
            EXPECT_EQ(dialog.directory().path().toStdString(), folder_);
            EXPECT_EQ(dialog.nameFilters().join('|'), "Grilles Ninarix 3 (*.nx3)|Tous les fichiers (*)");
            EXPECT_EQ(Child<QLineEdit>(dialog, "fileNameEdit").text(), save ? "Grille1.v2" : "");
        };
        EXPECT_EQ(Ask(save, look), "") << "cancelled";
    }
    for (const std::string& missing : {std::string(), host_.PathOf("absent")}) {
        folder_ = missing;
        Ask(false, [](QFileDialog& dialog) { EXPECT_EQ(dialog.directory().path(), QDir::homePath()); });
    }
}

TEST_F(Dialogs, AFileIsOpenedOnlyIfItIsThereAndReplacedOnlyWhenAgreed) {
    EXPECT_EQ(Enter(true, "Été"), host_.PathOf("Été.nx3"));
    EXPECT_EQ(Enter(true, "a.txt"), host_.PathOf("a.txt"));
    ScriptedHost::WriteFile(host_.PathOf("Ancienne.nx3"), "");
    EXPECT_EQ(Enter(true, "Ancienne", QMessageBox::No), "");
    EXPECT_EQ(Enter(true, "Ancienne", QMessageBox::Yes), host_.PathOf("Ancienne.nx3"));
    EXPECT_EQ(Enter(false, "Ancienne.nx3"), host_.PathOf("Ancienne.nx3"));
    EXPECT_EQ(Enter(false, "Absente.nx3", QMessageBox::Ok), "");
}

}  // namespace
