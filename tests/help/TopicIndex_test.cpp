#include "platform/qt/help/TopicIndex.h"

#include "SmallHelp.h"

namespace {

using Search = SmallHelp;

TEST_F(Search, FindsTheTopicsWithEveryWord) {
    const TopicIndex index(*ChmFile::Open(file_));
    const std::pair<const char*, const char*> cases[] = {
        // Those with the word in their title come first, whatever its accents and case are.
        {"grille", "/a.htm /a1/b.htm"},
        {"RESOUDRE", "/a1/b.htm /a.htm"},
        {"re\u0301soudre", "/a1/b.htm /a.htm"},
        {"coup, résoudre", "/a1/b.htm"},
        {"grille hors", ""},
        // Words are found from their beginning, also behind an apostrophe of either kind.
        {"l'énig", "/a.htm"},
        {"un", "/a1/b.htm"},
        {"nigme", ""},
        {"ctrl+f4", "/z/a.htm"},
        {"sommaire", ""},  // of a topic that the contents do not name
        {" «» ... ' ", ""}};
    for (const auto& [words, paths] : cases) {
        QStringList found;
        for (const auto& hit : index.Find(words)) found += hit.path;
        EXPECT_EQ(found.join(' ').toStdString(), paths) << words;
    }
    // Letter for letter: places found in the folded text are marked in the text itself.
    EXPECT_EQ(TopicIndex::Fold("Œuvre d\u2019été — Noël ÀÉÎ ½ ﬁn"), "œuvre d'ete — noel aei ½ ﬁn");
}

}  // namespace
