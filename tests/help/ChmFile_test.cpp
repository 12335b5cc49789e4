#include "platform/qt/help/ChmFile.h"

#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <sys/stat.h>

#include "platform/qt/help/HelpSeal.h"

namespace {

QByteArray BuiltBytes() {
    QFile file(QStringLiteral(HELP_FILE));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

// Files in a folder of the test's own.
class HelpFile : public testing::Test {
  protected:
    QString Write(const QByteArray& bytes) {
        QFile file(folder_.filePath(QStringLiteral("Aide.chm")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return file.fileName();
    }

    QTemporaryDir folder_;
    const std::unique_ptr<ChmFile> built_ = ChmFile::Open(QStringLiteral(HELP_FILE));
};

struct ContextCase {
    int context;
    const char* object;
    const char* heading;
};

class HelpContext : public HelpFile, public testing::WithParamInterface<ContextCase> {};

TEST_P(HelpContext, LeadsToItsTopic) {
    ASSERT_TRUE(built_);
    const QString topic = built_->TopicOf(GetParam().context);
    EXPECT_EQ(topic.toStdString(), GetParam().object);
    const QString html = QString::fromUtf8(built_->Read(topic).value_or(""));
    EXPECT_TRUE(html.contains(QStringLiteral("<h1>Préférences\u00a0: %1</h1>").arg(GetParam().heading)));
}

INSTANTIATE_TEST_SUITE_P(All, HelpContext,
                         testing::Values(ContextCase{210, "/divers.htm", "Divers"},
                                         ContextCase{220, "/couleurs.htm", "Couleurs"},
                                         ContextCase{230, "/impression.htm", "Impression"},
                                         ContextCase{240, "/niveau.htm", "Niveau"}),
                         [](const auto& info) { return std::to_string(info.param.context); });

TEST_F(HelpFile, ContentsNameEveryTopicOnce) {
    ASSERT_TRUE(built_);
    std::multiset<QString> named;
    for (const HelpEntry& entry : built_->Contents()) {
        EXPECT_EQ(entry.path.isEmpty(), entry.depth == 0) << entry.title.toStdString();
        if (!entry.path.isEmpty()) named.insert(entry.path);
    }
    std::multiset<QString> there;
    for (const QString& object : built_->Objects()) {
        if (object.endsWith(QStringLiteral(".htm"))) there.insert(object);
    }
    EXPECT_EQ(named, there);
    EXPECT_GE(there.size(), 12U);
}

// A page without its character set shows broken accents, a style sheet without its type does not load, and
// a missing picture or topic shows nothing.
TEST_F(HelpFile, TopicsNameTheirCharacterSetAndNothingThatIsMissing) {
    ASSERT_TRUE(built_);
    const QRegularExpression reference(QStringLiteral("(?:href|src)=\"([^\"]*)\"(?: width=\"(\\d+)\")?"));
    int references = 0;
    for (const QString& object : built_->Objects()) {
        if (!object.endsWith(QStringLiteral(".htm"))) continue;
        SCOPED_TRACE(object.toStdString());
        const QString html = QString::fromUtf8(built_->Read(object).value_or(""));
        EXPECT_TRUE(html.contains(QStringLiteral("<meta charset=\"utf-8\">")));
        EXPECT_TRUE(html.contains(QStringLiteral("rel=\"stylesheet\" type=\"text/css\"")));
        EXPECT_FALSE(html.contains(QChar::ReplacementCharacter));
        for (auto found = reference.globalMatch(html); found.hasNext(); ++references) {
            const auto match = found.next();
            const auto bytes = built_->Read(QLatin1Char('/') + match.captured(1));
            ASSERT_TRUE(bytes) << match.captured(1).toStdString();
            if (!match.captured(1).endsWith(QStringLiteral(".png"))) continue;
            EXPECT_EQ(QImage::fromData(*bytes).width(), 2 * match.captured(2).toInt());
        }
    }
    EXPECT_GT(references, 40);
}

TEST_F(HelpFile, ShipsNoFolderOfTheMachineThatBuiltIt) {
    ASSERT_TRUE(built_);
    for (const QString& object : built_->Objects()) {
        const QByteArray bytes = built_->Read(object).value_or("");
        EXPECT_FALSE(bytes.contains(SOURCE_FOLDER)) << object.toStdString();
        EXPECT_FALSE(bytes.contains("/home/")) << object.toStdString();
    }
}

TEST_F(HelpFile, OneWrongByteIsRefused) {
    const QByteArray whole = BuiltBytes();
    std::mt19937 random(20);
    for (int round = 0; round < 150; ++round) {
        QByteArray damaged = whole;
        // Half of them in the header and the directory, where the library believes every number.
        const auto end = static_cast<std::size_t>(round % 2 ? whole.size() : 12000);
        const auto place = static_cast<qsizetype>(random() % end);
        damaged[place] = static_cast<char>(damaged[place] + 1 + static_cast<int>(random() % 255));
        EXPECT_FALSE(ChmFile::Open(Write(damaged))) << "byte " << place;
    }
    EXPECT_TRUE(ChmFile::Open(Write(whole)));
}

TEST_F(HelpFile, TruncatedIsRefusedAtAnyLength) {
    const QByteArray whole = BuiltBytes();
    for (qsizetype length = 0; length < whole.size(); length += 1 + length / 10) {
        EXPECT_FALSE(ChmFile::Open(Write(whole.first(length)))) << length << " bytes";
    }
    EXPECT_FALSE(ChmFile::Open(Write(whole.chopped(1))));
    EXPECT_FALSE(ChmFile::Open(Write(whole + '\0')));
}

TEST_F(HelpFile, WhatIsNoFileIsRefused) {
    EXPECT_FALSE(ChmFile::Open(folder_.filePath(QStringLiteral("absent.chm"))));
    EXPECT_FALSE(ChmFile::Open(folder_.path()));
    EXPECT_FALSE(ChmFile::Open({}));
    // Nobody ever writes into it: opening it would wait for ever.
    const QString pipe = folder_.filePath(QStringLiteral("tube.chm"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_FALSE(ChmFile::Open(pipe));
}

// A hole from before the file was sealed.
TEST_F(HelpFile, AnObjectThatCannotBeReadWholeIsNotRead) {
    ASSERT_TRUE(built_);
    QByteArray file = BuiltBytes();
    const QByteArray remark = "This archive was not made by the MS HTML Help Workshop";
    file.replace(file.indexOf("Ninarix SHA-256"), remark.size(), remark);
    const QByteArray hole(20000, '\0');
    file.replace(file.size() / 2, hole.size(), hole);
    ASSERT_TRUE(HelpSeal::Put(file));
    const auto damaged = ChmFile::Open(Write(file));
    ASSERT_TRUE(damaged);
    const QStringList objects = damaged->Objects();
    EXPECT_TRUE(std::any_of(objects.begin(), objects.end(),
                            [&](const QString& object) { return !damaged->Read(object); }));
    // What lies before the hole is not touched by it.
    EXPECT_EQ(damaged->Read(QStringLiteral("/clavier.htm")), built_->Read(QStringLiteral("/clavier.htm")));
}

}  // namespace
