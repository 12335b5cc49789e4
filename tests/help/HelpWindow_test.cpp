#include "platform/qt/help/HelpWindow.h"

#include <QtTest>
#include <QtWidgets>

#include "SmallHelp.h"
#include "platform/qt/help/QtHelpViewer.h"
#include "platform/qt/help/TopicIndex.h"
#include "platform/qt/help/TopicView.h"
#include "support/QtSupport.h"

namespace {

class Help : public SmallHelp {
  protected:
    Help() {
        window_.File(ChmFile::Open(file_));
        window_.ShowContents();
        window_.ShowBeside(nullptr);
    }

    // The topic, the line of the contents that stands for it, what is searched, the ways that are open and
    // the words that are marked.
    std::string State() {
        const auto* line = contents_.currentItem();
        QStringList parts{topic_.Topic(), line ? line->text(0) : "", words_.text()};
        for (const char* way : {"back", "forward"}) parts += Button(way).isEnabled() ? way : "";
        for (const auto& mark : topic_.extraSelections()) parts += mark.cursor.selectedText();
        return parts.join(' ').simplified().toStdString();
    }
    QToolButton& Button(const char* name) { return Child<QToolButton>(window_, name); }
    // Through the window system, which knows what a modal window blocks.
    static std::string TypedInto(QLineEdit& field) {
        field.clear();
        QWindow* window = field.window()->windowHandle();
        window->requestActivate();
        QTest::mouseClick(window, Qt::LeftButton, {}, field.mapTo(field.window(), field.rect().center()));
        for (const char letter : {'a', 'b', 'c'}) QTest::keyClick(window, letter);
        return field.text().toStdString();
    }

