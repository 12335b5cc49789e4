#include <QApplication>
#include <QFont>
#include <QStyleFactory>
#include <gtest/gtest.h>

// Headless, with one style, one font and one language, so that no test depends on the desktop it runs on.
int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    QApplication::setFont(font);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
