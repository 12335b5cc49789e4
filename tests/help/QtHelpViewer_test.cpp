#include "platform/qt/help/QtHelpViewer.h"

#include <QApplication>
#include <gtest/gtest.h>

#include "platform/qt/help/HelpWindow.h"
#include "platform/qt/help/TopicView.h"
#include "support/QtSupport.h"
#include "support/ScriptedHost.h"

namespace {

class Viewer : public testing::Test {
  protected:
    static QList<HelpWindow*> Windows() {
        QList<HelpWindow*> windows;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* window = qobject_cast<HelpWindow*>(widget)) windows.append(window);
        }
        return windows;
    }
    // One sentence and no window.
    void ExpectRefusal(const std::string& file, int context) {
        SCOPED_TRACE(file);
        host_.boxes.clear();
        host_.Expect(platform::MessageButton::Ok);
        if (context == 0) {
            viewer_.ShowContents(file);
        } else {
            viewer_.ShowTopic(file, context);
        }
        ASSERT_EQ(host_.boxes.size(), 1U);
        EXPECT_EQ(host_.boxes[0].text, "Fichier d'aide introuvable ou endommagé.");
        EXPECT_EQ(host_.boxes[0].style, 48);
        for (const HelpWindow* window : Windows()) EXPECT_FALSE(window->isVisible());
    }

    ScriptedHost host_;
    platform_qt::QtHelpViewer viewer_{host_};
};

TEST_F(Viewer, WhatCannotBeShownIsToldInOneSentence) {
    const std::string whole = ScriptedHost::ReadFile(HELP_FILE);
    for (const int context : {0, 240}) {
        ExpectRefusal(host_.PathOf("absent.chm"), context);
        ExpectRefusal(host_.folder.string(), context);
        ScriptedHost::WriteFile(host_.PathOf("Court.chm"), whole.substr(0, whole.size() / 2));
        ExpectRefusal(host_.PathOf("Court.chm"), context);
        ScriptedHost::WriteFile(host_.PathOf("Vide.chm"), "");
        ExpectRefusal(host_.PathOf("Vide.chm"), context);
    }
    ExpectRefusal(HELP_FILE, 999);
}

TEST_F(Viewer, ContentsAndTopicsShareOneWindow) {
    viewer_.ShowContents(HELP_FILE);
    ASSERT_EQ(Windows().size(), 1);
    EXPECT_TRUE(Windows()[0]->isVisible());
    viewer_.ShowTopic(HELP_FILE, 230);
    ASSERT_EQ(Windows().size(), 1);
    EXPECT_EQ(Child<TopicView>(*Windows()[0], "topic").Topic().toStdString(), "/impression.htm");
}

TEST_F(Viewer, AMissingTopicBehindALinkIsReported) {
    viewer_.ShowContents(HELP_FILE);
    host_.Expect(platform::MessageButton::Ok);
    Child<TopicView>(*Windows().value(0), "topic").setSource(QUrl("aide:/absente.htm"));
    EXPECT_EQ(host_.boxes.size(), 1U);
}

}  // namespace
