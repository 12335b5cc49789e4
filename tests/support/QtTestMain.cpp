// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QFont>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <array>
#include <gtest/gtest.h>

#include "support/QtSupport.h"

// Headless, with one style, one font, one language and folders of its own, so that no test depends on the
// desktop it runs on or leaves anything there.
int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir home;
    for (const char* folder : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"}) {
        qputenv(folder, home.filePath(QLatin1String(folder)).toLocal8Bit());
    }
    testing::InitGoogleTest(&argc, argv);
    programArguments.assign(argv + 1, argv + argc);
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    // As if a file manager had started it with a grid; for the test that asks what stands there.
    char file[] = "/tmp/Grille 1.nx3";
    char second[] = "b.nx3";
    std::array<char*, 4> words{argv[0], file, second, nullptr};
    int count = 3;
    QApplication application(count, words.data());
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    QApplication::setFont(font);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
