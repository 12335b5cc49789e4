// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QPointer>
#include <memory>
#include <string>

#include "platform/Host.h"
#include "platform/qt/help/HelpDigest.h"

class ChmFile;
class HelpWindow;

namespace platform_qt {

// Opens help files in a window of the program. The file is opened anew each time; any other than the one with
// the digest counts as damaged. What cannot be shown is told in one message.
class QtHelpViewer : public platform::HelpViewer {
  public:
    explicit QtHelpViewer(platform::MessageBoxes& messages, QByteArray digest = HelpDigest::BuiltIn());
    ~QtHelpViewer() override;

    void ShowContents(const std::string& helpFile) override;
    void ShowTopic(const std::string& helpFile, int helpContext) override;

  private:
    std::unique_ptr<ChmFile> Open(const std::string& helpFile) const;
    HelpWindow& Window();
    void Report();

    platform::MessageBoxes& messages_;
    const QByteArray digest_;
    // Gone with the dialog that it belonged to, if that was destroyed unseen.
    QPointer<HelpWindow> window_;
};

}  // namespace platform_qt
