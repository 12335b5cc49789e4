// SPDX-License-Identifier: MIT
#include "Fuzz.h"
#include "document/GridDocument.h"
#include "document/GridFile.h"

// Any bytes as a grid file, a record or a change: refused, or read alike ever after.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    GridDocument document;
    MayRefuse([&] {
        const CellState state = ParseRecord(text);
        Check(ParseRecord(RecordText(state)) == state && (state.mask & ~0x3FE) == 0, "a record");
        const CellChange change = ParseChange(text);
        Check(ParseChange(ChangeText(change)) == change && document.Grid().Cells(change.index), "a change");
        document.RegUndo(text);
        const clsCell& cell = *document.Grid().Cells(document.Undo());
        Check(StateOf(cell) == change.before && document.Redo() == change.index, "an undone change");
        Check(StateOf(cell) == change.after, "a change that is done again");
    });
    if (!text.starts_with('[')) return 0;
    MayRefuse([&] {
        platform::FileStamp read, written;
        const auto states = ReadGridFile(NewFile("a.nx3", text), read);
        const std::string copy = FuzzHost().PathOf("b.nx3");
        Check(states && WriteGridFile(copy, *states, written), "a copy");
        Check(ReadGridFile(copy, read) == states && read == written, "a copy is read");
        Check(document.LoadFile(copy), "a grid is loaded");
    });
    return 0;
}
