#include "platform/qt/Announce.h"

#include <QAccessible>
#include <QAccessibleObject>
#include <QApplication>
#include <QWidget>

namespace platform_qt {

namespace {

// The toolkit has no announcement of its own yet. What readers speak at once is a notification that shows up,
// so each announcement is one, a child of the window in front.
class Announcement : public QObject {
  public:
    QString text;
};

class AnnouncementAccessible : public QAccessibleObject {
  public:
    using QAccessibleObject::QAccessibleObject;

    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(QApplication::activeWindow());
    }
    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::Notification; }
    QAccessible::State state() const override { return {}; }
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? static_cast<const Announcement*>(object())->text : QString();
    }
};

QAccessibleInterface* MakeAnnouncementAccessible(const QString& /*className*/, QObject* object) {
    return dynamic_cast<Announcement*>(object) ? new AnnouncementAccessible(object) : nullptr;
}

}  // namespace

void Announce(const QString& text) {
    if (!QAccessible::isActive()) return;
    static Announcement* const announcement = [] {
        QAccessible::installFactory(MakeAnnouncementAccessible);
        auto* made = new Announcement;
        made->setParent(qApp);
        return made;
    }();
    announcement->text = text;
    QAccessibleEvent shown(announcement, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&shown);
}

}  // namespace platform_qt
