#include "platform/qt/help/QtHelpViewer.h"

#include <QtWidgets>

#include "SmallHelp.h"
#include "platform/qt/help/TopicView.h"

namespace {

class Viewer : public SmallHelp {
  protected:
    // The topics on view.
    static std::string Topics() {
        std::string topics;
        for (QWidget* widget : QApplication::allWidgets()) {
            auto* topic = qobject_cast<TopicView*>(widget);
            if (topic && topic->isVisible()) topics += topic->Topic().toStdString();
        }
        return topics;
    }
    // Context 0: the contents.
    std::string Show(const std::string& file, int context) {
        context == 0 ? viewer_->ShowContents(file) : viewer_->ShowTopic(file, context);
        return Topics();
    }

    std::optional<platform_qt::QtHelpViewer> viewer_{host_};
    const std::string whole_ = file_.toStdString();
};

TEST_F(Viewer, WhatCannotBeShownIsToldInOneSentence) {
    host_.AnswerAlways(platform::MessageButton::Ok);
    EXPECT_EQ(Show("absent.chm", 0) + Show("absent.chm", 2) + Show(whole_, 999), "");
    ASSERT_EQ(host_.boxes.size(), 3U);
    EXPECT_EQ(host_.boxes[0].text, "Fichier d'aide introuvable ou endommagé.");
    EXPECT_EQ(host_.boxes[0].style, 48);
}

// The window belongs to the box, and goes with it when that is destroyed unseen.
TEST_F(Viewer, OneWindowShowsAllAlsoOverABoxAndAfterIt) {
    for (const int context : {0, 2}) {
        QMessageBox box;
        box.setModal(true);
        box.show();
        EXPECT_EQ(Show(whole_, context), context == 0 ? "/a.htm" : "/a1/b.htm");
        EXPECT_EQ(Show(whole_, 2), "/a1/b.htm");
        host_.Expect(platform::MessageButton::Ok);
        box.findChild<TopicView*>()->Follow("/absente.htm");
    }
    EXPECT_EQ(host_.boxes.size(), 2U);
    EXPECT_EQ(Show(whole_, 0), "/a.htm");
    viewer_.reset();
    EXPECT_EQ(Topics(), "");
}

}  // namespace
