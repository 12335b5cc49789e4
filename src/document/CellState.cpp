#include "document/CellState.h"

#include "diagnostics/ErrorHandling.h"
#include "engine/clsCell.h"
#include "settings/Conversions.h"

int ExclusionMask(const clsCell& cell) {
    int mask = 0;
    for (int d = 1; d <= 9; ++d) {
        if (cell.Inhib(d)) mask |= 1 << d;
    }
    return mask;
}

void ApplyExclusionMask(clsCell& cell, std::int32_t mask) {
    for (int d = 1; d <= 9; ++d) cell.Inhib(d, (mask >> d & 1) != 0);
}

std::string RecordText(const clsCell& cell) {
    return std::to_string(cell.Value()) + (cell.Locked() ? "|1|" : "|0|") +
           std::to_string(ExclusionMask(cell));
}

std::string CellStateText(const clsCell& cell) {
    return std::to_string(cell.GridIndex()) + "|" + RecordText(cell);
}

std::string_view FieldOf(std::string_view text, int index) {
    if (text.empty()) throw RuntimeError(ErrorNumber::OutOfBounds);  // an empty text has no field at all
    for (; index > 0; --index) {
        const auto separator = text.find('|');
        if (separator == std::string_view::npos) throw RuntimeError(ErrorNumber::OutOfBounds);
        text.remove_prefix(separator + 1);
    }
    return text.substr(0, text.find('|'));
}

CellState ParseRecord(std::string_view record) {
    return {Conversions::ToByte(FieldOf(record, 0)), Conversions::ToBoolean(FieldOf(record, 1)),
            Conversions::RoundToLong(Conversions::NumericPrefix(FieldOf(record, 2)))};
}
