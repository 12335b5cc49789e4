#pragma once

#include <functional>

class QKeyEvent;
class QWidget;

// What the program's own dialogs have in common.
namespace platform_qt {

// The row "Ok", which Enter presses, and "Annuler", at its right end. A press calls click(1) or click(0).
QWidget* CommandRow(QWidget* dialog, const std::function<void(int)>& click);

// Opens the help at the topic when the key is F1. False for every other key, and without a topic (0).
bool OpensHelp(const QKeyEvent& event, int helpContext);

}  // namespace platform_qt