    HelpWindow window_;
    TopicView& topic_ = Child<TopicView>(window_, "topic");
    QLineEdit& words_ = Child<QLineEdit>(window_, "words");
    QTreeWidget& contents_ = Child<QTreeWidget>(window_, "contents");
};

TEST_F(Help, TheContentsFollowTheTopicAndLeadToIt) {
    EXPECT_EQ(State(), "/a.htm Grille");
    EXPECT_EQ(window_.windowTitle(), "Grille - Aide de Ninarix");
    topic_.setSource(QUrl("aide:/A1/b.htm"));
    EXPECT_EQ(State(), "/A1/b.htm Résoudre back");
    auto* plus = contents_.topLevelItem(1);
    EXPECT_FALSE(contents_.visualItemRect(plus->child(0)->child(0)).isEmpty()) << "not unfolded";
    contents_.setCurrentItem(plus->child(0)->child(0));
    EXPECT_EQ(State(), "/z/a.htm Ctrl+F4 back");
    EXPECT_EQ(window_.windowTitle(), "Aide de Ninarix");
    contents_.setCurrentItem(plus);
    EXPECT_EQ(State(), "/z/a.htm Plus back") << "a heading has no topic";
    Button("back").click();
    EXPECT_EQ(State(), "/A1/b.htm Résoudre back forward");
    Button("forward").click();
    words_.setText("mot");
    EXPECT_EQ(State(), "/z/a.htm Ctrl+F4 mot back");
    Button("home").click();
    EXPECT_EQ(State(), "/a.htm Grille back");
    EXPECT_EQ(window_.focusWidget(), &contents_);
    // Opened again, it knows nothing of what was before.
    words_.setText("mot");
    window_.File(ChmFile::Open(file_));
    ASSERT_TRUE(window_.ShowTopic("/a.htm"));
    EXPECT_EQ(State(), "/a.htm Grille");
    EXPECT_EQ(window_.focusWidget(), &topic_);
    EXPECT_TRUE(topic_.toPlainText().startsWith("Grille\n"));
    // Captions beside their pictures, side by side, and all above the topic, which has most of the window.
    EXPECT_GT(Button("back").width(), Button("back").fontMetrics().horizontalAdvance("Précédent"));
    EXPECT_LT(Button("back").geometry().right(), Button("forward").x());
    EXPECT_LE(Button("back").parentWidget()->geometry().bottom(), topic_.y());
    EXPECT_GT(2 * topic_.width(), window_.width());
}

TEST_F(Help, WhatCannotBeShownLeavesThePage) {
    const QSignalSpy missing(&window_, &HelpWindow::TopicMissing);
    for (const char* link : {"http:/z/a.htm", "mailto:a@example.invalid"}) topic_.setSource(QUrl(link));
    EXPECT_FALSE(window_.ShowTopic("/absente.htm"));
    EXPECT_EQ(missing.count(), 0);
    topic_.Follow("/absente.htm");
    EXPECT_EQ(missing.count(), 1);
    EXPECT_EQ(State(), "/a.htm Grille");
    const auto picture = [this](const char* url) {
        return topic_.loadResource(QTextDocument::ImageResource, QUrl(url)).value<QImage>();
    };
    EXPECT_TRUE(picture("http:/p.xpm").isNull() && picture("aide:/absent.png").isNull());
    EXPECT_EQ(picture("aide:/p.xpm").size(), QSize(3, 2)) << "half its pixels";
    EXPECT_EQ(picture("aide:/p.xpm").pixelColor(1, 1), QColor(Qt::red));
}

TEST_F(Help, TheSearchFindsTopicsWithEveryWordAndMarksThem) {
    auto& hits = Child<QListWidget>(window_, "hits");
    const std::pair<const char*, const char*> cases[] = {
        // Those with the word in their title come first, whatever its accents and case are.
        {"grille", "Grille Résoudre "},
        {"RESOUDRE", "Résoudre Grille "},
        {"re\u0301soudre", "Résoudre Grille "},
        {"coup, résoudre", "Résoudre "},
        {"grille hors", ""},
        // Words are found from their beginning, also behind an apostrophe of either kind.
        {"l'énig", "Grille "},
        {"un", "Résoudre "},
        {"nigme", ""},
        {"ctrl+f4", "Ctrl+F4 "},
        // Of a topic that the contents do not name.
        {"sommaire", ""}};
    for (const auto& [words, titles] : cases) {
        words_.setText(words);
        QString found;
        for (int row = 0; row < hits.count(); ++row) found += hits.item(row)->text() + ' ';
        EXPECT_EQ(found.toStdString(), titles) << words;
        EXPECT_EQ(hits.isVisible(), !found.isEmpty()) << words;
    }
    words_.setText("mot");
    EXPECT_EQ(State(), "/a.htm Grille mot Mot mot mot") << "of Mot, moteur, automot and mots";
    words_.setText("grille resoudre");
    hits.setCurrentRow(1);
    EXPECT_EQ(State(), "/a1/b.htm Résoudre grille resoudre back grille Résoudre");
    words_.setText(" <b>xylophone ");
    const auto& nothing = Child<QLabel>(window_, "nothingFound");
    EXPECT_TRUE(nothing.isVisible() && nothing.textFormat() == Qt::PlainText);
    EXPECT_EQ(nothing.text().toStdString(), "Aucune rubrique ne contient « <b>xylophone ».");
    // Escape ends the search first; other keys are left alone.
    QTest::keyClick(&words_, Qt::Key_F5);
    QTest::keyClick(&words_, Qt::Key_Escape);
    EXPECT_TRUE(window_.isVisible() && contents_.isVisible());
    QTest::keyClick(&words_, Qt::Key_Escape);
    EXPECT_FALSE(window_.isVisible());
    // Letter for letter: places found in the folded text are marked in the text itself.
    EXPECT_EQ(TopicIndex::Fold("Œuvre d\u2019été — Noël ÀÉÎ ½ ﬁn"), "œuvre d'ete — noel aei ½ ﬁn");
}

// A dialog blocks the help until it belongs to it; a run of the engine lets nothing but modal windows react,
// so over a message box the help is modal itself. Either may go before the help does.
TEST_F(Help, CanBeUsedBesideAModalWindowAndOutlivesIt) {
    window_.move(70, 50);
    {
        QDialog dialog;
        QLineEdit field(&dialog);
        dialog.setModal(true);
        dialog.show();
        EXPECT_EQ(TypedInto(words_), "");
        window_.ShowBeside(&dialog);
        EXPECT_EQ(TypedInto(words_) + TypedInto(field), "abcabc");
    }
    EXPECT_TRUE(window_.isVisible());
    QMessageBox box;
    box.open();
    window_.showMinimized();
    window_.ShowBeside(&box);
    EXPECT_EQ(TypedInto(words_), "abc");
    EXPECT_TRUE(window_.isModal() && !window_.isMinimized());
    window_.ShowBeside(&window_);  // opened from a help that is modal
    EXPECT_EQ(window_.parentWidget(), &box);
    box.hide();
    EXPECT_TRUE(!window_.isModal() && !window_.parentWidget());
    EXPECT_EQ(TypedInto(words_), "abc");
    EXPECT_EQ(window_.pos(), QPoint(70, 50));
}

// The window belongs to the box, and goes with it when that is destroyed unseen.
TEST_F(SmallHelp, OneWindowShowsAllAndASentenceTellsWhatCannotBeShown) {
    std::optional<platform_qt::QtHelpViewer> viewer(host_);
    const std::string file = file_.toStdString();
    const auto topics = [] {
        std::string shown;
        for (QWidget* widget : QApplication::allWidgets()) {
            auto* topic = qobject_cast<TopicView*>(widget);
            if (topic && topic->isVisible()) shown += topic->Topic().toStdString();
        }
        return shown;
    };
    host_.AnswerAlways(platform::MessageButton::Ok);
    viewer->ShowContents("absent.chm");
    viewer->ShowTopic("absent.chm", 2);
    viewer->ShowTopic(file, 999);
    EXPECT_EQ(topics(), "");
    for (const bool contents : {true, false}) {
        QMessageBox box;
        box.open();
        contents ? viewer->ShowContents(file) : viewer->ShowTopic(file, 2);
        EXPECT_EQ(topics(), contents ? "/a.htm" : "/a1/b.htm");
        box.findChild<TopicView*>()->Follow("/absente.htm");
    }
    viewer->ShowTopic(file, 2);
    viewer->ShowContents(file);
    EXPECT_EQ(topics(), "/a.htm");
    viewer.reset();
    EXPECT_EQ(topics(), "");
    ASSERT_EQ(host_.boxes.size(), 5U);
    EXPECT_EQ(host_.boxes[0].text, "Fichier d'aide introuvable ou endommagé.");
    EXPECT_EQ(host_.boxes[0].style, 48);
}

}  // namespace
