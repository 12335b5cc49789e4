#include "platform/qt/help/HelpWindow.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>
#include <QWindow>
#include <gtest/gtest.h>

#include "platform/qt/help/ChmFile.h"
#include "platform/qt/help/TopicView.h"
#include "support/QtSupport.h"

namespace {

class Help : public testing::Test {
  protected:
    Help() { window_.File(ChmFile::Open(QStringLiteral(HELP_FILE))); }

    std::string Heading() { return topic_.toPlainText().section(QLatin1Char('\n'), 0, 0).toStdString(); }
    std::string Line() {
        const auto* line = Child<QTreeWidget>(window_, "contents").currentItem();
        return line ? line->text(0).toStdString() : std::string();
    }
    void Press(const char* button) { Child<QToolButton>(window_, button).click(); }
    // What a click on a link does.
    void Follow(const char* link) { topic_.setSource(QUrl(QString::fromUtf8(link))); }
    // Through the window system, which knows what a modal window blocks.
    static void TypeInto(QLineEdit& field, const char* text) {
        field.window()->activateWindow();
        field.setFocus();
        QTest::mouseClick(field.window()->windowHandle(), Qt::LeftButton, {},
                          field.mapTo(field.window(), field.rect().center()));
        for (const char* letter = text; *letter; ++letter) {
            QTest::keyClick(field.window()->windowHandle(), *letter);
        }
    }

