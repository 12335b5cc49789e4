#include "platform/qt/help/HelpWindow.h"

#include <QtTest>
#include <QtWidgets>

#include "SmallHelp.h"
#include "platform/qt/help/QtHelpViewer.h"
#include "platform/qt/help/TopicView.h"
#include "support/QtSupport.h"

namespace {

class Help : public SmallHelp {
  protected:
    Help() {
        window_.File(Open(file_));
        window_.ShowContents();
        window_.ShowBeside(nullptr);
    }

    // The window's title, the topic, what is searched, the line of the contents that stands for the topic,
    // where the keyboard is, the ways that are open and the words that are marked, all after this.
    std::string State(const std::function<void()>& act = [] {}) {
        act();
        QStringList parts{window_.windowTitle().remove("Aide de Ninarix"), topic_.Topic(), words_.text(),
                          contents_.currentItem()->text(0), window_.focusWidget()->objectName()};
        for (const char* way : {"back", "forward"}) parts += Button(way).isEnabled() ? way : "";
        for (const auto& mark : topic_.extraSelections()) parts += mark.cursor.selectedText();
        return parts.join(' ').simplified().toStdString();
    }
    QToolButton& Button(const char* name) { return Child<QToolButton>(window_, name); }

    HelpWindow window_;
    TopicView& topic_ = Child<TopicView>(window_, "topic");
    QLineEdit& words_ = Child<QLineEdit>(window_, "words");
    QTreeWidget& contents_ = Child<QTreeWidget>(window_, "contents");
};

TEST_F(Help, TheContentsFollowTheTopicAndLeadToIt) {
    // What cannot be shown leaves the page.
    for (const char* link : {"http:/z/a.htm", "mailto:a@example.invalid"}) topic_.setSource(QUrl(link));
    EXPECT_FALSE(window_.ShowTopic("/absente.htm"));
    EXPECT_EQ(State([&] { topic_.Follow("/absente.htm"); }), "Grille - /a.htm Grille contents");
    const QVariant picture = topic_.loadResource(QTextDocument::ImageResource, QUrl("aide:/p.xpm"));
    EXPECT_EQ(picture.value<QImage>().size(), QSize(3, 2)) << "half its pixels";
    auto* plus = contents_.topLevelItem(1);
    topic_.setSource(QUrl("aide:/A1/b.htm"));
    EXPECT_EQ(State(), "Résoudre - /A1/b.htm Résoudre contents back");
    contents_.setCurrentItem(plus->child(0)->child(0));
    EXPECT_EQ(State(), "/z/a.htm Ctrl+F4 contents back");
    EXPECT_EQ(State([&] { contents_.setCurrentItem(plus); }), "/z/a.htm Plus contents back") << "a heading";
    EXPECT_EQ(State([&] { Button("back").click(); }), "Résoudre - /A1/b.htm Résoudre contents back forward");
    EXPECT_EQ(State([&] { Button("forward").click(); }), "/z/a.htm Ctrl+F4 contents back");
    words_.setText("mot");
    EXPECT_EQ(State([&] { Button("home").click(); }), "Grille - /a.htm Grille contents back");
    // Opened again, it knows neither the ways nor the words from before.
    words_.setText("mot");
    window_.File(Open(file_));
    EXPECT_EQ(State([&] { window_.ShowTopic("/a.htm"); }), "Grille - /a.htm Grille topic");
}

TEST_F(Help, TheSearchFindsTopicsWithEveryWordAndMarksThem) {
    auto& hits = Child<QListWidget>(window_, "hits");
    const auto& nothing = Child<QLabel>(window_, "nothingFound");
    words_.setFocus();
    QString found;
    // Those with the word in their title come first, whatever its accents and case are. Words are found from
    // their beginning, also behind an apostrophe of either kind, in what the contents name.
    for (const char* words : {"grille", "RESOUDRE", "re\u0301soudre", "coup, résoudre", "l'énig", "un",
                              "ctrl+f4", "grille hors", " <b>nigme ", "sommaire"}) {
        words_.setText(words);
        for (int i = 0; hits.isVisible() && i < hits.count(); ++i) found += hits.item(i)->text() + ' ';
        found += nothing.isVisible() ? nothing.text().section(' ', 4) : "|";
    }
    EXPECT_EQ(found.toStdString(),
              "Grille Résoudre |Résoudre Grille |Résoudre Grille |Résoudre |Grille |Résoudre |Ctrl+F4 |« "
              "grille hors ».« <b>nigme ».« sommaire ».");
    EXPECT_EQ(State([&] { words_.setText("mot"); }), "Grille - /a.htm mot Grille words Mot mot mot");
    words_.setText("grille resoudre");
    hits.setCurrentRow(1);
    EXPECT_EQ(State(), "Résoudre - /a1/b.htm grille resoudre Résoudre words back grille Résoudre");
    // Escape ends the search first.
    QTest::keyClick(&words_, Qt::Key_Escape);
    EXPECT_TRUE(window_.isVisible() && contents_.isVisible());
    QTest::keyClick(&words_, Qt::Key_Escape);
    EXPECT_FALSE(window_.isVisible());
}

// A dialog blocks the help until it belongs to it; a run of the engine lets nothing but modal windows react,
// so over a message box the help is modal itself. Either may go before the help does.
TEST_F(Help, CanBeUsedBesideAModalWindowAndOutlivesIt) {
    window_.move(70, 50);
    words_.setFocus();
    for (const bool message : {false, true}) {
        const std::unique_ptr<QDialog> dialog(message ? new QMessageBox : new QDialog);
        dialog->setModal(true);
        dialog->show();
        // Through the window system, which knows what a modal window blocks.
        QTest::keyClick(window_.windowHandle(), 'x');
        window_.ShowBeside(dialog.get());
        window_.ShowBeside(&window_);  // opened from a help that is modal
        QTest::keyClick(window_.windowHandle(), 'a');
        EXPECT_EQ(window_.isModal(), message);
    }
    EXPECT_EQ(words_.text(), "aa");
    EXPECT_TRUE(window_.isVisible() && !window_.isModal() && !window_.parentWidget());
    EXPECT_EQ(window_.pos(), QPoint(70, 50));
}

TEST_F(SmallHelp, OneWindowShowsAllAndASentenceTellsWhatCannotBeShown) {
    platform_qt::QtHelpViewer viewer(host_, ChmFile::DigestOf(Bytes(file_.toStdString())));
    const std::string file = file_.toStdString();
    host_.AnswerAlways(platform::MessageButton::Ok);
    viewer.ShowContents("absent.chm");
    viewer.ShowTopic("absent.chm", 2);
    viewer.ShowTopic(file, 999);
    platform_qt::QtHelpViewer(host_).ShowContents(file);  // whole, but not the program's
    QMessageBox box;
    box.open();
    viewer.ShowTopic(file, 2);
    auto& topic = Child<TopicView>(box, "topic");
    EXPECT_TRUE(topic.isVisible() && topic.Topic() == "/a1/b.htm");
    topic.window()->hide();
    viewer.ShowContents(file);
    EXPECT_TRUE(topic.isVisible() && topic.Topic() == "/a.htm");
    topic.Follow("/absente.htm");
    EXPECT_EQ(host_.boxes.at(4).text, "Fichier d'aide introuvable ou endommagé.");
    EXPECT_EQ(host_.boxes.at(4).style, 48);
}

}  // namespace
