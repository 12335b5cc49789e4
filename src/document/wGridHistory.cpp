// The grid window's undo and redo.

#include "diagnostics/ErrorHandling.h"
#include "document/CellState.h"
#include "document/ctrlCell.h"
#include "document/wGrid.h"
#include "engine/clsCell.h"
#include "platform/Host.h"
#include "settings/Conversions.h"

void wGrid::RegUndo(const std::string& record) {
    Trap("wGrid", "RegUndo", [&] { history_.Register(record); });
}

void wGrid::Undo() {
    Trap("wGrid", "Undo", [this] {
        const platform::Host& host = platform::TheHost();
        if (!qobject_cast<ctrlCell*>(focusWidget())) return host.messages->Beep();
        if (!history_.CanUndo()) {
            host.messages->Show("Rien à annuler", platform::MessageStyle::Information);
            return;
        }
        Apply(history_.StepBack(), 0);
    });
}

void wGrid::Redo() {
    Trap("wGrid", "Redo", [this] {
        if (!history_.CanRedo()) {
            platform::TheHost().messages->Show("Rien à rétablir", platform::MessageStyle::Information);
            return;
        }
        Apply(history_.StepForward(), 4);
    });
}

// Puts a cell into the state that stands in four fields of a record from `firstField` on.
void wGrid::Apply(const std::string& record, int firstField) {
    const std::string_view index = FieldOf(record, firstField);
    ctrlCell& cell = ctrlCells(Conversions::ToInteger(index));
    const std::string_view fields = record;
    const CellState state = ParseRecord(
        fields.substr(static_cast<std::size_t>(FieldOf(record, firstField + 1).data() - record.data())));
    cell.Value(state.value);
    cell.Locked(state.locked);
    ApplyExclusionMask(*cell.mCell(), state.mask);
    UpdateGrid();
    cell.setFocus();
    cell.DoSelect();
}
