// SPDX-License-Identifier: MIT
#include "platform/qt/Announce.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPointer>
#include <QStatusBar>
#include <QTimer>

namespace platform_qt {

namespace {

constexpr int lifetime = 10000;  // milliseconds; a reader asks for the text when it is told of it

QPointer<QStatusBar>& Bar() {
    static QPointer<QStatusBar> bar;
    return bar;
}

// One for each text: a reader that is late, or keeps what it once read, speaks the right one.
class Announcement : public QWidget {
  public:
    Announcement(QWidget* parent, const QString& text) : QWidget(parent) { setAccessibleName(text); }
};

QAccessibleInterface* MakeAnnouncement(const QString& /*className*/, QObject* object) {
    auto* announcement = dynamic_cast<Announcement*>(object);
    return announcement ? new QAccessibleWidget(announcement, QAccessible::Notification) : nullptr;
}

}  // namespace

void AnnounceIn(QStatusBar& bar) {
    QAccessible::installFactory(MakeAnnouncement);
    Bar() = &bar;
}

// The toolkit has no announcements of its own. Readers speak a notification that comes into sight, and in a
// status bar they do so without saying what it is.
void Announce(const QString& text) {
    if (text.isEmpty() || !Bar() || !QAccessible::isActive()) return;
    auto* announcement = new Announcement(Bar(), text);
    QTimer::singleShot(lifetime, announcement, &QObject::deleteLater);
    QAccessibleEvent shown(announcement, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&shown);
}

}  // namespace platform_qt