    HelpWindow window_;
    TopicView& topic_ = Child<TopicView>(window_, "topic");
    QLineEdit& words_ = Child<QLineEdit>(window_, "words");
};

TEST_F(Help, TheContentsFollowTheTopicAlsoOnTheWayBack) {
    window_.ShowContents();
    EXPECT_EQ(Line(), "Premiers pas");
    Follow("aide:/niveau.htm");
    EXPECT_EQ(Heading(), "Préférences : Niveau");
    EXPECT_EQ(Line(), "Niveau");
    Press("back");
    EXPECT_EQ(Heading(), "Premiers pas");
    EXPECT_EQ(Line(), "Premiers pas");
    Press("forward");
    EXPECT_EQ(Line(), "Niveau");
}

TEST_F(Help, ALineOfTheContentsShowsItsTopic) {
    window_.ShowContents();
    auto& contents = Child<QTreeWidget>(window_, "contents");
    contents.setCurrentItem(contents.topLevelItem(1)->child(0));
    EXPECT_EQ(Heading(), "Saisir une grille");
    // A heading has no topic of its own.
    contents.setCurrentItem(contents.topLevelItem(2));
    EXPECT_EQ(Heading(), "Saisir une grille");
}

TEST_F(Help, ATopicOnViewIsNotEmptyWhenTheFileIsOpenedAgain) {
    window_.ShowContents();
    window_.File(ChmFile::Open(QStringLiteral(HELP_FILE)));
    window_.ShowContents();
    EXPECT_EQ(Heading(), "Premiers pas");
    EXPECT_EQ(Line(), "Premiers pas");
}

TEST_F(Help, ALinkToAMissingTopicLeavesThePage) {
    window_.ShowContents();
    QSignalSpy missing(&window_, &HelpWindow::TopicMissing);
    Follow("aide:/absente.htm");
    EXPECT_EQ(missing.count(), 1);
    EXPECT_EQ(Heading(), "Premiers pas");
    EXPECT_FALSE(window_.ShowTopic(QStringLiteral("/absente.htm")));
    EXPECT_EQ(Heading(), "Premiers pas");
}

TEST_F(Help, LinksThatLeadOutAreNotFollowed) {
    window_.ShowContents();
    QSignalSpy missing(&window_, &HelpWindow::TopicMissing);
    for (const char* link : {"http://example.invalid/", "file:///etc/hostname", "mailto:a@example.invalid"}) {
        Follow(link);
        EXPECT_EQ(Heading(), "Premiers pas") << link;
    }
    EXPECT_EQ(missing.count(), 0);
}

TEST_F(Help, PicturesAreShownAtHalfTheirPixels) {
    ASSERT_TRUE(window_.ShowTopic(QStringLiteral("/modes.htm")));
    const auto file = ChmFile::Open(QStringLiteral(HELP_FILE));
    const QImage stored = QImage::fromData(*file->Read(QStringLiteral("/masques-auto.png")));
    const auto shown = topic_.loadResource(QTextDocument::ImageResource, QUrl("aide:/masques-auto.png"));
    EXPECT_EQ(shown.value<QImage>().deviceIndependentSize().toSize(), stored.size() / 2);
}

TEST_F(Help, SearchingListsTopicsAndMarksTheWords) {
    window_.ShowContents();
    auto& hits = Child<QListWidget>(window_, "hits");
    window_.show();
    words_.setText(QStringLiteral("exclusions"));
    ASSERT_TRUE(hits.isVisible());
    ASSERT_GT(hits.count(), 1);
    hits.setCurrentRow(0);
    EXPECT_EQ(Heading(), "Valeurs et exclusions");
    ASSERT_FALSE(topic_.extraSelections().isEmpty());
    for (const auto& mark : topic_.extraSelections()) {
        EXPECT_EQ(mark.cursor.selectedText().toLower().toStdString(), "exclusions");
    }
    words_.setText(QStringLiteral("xylophone"));
    EXPECT_FALSE(hits.isVisible());
    EXPECT_TRUE(Child<QLabel>(window_, "nothingFound").isVisible());
    words_.clear();
    EXPECT_TRUE(Child<QTreeWidget>(window_, "contents").isVisible());
    EXPECT_TRUE(topic_.extraSelections().isEmpty());
}

TEST_F(Help, CanBeUsedBesideAModalDialogWhichCanBeUsedToo) {
    window_.ShowContents();
    window_.ShowBeside(nullptr);
    QDialog dialog;
    QLineEdit field(&dialog);
    dialog.setModal(true);
    dialog.show();
    TypeInto(words_, "abc");
    EXPECT_TRUE(words_.text().isEmpty()) << "the dialog should have blocked it";
    window_.ShowBeside(&dialog);
    TypeInto(words_, "abc");
    EXPECT_EQ(words_.text().toStdString(), "abc");
    TypeInto(field, "def");
    EXPECT_EQ(field.text().toStdString(), "def");
}

// A run of the engine lets nothing but modal windows react.
TEST_F(Help, IsModalOverAMessageBoxOnly) {
    QMessageBox box;
    box.setModal(true);
    box.show();
    window_.ShowBeside(&box);
    EXPECT_TRUE(window_.isModal());
    window_.ShowBeside(&window_);
    EXPECT_TRUE(window_.isVisible());
    box.hide();
    EXPECT_FALSE(window_.isModal());
    EXPECT_TRUE(window_.isVisible());
}

TEST_F(Help, OutlivesTheDialogItWasOpenedFrom) {
    window_.ShowContents();
    {
        QDialog dialog;
        dialog.setModal(true);
        dialog.show();
        window_.ShowBeside(&dialog);
    }
    ServeEvents();
    EXPECT_TRUE(window_.isVisible());
    TypeInto(words_, "abc");
    EXPECT_EQ(words_.text().toStdString(), "abc");
}

TEST_F(Help, EscapeEndsTheSearchFirst) {
    window_.ShowContents();
    window_.ShowBeside(nullptr);
    words_.setText(QStringLiteral("grille"));
    QTest::keyClick(&words_, Qt::Key_Escape);
    EXPECT_TRUE(window_.isVisible());
    EXPECT_TRUE(words_.text().isEmpty());
    QTest::keyClick(&words_, Qt::Key_Escape);
    EXPECT_FALSE(window_.isVisible());
}

}  // namespace
