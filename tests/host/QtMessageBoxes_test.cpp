#include "platform/qt/QtMessageBoxes.h"

#include <QtTest>
#include <QtWidgets>

#include "support/QtSupport.h"
#include "support/ScriptedHost.h"

namespace {

class Box : public testing::Test {
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

    ScriptedHost host_;
};

TEST_F(Box, EveryStyleHasItsButtonsDefaultAndIcon) {
    struct Case {
        int style;
        QMessageBox::Icon icon;
        const char* answers;  // by each button, and by Enter, Escape and the close box
    };
    const Case cases[] = {
        {0, QMessageBox::NoIcon, "OK 1, 111"},
        {16, QMessageBox::Critical, "OK 1, 111"},
        {48 + 1, QMessageBox::Warning, "OK 1, Annuler 2, 122"},
        {256 + 48 + 1, QMessageBox::Warning, "OK 1, Annuler 2, 222"},
        {64 + 3, QMessageBox::Information, "&Oui 6, &Non 7, Annuler 2, 622"},
        {256 + 3, QMessageBox::NoIcon, "&Oui 6, &Non 7, Annuler 2, 722"},
        {512 + 3, QMessageBox::NoIcon, "&Oui 6, &Non 7, Annuler 2, 222"},
        {48 + 4, QMessageBox::Warning, "&Oui 6, &Non 7, 677"},
        {256 + 4, QMessageBox::NoIcon, "&Oui 6, &Non 7, 777"},
    };
    for (const Case& one : cases) {
        QString answers;
        for (int i = 0, count = 1; i < count; ++i) {
            const int answer = Answer(one.style, [&](QMessageBox& box) {
                const auto buttons = box.findChildren<QPushButton*>();
                EXPECT_EQ(box.icon(), one.icon);
                count = static_cast<int>(buttons.size());
                answers += buttons[i]->text();
                QTest::mouseClick(buttons[i], Qt::LeftButton);
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

TEST_F(Box, TheTextStandsAsItIsUnderTheProgramsTitle) {
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
    const std::string line(80, 'n');
    expect(line, line, 1);
    const std::string path = line + ' ' + line + ' ' + line;
    expect(path, path, 3);
}

TEST_F(Box, F1OpensTheTopicOfABoxThatHasOne) {
    host_.HelpFile("/aide/Ninarix.chm");
    const auto ask = [](QMessageBox& box) {
        QTest::keyClick(box.findChild<QPushButton*>(), Qt::Key_F1);
        QTest::keyClick(&box, Qt::Key_F2);
    };
    EXPECT_EQ(Answer(4, ask, "Continuer ?", 0), 0);
    EXPECT_EQ(Answer(4, ask, "Continuer ?", 240), 0);
    EXPECT_EQ(host_.helpCalls, std::vector<std::string>{"topic /aide/Ninarix.chm 240"});
}

}  // namespace
