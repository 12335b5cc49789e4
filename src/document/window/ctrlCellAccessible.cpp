#include "document/window/ctrlCellAccessible.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "document/window/ctrlCell.h"

namespace {

class CellAccessible : public QAccessibleWidget {
  public:
    explicit CellAccessible(ctrlCell* cell) : QAccessibleWidget(cell, QAccessible::Cell) {}

    QString text(QAccessible::Text kind) const override {
        const auto* cell = static_cast<const ctrlCell*>(object());
        switch (kind) {
            // Readers speak the name of an object that gets the focus, so the name says it all.
            case QAccessible::Name:
                return cell->PlaceText() + QStringLiteral(", ") + cell->StateText();
            case QAccessible::Value:
                return cell->StateText();
            default:
                return QAccessibleWidget::text(kind);
        }
    }
};

QAccessibleInterface* MakeCellAccessible(const QString& /*className*/, QObject* object) {
    auto* cell = qobject_cast<ctrlCell*>(object);
    return cell ? new CellAccessible(cell) : nullptr;
}

}  // namespace

void InstallCellAccessibility() {
    static const bool installed = [] {
        QAccessible::installFactory(MakeCellAccessible);
        return true;
    }();
    static_cast<void>(installed);
}

void AnnounceCellChange(ctrlCell& cell) {
    if (!QAccessible::isActive()) return;
    QAccessibleEvent renamed(&cell, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&renamed);
    QAccessibleValueChangeEvent changed(&cell, cell.StateText());
    QAccessible::updateAccessibility(&changed);
}
