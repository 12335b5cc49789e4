// SPDX-License-Identifier: MIT

// What the player waits for: each figure runs from a key, or a new size, to what it shows, through the
// program's own main window, the event loop and the settings file. What is painted is counted, not supposed.

#include <QApplication>
#include <QElapsedTimer>
#include <QMdiArea>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <benchmark/benchmark.h>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <stdlib.h>

#include "document/window/ctrlCell.h"
#include "document/window/wGrid.h"
#include "platform/qt/ProgramStyle.h"
#include "platform/qt/QtHost.h"
#include "settings/dialogs/wLevel.h"
#include "shell/wMain.h"

namespace {

constexpr std::string_view puzzle =
    "6...7..5..7.1..9..3.......7.5.7....6..2...4..8....5.1.9.......2..6..2.3..3..1...4";

// The program's own host with a scratch folder for the settings, whose reads are counted, and one that no box
// stops.
class BenchHost : public platform::Application, public platform::MessageBoxes {
  public:
    explicit BenchHost(std::filesystem::path folder) : folder_(std::move(folder)) {}

    platform::Host Interfaces() {
        platform::Host host = host_.Interfaces();
        real_ = host.application;
        host.application = this;
        host.messages = this;
        host.registry = nullptr;
        return host;
    }
    // Every read asks once where the settings file is.
    double SettingsReads() const { return static_cast<double>(asked_); }

    platform::MessageButton Show(std::string_view text, int /*style*/, int /*helpContext*/) override {
        throw std::runtime_error("an unexpected box: " + std::string(text));
    }
    void Beep() override { throw std::runtime_error("refused"); }
    const std::string& ProgramFolder() const override {
        ++asked_;
        return folder_.native();
    }
    const std::string& ProgramFileName() const override { return name_; }
    std::string Title() const override { return "Ninarix"; }
    int MajorVersion() const override { return 3; }
    int MinorVersion() const override { return 2; }
    std::string CommandLine() const override { return {}; }
    std::string StateFolder() const override { return (folder_ / "state").string(); }
    std::string HelpFile() const override { return real_->HelpFile(); }
    void HelpFile(const std::string& path) override { real_->HelpFile(path); }

  private:
    std::filesystem::path folder_;
    std::string name_ = "Ninarix";
    platform_qt::QtHost host_;
    platform::Application* real_ = nullptr;
    mutable long asked_ = 0;
};

BenchHost* theHost = nullptr;

// Counts the paint events of cells, of grids too that are yet to come.
class PaintedCells : public QObject {
  public:
    PaintedCells() { qApp->installEventFilter(this); }
    int Count() const { return count_; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && qobject_cast<ctrlCell*>(watched)) ++count_;
        return false;
    }

  private:
    int count_ = 0;
};

using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point since) {
    return std::chrono::duration<double>(Clock::now() - since).count();
}

// Lets everything come that is still under way: the window manager's answers, what they have painted.
void Settle(int milliseconds = 20) {
    QTest::qWait(milliseconds);
}

template <class Done>
void RunEvents(const Done& done) {
    QElapsedTimer time;
    time.start();
    while (!done()) {
        QCoreApplication::processEvents();
        if (time.elapsed() > 10000) throw std::runtime_error("nothing was painted");
    }
}

// The program with its main window on the screen and the keyboard in it.
class Program {
  public:
    Program() {
        window_.MDIForm_Load();
        if (!QTest::qWaitForWindowExposed(&window_)) throw std::runtime_error("no window");
        window_.activateWindow();
        if (!QTest::qWaitForWindowActive(&window_)) throw std::runtime_error("the window is not active");
        Settle(100);
    }
    ~Program() {
        for (const OpenGrid& grid : window_.Grids()) grid->Discard();
        window_.close();
        Settle();
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    wMain& Window() { return window_; }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(window_.windowHandle(), key, modifiers);
    }
    wGrid& Active() const { return *window_.ActiveGrid(); }
    // A grid as it is played: givens, and the candidates of its empty cells.
    wGrid& OpenPuzzle() {
        std::ofstream text(theHost->ProgramFolder() + "/puzzle.nx3");
        text << "[]\r\n";
        for (std::size_t i = 0; i < puzzle.size(); ++i) {
            const char digit = puzzle[i] == '.' ? '0' : puzzle[i];
            text << i + 1 << '=' << digit << '|' << (digit == '0' ? 0 : 1) << "|0\r\n";
        }
        text.close();
        window_.OpenGridFile(QString::fromStdString(theHost->ProgramFolder() + "/puzzle.nx3"));
        Settle(50);
        return Active();
    }
    void CloseActive() {
        Active().Discard();
        window_.mnuFileClose_Click();
        Settle();
    }

