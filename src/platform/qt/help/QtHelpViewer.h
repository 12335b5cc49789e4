#pragma once

#include <QPointer>
#include <memory>
#include <string>

#include "platform/Host.h"

class ChmFile;
class HelpWindow;

namespace platform_qt {

// Opens help files in a window of the program. The file is opened anew each time. What cannot be shown is
// told in one message.
class QtHelpViewer : public platform::HelpViewer {
  public:
    explicit QtHelpViewer(platform::MessageBoxes& messages);
    ~QtHelpViewer() override;

    void ShowContents(const std::string& helpFile) override;
    void ShowTopic(const std::string& helpFile, int helpContext) override;

  private:
    HelpWindow& Window();
    void Report();

    platform::MessageBoxes& messages_;
    // Gone with the dialog that it belonged to, if that was destroyed unseen.
    QPointer<HelpWindow> window_;
};

}  // namespace platform_qt
