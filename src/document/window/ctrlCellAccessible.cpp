// SPDX-License-Identifier: MIT
#include "document/window/ctrlCellAccessible.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "document/window/ctrlCell.h"

namespace {

// A cell is a number field: of other kinds readers do not say that a value has changed while the keyboard
// is there. They say its text where it has one - "6", "vide" - and its number, "0", where it has none.
class CellAccessible : public QAccessibleWidget,
                       public QAccessibleValueInterface,
                       public QAccessibleTextInterface {
  public:
    explicit CellAccessible(ctrlCell* cell) : QAccessibleWidget(cell, QAccessible::SpinBox) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
        if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text kind) const override {
        switch (kind) {
            case QAccessible::Name:
                return Cell().PlaceText();
            case QAccessible::Value:
                return Cell().ValueText();
            case QAccessible::Help:  // a description would be said at every move
                return Cell().CandidatesText();
            default:
                return QAccessibleWidget::text(kind);
        }
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.focusable = true;
        state.selectable = true;
        state.selected = Cell().Current();
        state.readOnly = Cell().Locked();
        return state;
    }
    QStringList actionNames() const override {
        return QStringList{pressAction()} + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& action) override {
        if (action != pressAction()) return QAccessibleWidget::doAction(action);
        Cell().DoSelect();
    }

    // ---- The value. Setting it is typing it.
    QVariant currentValue() const override { return int{Cell().Value()}; }
    QVariant minimumValue() const override { return 0; }
    QVariant maximumValue() const override { return 9; }
    QVariant minimumStepSize() const override { return 1; }
    void setCurrentValue(const QVariant& value) override {
        const int digit = value.toInt();
        if (digit < 0 || digit > 9) return;
        Cell().DoSelect();
        // Later: a message may come of it, and who asked must not wait for its end.
        QMetaObject::invokeMethod(
            &Cell(), [&cell = Cell(), digit] { cell.Type(digit); }, Qt::QueuedConnection);
    }

    // ---- The text of the value, which cannot be edited as a text.
    void selection(int /*index*/, int* start, int* end) const override { *start = *end = 0; }
    int selectionCount() const override { return 0; }
    void addSelection(int /*start*/, int /*end*/) override {}
    void removeSelection(int /*index*/) override {}
    void setSelection(int /*index*/, int /*start*/, int /*end*/) override {}
    int cursorPosition() const override { return 0; }
    void setCursorPosition(int /*position*/) override {}
    QString text(int start, int end) const override { return Cell().ValueText().mid(start, end - start); }
    int characterCount() const override { return static_cast<int>(Cell().ValueText().size()); }
    QRect characterRect(int /*offset*/) const override { return rect(); }
    int offsetAtPoint(const QPoint& /*point*/) const override { return 0; }
    void scrollToSubstring(int /*start*/, int /*end*/) override {}
    QString attributes(int /*offset*/, int* start, int* end) const override {
        *start = 0;
        *end = characterCount();
        return {};
    }

  private:
    ctrlCell& Cell() const { return *static_cast<ctrlCell*>(object()); }
};

QAccessibleInterface* MakeCellAccessible(const QString& /*className*/, QObject* object) {
    auto* cell = qobject_cast<ctrlCell*>(object);
    return cell ? new CellAccessible(cell) : nullptr;
}

}  // namespace

void InstallCellAccessibility() {
    QAccessible::installFactory(MakeCellAccessible);
}

void AnnounceCellChange(ctrlCell& cell) {
    if (!QAccessible::isActive()) return;
    QAccessibleValueChangeEvent changed(&cell, int{cell.Value()});
    QAccessible::updateAccessibility(&changed);
}