  private:
    wMain window_;
};

// From a key to what it paints in the active grid.
void MeasureKeys(benchmark::State& state, Program& program, std::array<Qt::Key, 2> keys) {
    const PaintedCells painted;
    const int before = painted.Count();
    const double reads = theHost->SettingsReads();
    std::size_t next = 0;
    for (auto _ : state) {
        const int count = painted.Count();
        const auto start = Clock::now();
        program.Key(keys[next++ % keys.size()]);
        RunEvents([&] { return painted.Count() != count; });
        state.SetIterationTime(Seconds(start));
    }
    const auto average = [](double value) {
        return benchmark::Counter(value, benchmark::Counter::kAvgIterations);
    };
    state.counters["cells"] = average(painted.Count() - before);
    state.counters["reads"] = average(theHost->SettingsReads() - reads);
}

void KeyToPaintedDigit(benchmark::State& state) {
    Program program;
    program.OpenPuzzle().ctrlCells(2).DoSelect();  // where a 1 is a candidate
    Settle();
    MeasureKeys(state, program, {Qt::Key_1, Qt::Key_Delete});
}

void ArrowToPaintedSelection(benchmark::State& state) {
    Program program;
    program.OpenPuzzle().ctrlCells(40).DoSelect();
    Settle();
    MeasureKeys(state, program, {Qt::Key_Right, Qt::Key_Left});
}

// A grid's own part, in a window that is there already, without what the main window shows beside it.
class GridAlone {
  public:
    GridAlone() {
        window_.resize(655, 573);
        window_.show();
        if (!QTest::qWaitForWindowExposed(&window_)) throw std::runtime_error("no window");
        Settle(100);
    }
    std::unique_ptr<wGrid> Show() {
        auto grid = std::make_unique<wGrid>(frame_, std::make_unique<GridDocument>(), &window_);
        grid->resize(window_.size());
        grid->show();
        return grid;
    }

  private:
    struct Frame : MainFrame {
        bool InitialisationMode() const override { return true; }
        bool MasksHidden() const override { return false; }
        bool ManualMasks() const override { return false; }
        ctrlCell* Cell() const override { return cell; }
        void Cell(ctrlCell* chosen) override { cell = chosen; }
        void cmdValue_Click(int /*index*/) override {}
        void ToggleCandidate(int /*digit*/) override {}
        void UpdateColors() override {}
        void ShowStanding() override {}
        void ShowDocument(const QString& /*path*/, const QString& /*caption*/) override {}
        ctrlCell* cell = nullptr;
    };
    Frame frame_;
    QWidget window_;
};

void NewGridWindow(benchmark::State& state) {
    GridAlone alone;
    const PaintedCells painted;
    for (auto _ : state) {
        const int count = painted.Count();
        const auto start = Clock::now();
        const auto grid = alone.Show();
        RunEvents([&] { return painted.Count() >= count + 81; });
        state.SetIterationTime(Seconds(start));
    }
}

void ResizeOneGrid(benchmark::State& state) {
    GridAlone alone;
    const auto grid = alone.Show();
    const PaintedCells painted;
    const QSize usual = grid->size();
    int step = 0;
    Settle();
    for (auto _ : state) {
        ++step;
        const int count = painted.Count();
        const auto start = Clock::now();
        grid->resize(usual - QSize(step % 40, step % 30));
        RunEvents([&] { return painted.Count() >= count + 81; });
        state.SetIterationTime(Seconds(start));
    }
}

void NewGridCommand(benchmark::State& state) {
    Program program;
    program.OpenPuzzle();
    for (auto _ : state) {
        const PaintedCells painted;
        const auto start = Clock::now();
        program.Key(Qt::Key_N, Qt::ControlModifier);
        RunEvents([&] { return painted.Count() >= 81; });
        state.SetIterationTime(Seconds(start));
        program.CloseActive();
        program.Window().mnuGridConfig_Click();
        Settle();
    }
}

