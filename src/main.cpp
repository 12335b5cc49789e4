#include <QApplication>
#include <QIcon>

#include "platform/qt/QtHost.h"
#include "shell/wMain.h"

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Ninarix"));
    QApplication::setApplicationVersion(QStringLiteral(NINARIX_VERSION));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/Ninarix.svg")));
    platform_qt::InstallFrenchTexts();

    const platform_qt::QtHost host;
    const platform::HostScope scope(host.Interfaces());
    wMain mainWindow;
    mainWindow.MDIForm_Load();
    return QApplication::exec();
}
