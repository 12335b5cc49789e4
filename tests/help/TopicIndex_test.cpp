#include "platform/qt/help/TopicIndex.h"

#include <gtest/gtest.h>

#include "platform/qt/help/ChmFile.h"

namespace {

std::vector<std::string> PathsOf(const std::vector<TopicIndex::Hit>& hits) {
    std::vector<std::string> paths;
    for (const auto& hit : hits) paths.push_back(hit.path.toStdString());
    return paths;
}

class Search : public testing::Test {
  protected:
    std::vector<std::string> Find(const char* words) {
        return PathsOf(TopicIndex(*file_).Find(QString::fromUtf8(words)));
    }
    const std::unique_ptr<ChmFile> file_ = ChmFile::Open(QStringLiteral(HELP_FILE));
};

TEST_F(Search, AccentsAndCaseMakeNoDifference) {
    ASSERT_TRUE(file_);
    const auto hits = Find("résoudre");
    ASSERT_FALSE(hits.empty());
    // The word stands in this topic's title.
    EXPECT_EQ(hits.front(), "/verifier.htm");
    EXPECT_EQ(Find("RESOUDRE"), hits);
    EXPECT_EQ(Find("re\u0301soudre"), hits);
}

TEST_F(Search, EveryWordCounts) {
    ASSERT_TRUE(file_);
    const auto both = Find("imprimante pdf");
    EXPECT_EQ(both, std::vector<std::string>{"/imprimer.htm"});
    EXPECT_TRUE(Find("imprimante xylophone").empty());
}

TEST_F(Search, WordsAreFoundFromTheirBeginning) {
    ASSERT_TRUE(file_);
    EXPECT_FALSE(Find("tentat").empty());
    EXPECT_TRUE(Find("entative").empty());
    // Behind an apostrophe, a word begins.
    EXPECT_FALSE(Find("orientation").empty());
    EXPECT_EQ(Find("l'imprimante"), Find("l\u2019imprimante"));
}

TEST_F(Search, BlanksAndSignsAloneFindNothing) {
    ASSERT_TRUE(file_);
    for (const char* words : {"", "   ", "«»", "...", "'"}) EXPECT_TRUE(Find(words).empty()) << words;
}

// Places found in the folded text are marked in the text itself.
TEST_F(Search, FoldingKeepsEveryLetterInItsPlace) {
    const QString text = QStringLiteral("Œuvre d\u2019été — Noël ÀÉÎ ½ ﬁn");
    ASSERT_EQ(TopicIndex::Fold(text).size(), text.size());
    EXPECT_EQ(TopicIndex::Fold(text).indexOf(QStringLiteral("noel")), text.indexOf(QStringLiteral("Noël")));
}

}  // namespace
