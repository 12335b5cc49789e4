#include "platform/qt/QtFileDialogs.h"

#include <QtTest>
#include <QtWidgets>

#include "support/QtSupport.h"
#include "support/ScriptedHost.h"

namespace {

class FileDialog : public testing::Test {
  protected:
    FileDialog() { ScriptedHost::WriteFile(host_.PathOf("Ancienne.nx3"), ""); }

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

TEST_F(FileDialog, StartsWhereAndWithWhatItIsTold) {
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

TEST_F(FileDialog, SavesUnderTheFirstPatternsExtensionAndOverAFileOnlyWhenAgreed) {
    EXPECT_EQ(Enter(true, "Été"), host_.PathOf("Été.nx3"));
    EXPECT_EQ(Enter(true, "a.txt"), host_.PathOf("a.txt"));
    EXPECT_EQ(Enter(true, "Ancienne", QMessageBox::No), "");
    EXPECT_EQ(Enter(true, "Ancienne", QMessageBox::Yes), host_.PathOf("Ancienne.nx3"));
}

TEST_F(FileDialog, OpensOnlyAFileThatExists) {
    EXPECT_EQ(Enter(false, "Ancienne.nx3"), host_.PathOf("Ancienne.nx3"));
    EXPECT_EQ(Enter(false, "Absente.nx3", QMessageBox::Ok), "");
}

}  // namespace
