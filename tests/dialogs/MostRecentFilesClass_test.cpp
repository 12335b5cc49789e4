// SPDX-License-Identifier: MIT
#include "settings/dialogs/MostRecentFilesClass.h"

#include <QMenu>

#include "DialogSupport.h"

namespace {

class RecentFiles : public testing::Test {
  protected:
    RecentFiles() {
        for (const char* name : {"mnuFilePrint", "mnuFileSepMRU", "mnuFileMRU", "mnuFileQuit"}) {
            QAction* action = menu.addAction(name);
            action->setObjectName(name);
            action->setParent(&window);
        }
    }
    void Add(const std::vector<std::string>& paths) {
        for (const std::string& path : paths) list.Add(window, path);
    }
    // "caption=path" of every entry, after a check of the line above them.
    std::string Entries() const {
        std::string entries;
        const auto actions = menu.actions();
        for (int i = 1; i <= actions.size() - 4; ++i)
            entries += actions[i + 2]->text().toStdString() + "=" + list.PathOf(window, i) + " ";
        EXPECT_EQ(actions[1]->isVisible(), !entries.empty());
        return entries;
    }

    ScriptedHost host;
    QWidget window;
    QMenu menu;
    MostRecentFilesClass list;
};

TEST_F(RecentFiles, TheLatestStandsOnTopOnceAndAFullListDropsTheOldest) {
    const std::pair<std::vector<std::string>, std::string> steps[] = {
        {{"/a", "/é&.nx3"}, "/é&&.nx3=/é&.nx3 /a=/a "},
        {{"/c", "/É&.NX3"}, "/é&&.nx3=/É&.NX3 /c=/c /a=/a "},  // the same file with its old caption
        {{"/un,deux,trois", "/e"}, "/e=/e deux=/un,deux,trois /é&&.nx3=/É&.NX3 /c=/c /a=/a "},
        {{"/c"}, "/c=/c /e=/e deux=/un,deux,trois /é&&.nx3=/É&.NX3 /a=/a "},
        {{"/f"}, "/f=/f /c=/c /e=/e deux=/un,deux,trois /é&&.nx3=/É&.NX3 "},
        // Long paths lose their middle.
        {{"/été/jeux/12345678901234567890", "/été/jeux/123456789012345678901"},
         "/été/.../123456789012345678901=/été/jeux/123456789012345678901 "
         "/été/jeux/12345678901234567890=/été/jeux/12345678901234567890 /f=/f /c=/c /e=/e "},
    };
    for (const auto& [added, entries] : steps) {
        Add(added);
        EXPECT_EQ(Entries(), entries);
    }
}

TEST_F(RecentFiles, LoadClosesUpOverEmptyKeysAndSaveLeavesNoKeyOfALongerList) {
    const std::string file = IniParamProcs::IniFilePath();
    ScriptedHost::WriteFile(file,
                            "[mru]\r\n6=/six\r\n1=/un\r\n3=\r\n2=/deux\r\n5=/cinq\r\n[Options]\r\nA=1\r\n");
    list.Save(window, file);  // nothing: it may be that the list could not be read
    list.Load(window, file);
    EXPECT_EQ(Entries(), "/un=/un /deux=/deux /cinq=/cinq ");
    list.Save(window, file);
    EXPECT_EQ(ScriptedHost::ReadFile(file), "[Options]\r\nA=1\r\n[MRU]\r\n1=/un\r\n2=/deux\r\n3=/cinq\r\n");
}

TEST_F(RecentFiles, DeleteNamesTheFileAndClosesTheGap) {
    Add({"/a", "/jeux/un.nx3", "/c"});
    host.AnswerAlways(platform::MessageButton::Ok);
    const std::pair<int, std::string> steps[] = {{2, "/c=/c /a=/a "}, {1, "/a=/a "}, {1, ""}, {1, ""}};
    for (const auto& [index, entries] : steps) {
        list.Delete(window, index);
        EXPECT_EQ(Entries(), entries);
    }
    EXPECT_EQ(host.boxes[0].text, "Le fichier \"/jeux/un.nx3\" n'existe plus ou a été déplacé");
}

}  // namespace
