// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "document/GridFile.h"
#include "document/GridText.h"
#include "document/UndoHistory.h"
#include "engine/clsGrid.h"
#include "platform/ProgressWindow.h"
#include "platform/SafeFile.h"

// The modes that decide what may be entered.
struct EntryModes {
    bool initialisation = false;  // typed values become givens, and givens may be changed
    bool masksHidden = false;     // without candidates on view any digit is taken
};

// How far a grid is.
struct GridStanding {
    int emptyCells = 81;
    bool digitsRepeat = false;  // one stands twice in a row, a column or a box

    bool Complete() const { return emptyCells == 0; }
    bool Finished() const { return Complete() && !digitsRepeat; }
};

// All that must come back of a grid after the program ended without asking.
struct GridSnapshot {
    std::string path;
    std::string caption;
    std::optional<platform::FileStamp> stamp;  // of the file as the grid last read or wrote it
    GridStates states;
    UndoHistory history;
};

// One open grid without its window: the cells, their history, the solution that belongs to the givens, the
// file. Whatever the user may do to a grid is decided and recorded here; candidates are always up to date
// with the values. Cell indices are 1..81, row by row; error 9 outside. A refused change, a failed load and a
// failed save change nothing. Traps nothing: errors reach the caller.
class GridDocument {
  public:
    GridDocument() = default;
    GridDocument(const GridDocument&) = delete;
    GridDocument& operator=(const GridDocument&) = delete;

    // The cells as the views listen to them; owned by the document. Who changes a cell through this leaves
    // no trace in the history.
    clsGrid& Grid() { return grid_; }
    const clsGrid& Grid() const { return grid_; }

    // The file that the grid belongs to, the bytes of its name, empty for none. Writing it names the grid
    // after the file.
    const std::string& Path() const { return path_; }
    void Path(const std::string& path);
    const std::string& Caption() const { return caption_; }
    void Caption(const std::string& caption);

    // Undoing up to what the file holds makes it false again.
    bool Modified() const { return grid_.Modified(); }
    bool IsComplete() const { return Standing().Complete(); }
    GridStanding Standing() const;

    // While true the user keeps the candidates: every digit stays available everywhere.
    bool NoAutoMask() const { return grid_.NoAutoMask(); }
    void NoAutoMask(bool flag) { grid_.NoAutoMask(flag); }

    // ---- Files.

    // False when there is no such file or it cannot be read. Error 321: the file is no grid; 6, 9 or 13: a
    // record that does not convert. What was read is not modified and has no history.
    bool LoadFile(const std::string& file);
    // True when the whole file is on disk; only then the grid counts as not modified.
    bool SaveFile(const std::string& file);
    // There is a file at Path() that is not what this grid last read or wrote: somebody else's work.
    bool FileChanged() const;

    // ---- Entry. False: refused.

    // Puts digit 1..9 into a cell, or empties it with 0.
    bool EnterValue(int index, int digit, const EntryModes& modes);
    // Excludes digit 1..9 or takes its exclusion back; 0 takes all back.
    void SwitchExclusion(int index, int digit);

    // ---- History.

    // Records a change that was made; see ChangeText. A text that is none is refused with its error.
    void RegUndo(const std::string& record);
    bool CanUndo() const { return history_.CanUndo(); }
    bool CanRedo() const { return history_.CanRedo(); }
    // The index of the cell that changed, 0 when there are several; only when CanUndo / CanRedo.
    int Undo();
    int Redo();

    // ---- Whole grids.

    GridText::Values Values() const;
    // Becomes a puzzle of these givens, which is in no file: it is modified.
    void Become(const GridText::Values& givens);
    // Takes the cells alone; what was there, its history included, is gone.
    void CopyFrom(const GridDocument& source);
    // Empties every cell that is not a given, as one step of the history.
    void Reinit();

    // ---- Recovery.

    GridSnapshot Snapshot() const;
    // Becomes the grid of a snapshot, which is in no file: it is modified.
    void Resume(GridSnapshot snapshot);
    // The one listener; called after every change of what a snapshot would hold, and after a save.
    void OnChange(std::function<void()> handler) { changed_ = std::move(handler); }

    // ---- The engine. A progress window that is hidden cancels; without one (null) a run goes to its end.

    // Becomes the givens of a generated grid. False when the user declined to go on.
    bool CreateGrid(platform::ProgressWindow* progress);
    // Solves the grid from its givens, as one step of the history.
    void SolveGrid(platform::ProgressWindow* progress);
    // The solution of the present givens was found already.
    bool SolutionKnown() const;
    // Looks for it; nothing shows in the grid.
    void FindSolution(platform::ProgressWindow* progress);
    // The number of values that differ from the solution; 0 while none is known.
    std::int16_t WrongValues() const;

  private:
    clsCell& Cell(int index);
    GridStates States() const;
    // Changes a cell and records it.
    void Change(int index, const CellState& after);
    // Records as one step what became different since.
    void RecordSince(const GridStates& before);
    // The whole grid becomes another one, without a history.
    void Replace(const GridStates& states);
    int Restored(HistoryStep step, CellState CellChange::*state);
    void Changed() const;

    clsGrid grid_;
    std::unique_ptr<clsGrid> solution_;
    UndoHistory history_;
    std::string path_;
    std::optional<platform::FileStamp> stamp_;  // of what it last read or wrote
    bool written_ = false;                      // it wrote that itself, so that it is on disk
    std::string caption_;
    std::function<void()> changed_;
};
