#include "platform/qt/QtHost.h"

#include <QtTest>
#include <QtWidgets>
#include <gtest/gtest.h>
#include <set>

#include "platform/Registry.h"
#include "platform/qt/AssociationIcons.h"
#include "support/QtSupport.h"

namespace {

class Host : public testing::Test {
  protected:
    const platform_qt::QtHost qt_;
    const platform::Host host_ = qt_.Interfaces();
};

// A search calls it without an end: what the user does reaches the windows, though not at every call.
TEST_F(Host, ThePumpServesEventsNowAndThen) {
    QPushButton stop;
    bool stopped = false;
    QObject::connect(&stop, &QPushButton::clicked, [&] { stopped = true; });
    int served = 0;
    QTimer always;
    QObject::connect(&always, &QTimer::timeout, [&] {
        if (++served == 5) stop.animateClick();
    });
    always.start(0);
    QElapsedTimer run;
    run.start();
    while (!stopped && run.elapsed() < 10000) host_.events->Yield();
    EXPECT_TRUE(stopped);
    EXPECT_LE(served, run.elapsed() / 8 + 1) << run.elapsed() << " ms";
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
    auto last = first;
    std::set<std::uint64_t> seeds;
    for (std::size_t i = 0; i < 10000; ++i) {
        const auto now = host_.clock->Now();
        ASSERT_GE(now, last);
        last = now;
        ASSERT_TRUE(seeds.insert(host_.seeds->NextSeed()).second) << i;
    }
    EXPECT_GT(last, first);
    EXPECT_LE((last - first).count(), watch.nsecsElapsed());
}

TEST_F(Host, KnowsHowItWasStartedAndWhereTheUserKeepsData) {
    const QFileInfo program(QFile::symLinkTarget(QStringLiteral("/proc/self/exe")));
    EXPECT_EQ(host_.application->ProgramFolder(), program.path().toStdString());
    EXPECT_EQ(host_.application->ProgramFileName(), "host_tests");
    EXPECT_EQ(host_.application->CommandLine(), "/tmp/Grille 1.nx3 b.nx3");
    host_.application->HelpFile("a.chm");
    EXPECT_EQ(host_.application->HelpFile(), "a.chm");
    using namespace platform;
    std::unique_ptr<RegistryKey> key;
    ASSERT_EQ(host_.registry->Create(RegistryRoot::Classes, "Un.Type", "", RegistryAccess::All, key), 0);
    EXPECT_EQ(key->SetString("", "texte"), 0);
    EXPECT_TRUE(QFile::exists(qEnvironmentVariable("XDG_DATA_HOME") + "/ninarix/registry.ini"));
}

TEST_F(Host, ColoursHaveRedInTheirLowByte) {
    platform::ColourDialogs::CustomColours custom{};
    for (unsigned i = 0; i < custom.size(); ++i) custom[i] = 0x030201U * (i + 1);
    const auto offered = custom;
    const auto choose = [&](Qt::Key key) {
        InNextDialog([key](QWidget& window) {
            auto& dialog = dynamic_cast<QColorDialog&>(window);
            EXPECT_EQ(dialog.windowTitle(), "Couleurs");
            EXPECT_EQ(dialog.currentColor(), QColor(0x11, 0x22, 0x33));
            EXPECT_EQ(QColorDialog::customColor(0), QColor(1, 2, 3));
            EXPECT_EQ(QColorDialog::customColor(15), QColor(16, 32, 48));
            QColorDialog::setCustomColor(15, QColor(0xAA, 0xBB, 0xCC));
            dialog.setCurrentColor(QColor(0xFF, 0x80, 0x40));
            QTest::keyClick(&dialog, key);
        });
        return host_.colours->Choose(0x332211, custom);
    };
    EXPECT_EQ(choose(Qt::Key_Escape), std::nullopt);
    EXPECT_EQ(custom, offered);
    EXPECT_EQ(choose(Qt::Key_Return), 0x4080FFU);
    EXPECT_EQ(custom[15], 0xCCBBAAU);
    EXPECT_EQ(custom[0], offered[0]);
}

TEST_F(Host, ADialogBelongsToTheWindowOnTop) {
    EXPECT_EQ(platform_qt::DialogOwner(), nullptr);
    QWidget window;
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
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

TEST_F(Host, TheDesktopGetsAnIconOfEveryUsualSize) {
    std::string sizes;
    for (const auto& icon : platform_qt::AssociationIcons()) {
        sizes += std::to_string(icon.size) + ' ';
        const QImage picture = QImage::fromData(QByteArray::fromStdString(icon.bytes));
        EXPECT_NE(picture.pixelColor(picture.width() / 2, picture.height() / 2).alpha(), 0);
        EXPECT_TRUE(icon.size == 0 || picture.size() == QSize(icon.size, icon.size)) << icon.size;
    }
    EXPECT_EQ(sizes, "0 16 22 24 32 48 64 128 256 ");
}

}  // namespace
