// SPDX-License-Identifier: MIT
#include "platform/qt/help/HelpWindow.h"

#include <QtTest>
#include <QtWidgets>

#include "SmallHelp.h"
#include "platform/qt/help/HelpDigest.h"
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

    // The topic, what is searched, the line of the contents that stands for the topic, the ways that are open
    // and the words that are marked.
    std::string State() {
        QStringList parts{topic_.Topic(), words_.text(), contents_.currentItem()->text(0)};
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
    EXPECT_EQ(State(), "/a.htm Grille");
    auto* plus = contents_.topLevelItem(1);
    const std::pair<std::function<void()>, const char*> steps[] = {
        {[&] { topic_.setSource(QUrl("aide:/A1/b.htm")); }, "/A1/b.htm Résoudre back"},
        {[&] { contents_.setCurrentItem(plus->child(0)->child(0)); }, "/z/a.htm Ctrl+F4 back"},
        {[&] { contents_.setCurrentItem(plus); }, "/z/a.htm Plus back"},  // a heading
        {[&] { Button("back").click(); }, "/A1/b.htm Résoudre back forward"},
        {[&] { Button("home").click(); }, "/a.htm Grille back"},
    };
    for (const auto& [act, state] : steps) {
        act();
        EXPECT_EQ(State(), state);
    }
}

TEST_F(Help, TheIndexLeadsToItsTopics) {
    window_.File(ChmFile::Open(HELP_FILE, HelpDigest::BuiltIn()));
    window_.ShowContents();
    Child<QTabWidget>(window_, "parts").setCurrentIndex(1);
    auto& keywords = Child<QListWidget>(window_, "keywords");
    ASSERT_TRUE(keywords.isVisible());
    const auto found = keywords.findItems("onglets", Qt::MatchExactly);
    ASSERT_EQ(found.size(), 1);
    keywords.setCurrentItem(found.front());
    EXPECT_EQ(topic_.Topic(), "/fichiers.htm");
    topic_.Follow("/regles.htm");
    emit keywords.itemActivated(found.front());
    EXPECT_EQ(topic_.Topic(), "/fichiers.htm");
}

TEST_F(Help, TheSearchFindsTopicsWithEveryWordAndMarksThem) {
    auto& hits = Child<QListWidget>(window_, "hits");
    // Those with the word in their title come first, whatever its accents and case are. Words are found from
    // their beginning, also behind an apostrophe, in what the contents name.
    const std::pair<const char*, const char*> searches[] = {{"re\u0301soudre", "Résoudre Grille "},
                                                            {"coup, RESOUDRE", "Résoudre "},
                                                            {"l'énig", "Grille "},
                                                            {"ctrl+f4", "Ctrl+F4 "},
                                                            {"grille hors", ""}};
    for (const auto& [words, titles] : searches) {
        words_.setText(words);
        QString found;
        for (int i = 0; hits.isVisible() && i < hits.count(); ++i) found += hits.item(i)->text() + ' ';
        EXPECT_EQ(found, titles);
    }
    words_.setText("grille resoudre");
    hits.setCurrentRow(1);
    EXPECT_EQ(State(), "/a1/b.htm grille resoudre Résoudre back grille Résoudre");
}

// A dialog blocks the help until it belongs to it; a run of the engine lets nothing but modal windows react,
// so over a message box the help is modal itself. Either may go before the help does.
TEST_F(Help, CanBeUsedBesideAModalWindowAndOutlivesIt) {
    words_.setFocus();
    for (const bool message : {false, true}) {
        const std::unique_ptr<QDialog> dialog(message ? new QMessageBox : new QDialog);
        dialog->setModal(true);
        dialog->show();
        window_.ShowBeside(dialog.get());
        window_.ShowBeside(&window_);  // opened from a help that is modal
        // Through the window system, which knows what a modal window blocks.
        QTest::keyClick(window_.windowHandle(), 'a');
        EXPECT_EQ(window_.isModal(), message);
    }
    EXPECT_EQ(words_.text(), "aa");
    EXPECT_TRUE(window_.isVisible() && !window_.isModal() && !window_.parentWidget());
}

TEST_F(SmallHelp, OneWindowShowsAllAndASentenceTellsWhatCannotBeShown) {
    platform_qt::QtHelpViewer viewer(host_, ChmFile::DigestOf(Bytes(file_.toStdString())));
    const std::string file = file_.toStdString();
    host_.AnswerAlways(platform::MessageButton::Ok);
    viewer.ShowContents("absent.chm");
    viewer.ShowTopic(file, 999);
    platform_qt::QtHelpViewer(host_).ShowContents(file);  // whole, but not the program's
    EXPECT_EQ(host_.boxes.size(), 3U);
    QMessageBox box;
    box.open();
    viewer.ShowTopic(file, 2);
    auto& topic = Child<TopicView>(box, "topic");
    EXPECT_TRUE(topic.isVisible() && topic.Topic() == "/a1/b.htm");
    topic.window()->hide();
    viewer.ShowContents(file);
    EXPECT_TRUE(topic.isVisible() && topic.Topic() == "/a.htm");
}

}  // namespace