// At every step a size that the widget did not have before, until as much is painted as is to be.
template <class PaintedCount>
void MeasureResize(benchmark::State& state, QWidget& widget, int toPaint, const PaintedCount& painted) {
    const QSize usual = widget.size();
    int step = 0;
    for (auto _ : state) {
        ++step;
        const int count = painted();
        const auto start = Clock::now();
        widget.resize(usual + QSize(step % 40, step % 30));
        RunEvents([&] { return painted() >= count + toPaint; });
        state.SetIterationTime(Seconds(start));
        Settle();
    }
}

// In the whole window, or in their area of it alone.
void MeasureResizeOfGrids(benchmark::State& state, int grids, bool whole) {
    Program program;
    for (int i = 0; i < grids; ++i) program.Window().mnuFileNew_Click();
    Settle(100);
    const PaintedCells painted;
    QWidget& area = *program.Window().findChild<QMdiArea*>();
    MeasureResize(state, whole ? program.Window() : area, 81, [&painted] { return painted.Count(); });
}

void ResizeWindow(benchmark::State& state) {
    MeasureResizeOfGrids(state, 1, true);
}
void ResizeThirtyGrids(benchmark::State& state) {
    MeasureResizeOfGrids(state, 30, true);
}
void ResizeThirtyInTheirArea(benchmark::State& state) {
    MeasureResizeOfGrids(state, 30, false);
}

// What any program pays for a window of that size.
void ResizeEmptyWindow(benchmark::State& state) {
    struct Empty : QWidget {
        void paintEvent(QPaintEvent* /*event*/) override { ++painted; }
        int painted = 0;
    } empty;
    empty.resize(720, 666);
    empty.show();
    if (!QTest::qWaitForWindowExposed(&empty)) throw std::runtime_error("no window");
    Settle(100);
    MeasureResize(state, empty, 1, [&empty] { return empty.painted; });
}

// From Ok in the level's dialog on.
void GenerateToPaintedGrid(benchmark::State& state) {
    Program program;
    for (auto _ : state) {
        Clock::time_point start;
        std::optional<PaintedCells> painted;
        QTimer press;
        press.callOnTimeout([&] {
            auto* dialog = qobject_cast<wLevel*>(QApplication::activeModalWidget());
            if (!dialog || !dialog->isActiveWindow()) return;
            press.stop();
            Settle();
            painted.emplace();
            start = Clock::now();
            QTest::keyClick(dialog->windowHandle(), Qt::Key_Return);
        });
        press.start(5);
        program.Key(Qt::Key_G, Qt::ControlModifier);
        RunEvents([&] { return painted && painted->Count() >= 81; });
        state.SetIterationTime(Seconds(start));
        program.CloseActive();
    }
}

void Usual(benchmark::internal::Benchmark* row, int iterations) {
    row->Unit(benchmark::kMillisecond)
        ->UseManualTime()
        ->Iterations(iterations)
        ->Repetitions(20)
        ->ReportAggregatesOnly();
}
void ManyTimes(benchmark::internal::Benchmark* row) {
    Usual(row, 50);
}
void FewTimes(benchmark::internal::Benchmark* row) {
    Usual(row, 5);
}

BENCHMARK(NewGridWindow)->Apply(ManyTimes);
BENCHMARK(NewGridCommand)->Apply(FewTimes);
BENCHMARK(KeyToPaintedDigit)->Apply(ManyTimes);
BENCHMARK(ArrowToPaintedSelection)->Apply(ManyTimes);
BENCHMARK(ResizeOneGrid)->Apply(ManyTimes);
BENCHMARK(ResizeWindow)->Apply(FewTimes);
BENCHMARK(ResizeThirtyGrids)->Apply(FewTimes);
BENCHMARK(ResizeThirtyInTheirArea)->Apply(FewTimes);
BENCHMARK(ResizeEmptyWindow)->Apply(FewTimes);
BENCHMARK(GenerateToPaintedGrid)->Apply(FewTimes);

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    std::string folder = (std::filesystem::temp_directory_path() / "ninarix-bench-XXXXXX").string();
    if (!mkdtemp(folder.data())) return 2;
    std::ofstream(folder + "/Ninarix.ini") << "[Options]\r\nNoSplash=1\r\nColor_0=16777215\r\n";
    int result = 0;
    {
        QApplication application(argc, argv);
        QApplication::setStyle(new platform_qt::ProgramStyle);  // the application owns it
        BenchHost host(folder);
        theHost = &host;
        const platform::HostScope scope(host.Interfaces());
        benchmark::RunSpecifiedBenchmarks();
    }
    std::filesystem::remove_all(folder);
    return result;
}
