// SPDX-License-Identifier: MIT
#include "platform/qt/NumberRow.h"

#include <QChar>
#include <QKeyEvent>

namespace platform_qt {

namespace {

// The scan codes of the number row run from its 1 to its 0.
#ifdef Q_OS_WIN
constexpr quint32 firstInRow = 2;
#else
constexpr quint32 firstInRow = 10;
#endif

}  // namespace

int TypedDigit(const QKeyEvent& event) {
    if (event.text().size() != 1) return -1;
    const QChar typed = event.text().front();
    return typed.isDigit() ? typed.digitValue() : -1;
}

int DigitKey(const QKeyEvent& event) {
    if (event.key() >= Qt::Key_0 && event.key() <= Qt::Key_9) return event.key() - Qt::Key_0;
    const quint32 place = event.nativeScanCode() - firstInRow;
    return place < 10 ? static_cast<int>((place + 1) % 10) : -1;
}

}  // namespace platform_qt
