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
    for (const int context : {210, 220, 230, 240}) topics += file->TopicOf(context);
    EXPECT_EQ(topics.join(' '), "/divers.htm /couleurs.htm /impression.htm /niveau.htm");
    const QRegularExpression reference("(?:href|src)=\"([^\"]*)\"(?: width=\"(\\d+)\")?");
    for (const QString& object : file->Objects()) {
        SCOPED_TRACE(object.toStdString());
        const QByteArray bytes = file->Read(object).value_or("");
        EXPECT_FALSE(bytes.contains(SOURCE_FOLDER) || bytes.contains("/home/"));
        if (!object.endsWith(".htm")) continue;
        EXPECT_TRUE(bytes.contains("charset=\"utf-8\"") && bytes.contains("sheet\" type=\"text/css\""));
        for (const auto& match : reference.globalMatch(QString::fromUtf8(bytes))) {
            const auto target = file->Read('/' + match.captured(1));
            EXPECT_TRUE(target && QImage::fromData(*target).width() == 2 * match.captured(2).toInt());
        }
    }
}

using HelpFile = SmallHelp;

TEST(HelpTables, AContextTableIsReadAsFarAsItIsSound) {
    const QByteArray strings{"\0C:\\build\\a.htm\0/tmp/x/a1/b.htm\0/tmp/z/A.HTM\0/absent.htm\0/a.htm", 63};
    // A byte count, which may be too large or too small, then contexts and offsets.
    const QList<QList<qint32>> tables = {{16, 1, 1, 2, 16},  {-1, 1, 32, 2, 16}, {15, 1, 1, 2, 16},
                                         {16, 1, 45, 2, 57}, {16, 1, -1, 2, 16}, {}};
    QString read;
    for (const auto& table : tables) {
        const QByteArray bytes(reinterpret_cast<const char*>(table.data()), 4 * table.size());
        const auto topics = HelpTables::TopicsOf(bytes, strings, {"/", "/a.htm", "/a1/b.htm", "/z/a.htm"});
        read += topics[1] + '|' + topics[2] + ' ';
    }
    EXPECT_EQ(read.toStdString(), "/a.htm|/a1/b.htm /z/a.htm|/a1/b.htm /a.htm| | |/a1/b.htm | ");
}

// Elsewhere and later the same topics make the same file, so that a program is what its sources make of it.
TEST_F(HelpFile, IsMadeTheSameInEveryFolder) {
    const std::string folder = " -DRESULT=" + host_.PathOf("a.chm") + " -DDIGEST=" + host_.PathOf("a.cpp");
    ASSERT_EQ(std::system((COMPILE_HELP + folder + " -P " SOURCE_FOLDER "/help/CompileHelp.cmake").c_str()),
              0);
    EXPECT_TRUE(Bytes(host_.PathOf("a.chm")) == Bytes(HELP_FILE));
}

TEST_F(HelpFile, IsTheOneThatIsExpectedOrRefusedAndStaysWhatItWasWhenItWasOpened) {
    const QByteArray whole = Bytes(file_.toStdString()), digest = ChmFile::DigestOf(whole);
    const QByteArray others[] = {whole.first(whole.size() - 1), whole + '\0',
                                 QByteArray(whole).replace("a1", "a2")};
    for (const QByteArray& other : others) EXPECT_FALSE(ChmFile::Open(Write("b.chm", other), digest));
    const auto file = ChmFile::Open(Write("b.chm", Bytes(HELP_FILE)), HelpDigest::BuiltIn());
    Write("b.chm", QByteArray(whole.size(), 'x'));  // in place
    EXPECT_EQ(file->Read("/fenetre.png"), Bytes(SOURCE_FOLDER "/help/fenetre.png"));
}

}  // namespace
