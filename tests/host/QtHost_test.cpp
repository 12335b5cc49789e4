// SPDX-License-Identifier: MIT
#include "platform/qt/QtHost.h"

#include <QtTest>
#include <QtWidgets>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>

#include "platform/Registry.h"
#include "platform/qt/Contrast.h"
#include "platform/qt/ProgramStyle.h"
#include "support/QtSupport.h"

using namespace std::literals;

namespace {

class Host : public testing::Test {
  protected:
    const char* const words_[3] = {"none/such", "/tmp/Grille 1.nx3", "b\xE9.nx3"};
    const platform_qt::QtHost qt_{words_};
    const platform::Host host_ = qt_.Interfaces();
};

// A search calls it without an end: what waits is served, though not at every call.
TEST_F(Host, ThePumpServesEventsNowAndThen) {
    int served = 0;
    QTimer always;
    QObject::connect(&always, &QTimer::timeout, [&] { ++served; });
    always.start(0);
    QElapsedTimer run;
    run.start();
    while (served < 5 && run.elapsed() < 10000) host_.events->Yield();
    EXPECT_EQ(served, 5);
    EXPECT_GE(run.elapsed(), 8 * (served - 1));
}

TEST_F(Host, TheDefaultPointerEndsEveryWaitingOne) {
    host_.pointer->Shape(platform::PointerShape::Hourglass);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    host_.pointer->Shape(platform::PointerShape::ArrowAndHourglass);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::BusyCursor);
    QApplication::setOverrideCursor(Qt::ForbiddenCursor);  // that somebody else left behind
    host_.pointer->Shape(platform::PointerShape::Default);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(Host, TheClockCountsNanosecondsAndNoSeedComesTwice) {
    QElapsedTimer watch;
    watch.start();
    const auto first = host_.clock->Now();
    QSet<quint64> seeds;
    int count = 0;
    while (++count < 10000 || host_.clock->Now() == first) seeds.insert(host_.seeds->NextSeed());
    EXPECT_EQ(seeds.size(), count - 1);
    constexpr qint64 tick = 10'000'000;
    const auto passed = (host_.clock->Now() - first).count();
    EXPECT_TRUE(passed > 0 && passed <= watch.nsecsElapsed() + tick) << passed;
}

// By itself a tool does not show that it has the keyboard.
TEST(ProgramStyle, FramesTheToolThatHasTheKeyboard) {
    platform_qt::ProgramStyle style;
    const QToolButton tool;
    const auto framed = [&](QStyle::State state) {
        QImage picture(40, 40, QImage::Format_RGB32);
        picture.fill(Qt::white);
        QPainter painter(&picture);
        QStyleOptionToolButton option;
        option.rect = picture.rect();
        option.state = state;
        style.drawComplexControl(QStyle::CC_ToolButton, &option, &painter, &tool);
        int count = 0;
        for (int x = 0; x < picture.width(); ++x)
            count += picture.pixelColor(x, 1) == platform_qt::FocusColor(option.palette) ? 1 : 0;
        return count;
    };
    EXPECT_EQ(framed(QStyle::State_Enabled), 0);
    EXPECT_GT(framed(QStyle::State_Enabled | QStyle::State_HasFocus), 25);
}

// Through a link, by any spelling of its name: the user's folder is the link's.
TEST_F(Host, TheProgramsFolderIsThatOfTheNameItWasStartedBy) {
    const QTemporaryDir folder;
    const std::string mine = folder.filePath(QStringLiteral("it's \u00e9")).toStdString();
    std::filesystem::create_directory(mine);
    std::filesystem::create_symlink("/proc/self/exe", mine + "/Jeu.link");
    const QDir before = QDir::current();
    ASSERT_TRUE(QDir::setCurrent(folder.path()));
    qputenv("PATH", "/none:" + QByteArray::fromStdString(mine) + ":" + qgetenv("PATH"));
    for (const std::string& name : {mine + "/Jeu.link", "./it's \u00e9//Jeu.link"s, "Jeu.link"s}) {
        const char* const words[] = {name.c_str()};
        const platform_qt::QtHost host(words);
        const auto& started = *host.Interfaces().application;
        EXPECT_EQ(started.ProgramFolder() + '/' + started.ProgramFileName(), mine + "/Jeu") << name;
    }
    QDir::setCurrent(before.path());
}

TEST_F(Host, KnowsHowItWasStartedAndWhereTheUserKeepsData) {
    const auto& started = *host_.application;
    EXPECT_EQ(started.ProgramFolder() + '/' + started.ProgramFileName() + ' ' + started.CommandLine(),
              QFile::symLinkTarget("/proc/self/exe").toStdString() + " /tmp/Grille 1.nx3 b\xE9.nx3");
    using namespace platform;
    std::unique_ptr<RegistryKey> key;
    ASSERT_EQ(host_.registry->Create(RegistryRoot::Classes, "Un.Type", "", RegistryAccess::All, key), 0);
    EXPECT_EQ(key->SetString("", "texte"), 0);
    EXPECT_TRUE(QFile::exists(qEnvironmentVariable("XDG_DATA_HOME") + "/ninarix/registry.ini"));
}

TEST_F(Host, APathKeepsItsBytesThroughText) {
    EXPECT_EQ(platform_qt::PathFromBytes("/\xC3\xA9\xE9\xF0\x9F\x98\x80"), QStringLiteral("/é\xDCE9😀"));
    EXPECT_EQ(platform_qt::ShownPath(platform_qt::PathFromBytes("/\xE9.nx3")),
              QString::fromUtf8("/\uFFFD.nx3"));
    // The signs that begin, continue and end characters, some that never stand in UTF-8, and a byte order
    // mark.
    std::mt19937 random(1);
    constexpr std::string_view signs(
        "a/\0\x7F\x80\xA0\xBF\xC0\xC3\xA9\xE0\xE9\xED\xEF\xBB\xBF\xF0\x9F\x98\x80\xF4\xF8\xFF", 23);
    for (int i = 0; i < 20000; ++i) {
        std::string bytes(random() % 12, ' ');
        for (char& byte : bytes) byte = signs[random() % signs.size()];
        ASSERT_EQ(platform_qt::PathToBytes(platform_qt::PathFromBytes(bytes)), bytes)
            << testing::PrintToString(bytes);
    }
}

TEST_F(Host, ColoursHaveRedInTheirLowByte) {
    platform::ColourDialogs::CustomColours custom{};
    custom[15] = 0x302010;
    const auto offered = custom;
    const auto choose = [&](Qt::Key key) {
        InNextDialog([key](QWidget& window) {
            auto& dialog = dynamic_cast<QColorDialog&>(window);
            EXPECT_EQ(dialog.currentColor().name() + QColorDialog::customColor(15).name(), "#112233#102030");
            QColorDialog::setCustomColor(15, QColor(0xAA, 0xBB, 0xCC));
            dialog.setCurrentColor(QColor(0xFF, 0x80, 0x40));
            QTest::keyClick(&dialog, key);
        });
        return host_.colours->Choose(0x332211, custom, 0);
    };
    EXPECT_EQ(choose(Qt::Key_Escape), std::nullopt);
    EXPECT_EQ(custom, offered);
    EXPECT_EQ(choose(Qt::Key_Return), 0x4080FFU);
    EXPECT_EQ(custom[15], 0xCCBBAAU);
}

TEST_F(Host, ADialogBelongsToTheWindowOnTop) {
    QWidget window;
    window.show();
    ASSERT_TRUE(Eventually([&] { return window.isActiveWindow(); }));
    EXPECT_EQ(platform_qt::DialogOwner(), &window);
    QDialog dialog;
    dialog.open();
    window.activateWindow();
    EXPECT_EQ(platform_qt::DialogOwner(), &dialog);
}

TEST_F(Host, TheToolkitsOwnTextsAreFrench) {
    platform_qt::InstallFrenchTexts();
    const QDialogButtonBox box(QDialogButtonBox::Cancel);
    EXPECT_EQ(box.button(QDialogButtonBox::Cancel)->text(), "Annuler");
    EXPECT_EQ(QLocale().toString(0.5), "0,5");
    delete qApp->findChild<QTranslator*>();
    QLocale::setDefault(QLocale::c());
}

}  // namespace
