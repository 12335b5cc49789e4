#pragma once

#include <QDialog>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "Program.h"

// Plays the whole program at random: keys, clicks, menus, drops, closings and answers, also while a question
// is open or a run is under way. Everything is drawn from the seed, and clock and seeds are the scripted
// host's, so a seed is played alike every time. Boxes are modal windows for half of the time; for the other
// half nothing is blocked while they are open.
class Monkey : public Program {
  public:
    explicit Monkey(std::uint64_t seed);
    ~Monkey() override;

    // Plays so many events and looks after each whether the program keeps its promises; ends at the first
    // that is broken, with a test failure.
    void Play(int events);
    // What it did, an event a line; what happened inside another event stands further right. For who asks
    // after the monkey has died, too.
    static const std::string& Log();

  private:
    class DialogWatch;

    void TestBody() override {}

    // ---- Chance.
    int Below(int bound) { return static_cast<int>(luck_() % static_cast<std::uint64_t>(bound)); }
    bool OnceIn(int times) { return Below(times) == 0; }
    template <class Choices>
    const auto& OneOf(const Choices& choices) {
        return *(std::begin(choices) + Below(static_cast<int>(std::size(choices))));
    }

    // ---- Events.
    void Act();
    void ActInside(int most);
    void TypeKey();
    void TypeShortcut();
    void ClickCell();
    void ClickPalette();
    void ClickTool();
    void ChooseFromMenu();
    void CloseGrid();
    void CloseProgram();
    void ActivateGrid();
    void DropFiles();
    void ResizeWindow();
    void ChangeFile();
    void Serve();
    void Press(QKeyCombination key);
    void Click(const QWidget& widget);

    // ---- Answers.
    void WhileABoxIsOpen();
    void ActBeside(bool modal);
    void WhileARunYields();
    void PlayDialog(QDialog& dialog);
    void Touch(QWidget& part);
    std::string AnyFile(bool save);

    // ---- Promises.
    std::string Everything() const;  // that is open
    void CheckShown(bool allGrids);
    void CheckGrid(const wGrid& grid) const;
    void CheckPalette() const;
    void CheckHistory(wGrid& grid) const;
    void CheckFile(const wGrid& grid) const;

    void Note(const std::string& event);

    std::mt19937_64 luck_;
    std::unique_ptr<DialogWatch> watch_;
    int depth_ = 0;                            // of events inside events
    int yields_ = 0;                           // since the last event that was not inside another
    bool closing_ = false;                     // a window's closing is being agreed on
    std::set<const GridDocument*> rewritten_;  // by a solve or a reset, which the history does not know
};
