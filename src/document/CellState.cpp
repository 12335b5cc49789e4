// SPDX-License-Identifier: MIT
#include "document/CellState.h"

#include "diagnostics/ErrorHandling.h"
#include "engine/clsCell.h"
#include "settings/Conversions.h"

namespace {

constexpr int digitBits = 0x3FE;  // 2^1 + ... + 2^9

// Walks through a text of fields joined by "|".
class Fields {
  public:
    // A text without any character has no field at all.
    explicit Fields(std::string_view text) : rest_(text), atEnd_(text.empty()) {}

    // Error 9 behind the last one.
    std::string_view Next() {
        if (atEnd_) throw RuntimeError(ErrorNumber::OutOfBounds);
        const auto separator = rest_.find('|');
        const std::string_view field = rest_.substr(0, separator);
        atEnd_ = separator == std::string_view::npos;
        if (!atEnd_) rest_.remove_prefix(separator + 1);
        return field;
    }

  private:
    std::string_view rest_;
    bool atEnd_;
};

CellState NextState(Fields& fields) {
    CellState state;
    state.value = Conversions::ToByte(fields.Next());
    state.locked = Conversions::ToBoolean(fields.Next());
    const std::int32_t mask = Conversions::RoundToLong(Conversions::NumericPrefix(fields.Next()));
    state.mask = static_cast<std::uint16_t>(mask & digitBits);
    return state;
}

int NextIndex(Fields& fields) {
    const int index = Conversions::ToInteger(fields.Next());
    if (index < 1 || index > 81) throw RuntimeError(ErrorNumber::OutOfBounds);
    return index;
}

}  // namespace

CellState StateOf(const clsCell& cell) {
    CellState state{cell.Value(), cell.Locked(), 0};
    for (int d = 1; d <= 9; ++d) {
        if (cell.Inhib(d)) state.mask |= static_cast<std::uint16_t>(1U << d);
    }
    return state;
}

void ApplyState(clsCell& cell, const CellState& state) {
    cell.Locked(state.locked);
    for (int d = 1; d <= 9; ++d) cell.Inhib(d, (state.mask >> d & 1) != 0);
    cell.Value(state.value);  // raises the cell's Change
}

std::string RecordText(const CellState& state) {
    return std::to_string(state.value) + (state.locked ? "|1|" : "|0|") + std::to_string(state.mask);
}

CellState ParseRecord(std::string_view record) {
    Fields fields(record);
    return NextState(fields);
}

std::string ChangeText(const CellChange& change) {
    const std::string index = std::to_string(change.index) + "|";
    return index + RecordText(change.before) + "|" + index + RecordText(change.after);
}

CellChange ParseChange(std::string_view text) {
    Fields fields(text);
    CellChange change;
    change.index = NextIndex(fields);
    change.before = NextState(fields);
    if (NextIndex(fields) != change.index) throw RuntimeError(ErrorNumber::OutOfBounds);
    change.after = NextState(fields);
    return change;
}
