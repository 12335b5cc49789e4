// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QFontInfo>
#include <QIcon>
#include <QSessionManager>
#include <span>
#include <thread>

#include "platform/Process.h"
#include "platform/qt/EndSignals.h"
#include "platform/qt/ProgramStyle.h"
#include "platform/qt/QtHost.h"
#include "shell/TerminalWords.h"
#include "shell/wMain.h"

namespace {

// Of a picture without sizes the toolkit makes one of 128 pixels too, which costs 64 kB. Desktops take their
// large icons from the menu entry.
QIcon WindowIcon() {
    const QIcon drawn(QStringLiteral(":/icons/Ninarix.svg"));
    QIcon icon;
    for (const int side : {16, 32, 64}) icon.addPixmap(drawn.pixmap(side));
    return icon;
}

}  // namespace

int main(int argc, char** argv) {
    const std::span words(argv, static_cast<std::size_t>(argc));
    if (const auto answered = AnswerOnTerminal(words, NINARIX_VERSION)) return *answered;
    platform::ShareOneHeap();
    QApplication application(argc, argv);
    QApplication::setStyle(new platform_qt::ProgramStyle);  // the application owns it
    QApplication::setApplicationName(QStringLiteral("Ninarix"));
    QApplication::setApplicationVersion(QStringLiteral(NINARIX_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("ninarix"));
    // The list of fonts is read beside everything that needs no text yet; alone it took 5 ms of the start.
    const std::jthread fonts([] { static_cast<void>(QFontInfo(QFont()).pixelSize()); });
    QApplication::setWindowIcon(WindowIcon());
    platform_qt::InstallFrenchTexts();

    // What the toolkit left of the words, before it decodes them.
    const platform_qt::QtHost host(std::span(argv, static_cast<std::size_t>(argc)));
    const platform::HostScope scope(host.Interfaces());
    wMain mainWindow;
    const platform_qt::EndSignals endSignals;
    QObject::connect(&endSignals, &platform_qt::EndSignals::Asked, &mainWindow, [&mainWindow] {
        mainWindow.EndNow();
        QApplication::exit(0);
    });
    const auto commit = [&mainWindow](QSessionManager& session) {
        if (!mainWindow.CommitSession(session.allowsInteraction())) session.cancel();
        session.release();
    };
    // The session's manager waits for the answer.
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &mainWindow, commit,
                     Qt::DirectConnection);
    mainWindow.MDIForm_Load();
    return QApplication::exec();
}
