// SPDX-License-Identifier: MIT
#include "platform/qt/help/QtHelpViewer.h"

#include <QApplication>

#include "platform/qt/help/ChmFile.h"
#include "platform/qt/help/HelpWindow.h"

namespace platform_qt {

QtHelpViewer::QtHelpViewer(platform::MessageBoxes& messages, QByteArray digest)
    : messages_(messages), digest_(std::move(digest)) {}

QtHelpViewer::~QtHelpViewer() {
    delete window_;
}

HelpWindow& QtHelpViewer::Window() {
    if (!window_) {
        window_ = new HelpWindow;
        QObject::connect(window_, &HelpWindow::TopicMissing, window_, [this] { Report(); });
    }
    return *window_;
}

std::unique_ptr<ChmFile> QtHelpViewer::Open(const std::string& helpFile) const {
    return ChmFile::Open(QString::fromStdString(helpFile), digest_);
}

void QtHelpViewer::Report() {
    messages_.Show("Fichier d'aide introuvable ou endommagé.", platform::MessageStyle::Exclamation);
}

void QtHelpViewer::ShowContents(const std::string& helpFile) {
    auto file = Open(helpFile);
    if (!file) return Report();
    Window().File(std::move(file));
    Window().ShowContents();
    Window().ShowBeside(QApplication::activeModalWidget());
}

void QtHelpViewer::ShowTopic(const std::string& helpFile, int helpContext) {
    auto file = Open(helpFile);
    const QString topic = file ? file->TopicOf(helpContext) : QString();
    if (topic.isEmpty()) return Report();
    Window().File(std::move(file));
    if (!Window().ShowTopic(topic)) return Report();
    Window().ShowBeside(QApplication::activeModalWidget());
}

}  // namespace platform_qt
