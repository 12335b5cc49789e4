// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QString>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "platform/Host.h"

class QWidget;

// The host interfaces on top of the widget toolkit. Needs a QApplication, which must outlive it.
namespace platform_qt {

class QtHost {
  public:
    // With the words of the command line, the program's name first, as the bytes that they are.
    explicit QtHost(std::span<const char* const> words = {});
    ~QtHost();
    QtHost(const QtHost&) = delete;
    QtHost& operator=(const QtHost&) = delete;

    // Borrowed from this object.
    platform::Host Interfaces() const;

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

inline QString FromUtf8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string ToUtf8(const QString& text) {
    return text.toStdString();
}

// The bytes of a path as text, and the same bytes of it again: a byte b that is no UTF-8 is the lone
// surrogate U+DC00 + b. To show such a path use ShownPath.
QString PathFromBytes(std::string_view bytes);
std::string PathToBytes(const QString& path);
// With a replacement character for each byte that is none.
inline QString ShownPath(const QString& path) {
    return FromUtf8(PathToBytes(path));
}

// Colours with red in their low byte, as the whole program keeps them, from and to the toolkit's own type.
QColor FromLowRed(std::uint32_t color);
std::uint32_t ToLowRed(const QColor& color);

// The window that a new dialog belongs to: the modal one on top, else the active one, else none.
QWidget* DialogOwner();

// The French texts of the toolkit's own dialogs. Call once, after the QApplication was made.
void InstallFrenchTexts();

}  // namespace platform_qt
