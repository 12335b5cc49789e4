#include <QtGui>
#include <sys/stat.h>

#include "SmallHelp.h"

namespace {

// A page without its character set shows broken accents, a style sheet without its type does not load, a
// missing picture or topic shows nothing, and nobody finds a topic that the contents leave out.
TEST(ShippedHelp, IsCompleteAndSaysNothingOfTheMachineThatBuiltIt) {
    const auto file = ChmFile::Open(HELP_FILE);
    ASSERT_TRUE(file);
    QStringList topics;
    for (const int context : {210, 220, 230, 240}) topics += file->TopicOf(context);
    EXPECT_EQ(topics.join(' '), "/divers.htm /couleurs.htm /impression.htm /niveau.htm");
    QStringList unnamed = file->Objects().filter(".htm");
    for (const HelpEntry& entry : file->Contents()) unnamed.removeOne(entry.path);
    EXPECT_EQ(unnamed.join(' ').toStdString(), "");
    const QRegularExpression reference("(?:href|src)=\"([^\"]*)\"(?: width=\"(\\d+)\")?");
    for (const QString& object : file->Objects()) {
        SCOPED_TRACE(object.toStdString());
        const QByteArray bytes = file->Read(object).value_or("");
        EXPECT_FALSE(bytes.contains(SOURCE_FOLDER) || bytes.contains("/home/"));
        if (!object.endsWith(".htm")) continue;
        EXPECT_TRUE(bytes.contains("charset=\"utf-8\"") && bytes.contains("sheet\" type=\"text/css\""));
        for (const auto& match : reference.globalMatch(QString::fromUtf8(bytes))) {
            const auto target = file->Read('/' + match.captured(1));
            ASSERT_TRUE(target) << match.captured(1).toStdString();
            EXPECT_EQ(QImage::fromData(*target).width(), 2 * match.captured(2).toInt());
        }
    }
}

using HelpFile = SmallHelp;

TEST_F(HelpFile, ContentsKeepTheirOrderAndDepth) {
    const auto file = ChmFile::Open(file_);
    QString lines;
    for (const auto& entry : file->Contents())
        lines += QString::number(entry.depth) + entry.title + entry.path;
    EXPECT_EQ(lines.toStdString(),
              "0Débuter & jouer1Grille/a.htm1Résoudre/a1/b.htm0Plus1Détails2Ctrl+F4/z/a.htm");
    EXPECT_EQ(file->Home(), "/a.htm");
    EXPECT_TRUE(file->Read("/A1/B.HTM").value_or("").contains("d'un coup"));
    // A file without topics is none.
    Write("Aide.hhc", R"(<ul><li><object><param name="Name" value="Rien"></object></ul>)");
    EXPECT_FALSE(ChmFile::Open(Sealed(Compiled())));
}

TEST_F(HelpFile, AContextTableIsReadAsFarAsItIsSound) {
    Write("xSTRINGS", {"\0C:\\build\\a.htm\0/tmp/x/a1/b.htm\0/tmp/z/A.HTM\0/absent.htm\0/a.htm", 63});
    const std::pair<std::vector<qint32>, const char*> cases[] = {{{16, 1, 1, 2, 16}, "/a.htm|/a1/b.htm"},
                                                                 {{-1, 1, 32, 2, 16}, "/z/a.htm|/a1/b.htm"},
                                                                 {{15, 1, 1, 2, 16}, "/a.htm|"},
                                                                 {{0, 1, 1, 2, 16}, "|"},
                                                                 {{16, 1, 45, 2, 57}, "|"},
                                                                 {{16, 1, -1, 2, 16}, "|/a1/b.htm"},
                                                                 {{16, 1, 63, 2, 16}, "|/a1/b.htm"},
                                                                 {{}, "|"}};
    for (const auto& [table, topics] : cases) {
        Write("xIVB",
              {reinterpret_cast<const char*>(table.data()), static_cast<qsizetype>(4 * table.size())});
        // Compilers make their own; in the directory, the name of that one goes to this one.
        QByteArray bytes = Compiled().replace("/#IVB", "/yIVB").replace("/#STRINGS", "/ySTRINGS");
        const auto file = ChmFile::Open(Sealed(bytes.replace("/xIVB", "/#IVB").replace("/xSTR", "/#STR")));
        EXPECT_EQ((file->TopicOf(1) + '|' + file->TopicOf(2)).toStdString(), topics);
    }
}

TEST_F(HelpFile, DamagedOrNoFileAtAllIsRefused) {
    QByteArray whole = Bytes(file_.toStdString());
    EXPECT_FALSE(HelpSeal::IsWhole(whole + '\0'));
    EXPECT_FALSE(ChmFile::Open(Write("nue.chm", Compiled()))) << "without a seal";
    for (qsizetype place = 0; place < whole.size(); place += 31) {
        QByteArray damaged = whole;
        damaged[place] = static_cast<char>(damaged[place] ^ 0x10);
        EXPECT_FALSE(ChmFile::Open(Write("Aide.chm", damaged))) << "byte " << place;
        EXPECT_FALSE(HelpSeal::IsWhole(whole.first(place))) << place << " bytes";
    }
    EXPECT_FALSE(HelpSeal::Put(whole)) << "sealed already";
    QByteArray remark = "This archive was not made by the MS HTML Help Workshop";
    EXPECT_FALSE(HelpSeal::Put(remark)) << "no room";
    EXPECT_FALSE(ChmFile::Open(Sealed(remark + QByteArray(26, ' '))));
    // Nobody ever writes into a pipe: opening it would wait for ever.
    ASSERT_EQ(mkfifo(host_.PathOf("tube.chm").c_str(), 0600), 0);
    EXPECT_FALSE(ChmFile::Open(QString::fromStdString(host_.PathOf("tube.chm"))));
    // A hole from before the file was sealed: what lies in it is not read, what lies before it is.
    QByteArray bytes = Bytes(HELP_FILE);
    bytes.replace(bytes.indexOf("Ninarix SHA-256"), remark.size(), remark);
    const auto holed = ChmFile::Open(Sealed(bytes.replace(bytes.size() / 2, 20000, QByteArray(20000, 0))));
    const auto objects = holed->Objects();
    EXPECT_FALSE(std::all_of(objects.begin(), objects.end(), [&](auto& path) { return holed->Read(path); }));
    EXPECT_TRUE(holed->Read("/clavier.htm"));
}

}  // namespace
