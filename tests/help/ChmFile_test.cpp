// SPDX-License-Identifier: MIT
#include <QtGui>

#include "SmallHelp.h"
#include "platform/qt/help/HelpDigest.h"

namespace {

// A page without its character set shows broken accents, a style sheet without its type does not load, a
// missing picture or topic shows nothing, and nobody finds a topic that the contents leave out.
TEST(ShippedHelp, IsCompleteAndSaysNothingOfTheMachineThatBuiltIt) {
    const auto file = ChmFile::Open(HELP_FILE, HelpDigest::BuiltIn());
    ASSERT_TRUE(file);
    QStringList topics = file->Objects().filter(".htm");
    for (const HelpEntry& entry : file->Contents()) topics.removeOne(entry.path);
    for (int context = 210; context <= 280; context += 10) topics += file->TopicOf(context);
    EXPECT_EQ(topics.join(' '),
              "/divers.htm /couleurs.htm /impression.htm /niveau.htm /generer.htm /imprimer.htm /calcul.htm "
              "/fichiers.htm");
    for (const HelpEntry& entry : file->Index())
        EXPECT_TRUE(file->Has(entry.path)) << entry.title.toStdString();
    EXPECT_FALSE(file->Index().empty());
    QStringList pictures = file->Objects().filter(".png");
    const QRegularExpression reference("(?:href|src)=\"([^\"]*)\"(?: width=\"(\\d+)\")?");
    for (const QString& object : file->Objects()) {
        SCOPED_TRACE(object.toStdString());
        const QByteArray bytes = file->Read(object).value_or("");
        EXPECT_FALSE(bytes.contains(SOURCE_FOLDER) || bytes.contains("/home/"));
        if (!object.endsWith(".htm")) continue;
        EXPECT_TRUE(std::ranges::none_of(bytes, [](char byte) { return byte < 0; })) << "garbled elsewhere";
        EXPECT_TRUE(bytes.contains("charset=\"utf-8\"") && bytes.contains("sheet\" type=\"text/css\""));
        for (const auto& match : reference.globalMatch(QString::fromUtf8(bytes))) {
            const auto target = file->Read('/' + match.captured(1));
            pictures.removeOne('/' + match.captured(1));
            EXPECT_TRUE(target && QImage::fromData(*target).width() == 2 * match.captured(2).toInt());
        }
    }
    EXPECT_EQ(pictures.join(" "), "") << "no topic shows them";
}

TEST_F(SmallHelp, IsTheOneThatIsExpectedOrRefusedAndStaysWhatItWasWhenItWasOpened) {
    const QByteArray whole = Bytes(file_.toStdString()), digest = ChmFile::DigestOf(whole);
    const QByteArray others[] = {whole.first(whole.size() - 1), whole + '\0',
                                 QByteArray(whole).replace("a1", "a2")};
    for (const QByteArray& other : others) EXPECT_FALSE(ChmFile::Open(Write("b.chm", other), digest));
    const auto file = ChmFile::Open(Write("b.chm", Bytes(HELP_FILE)), HelpDigest::BuiltIn());
    Write("b.chm", QByteArray(whole.size(), 'x'));  // in place
    EXPECT_EQ(file->Read("/fenetre.png"), Bytes(SOURCE_FOLDER "/help/fenetre.png"));
}

}  // namespace
