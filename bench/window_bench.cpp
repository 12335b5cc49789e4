// What a grid window costs: opening it, painting it, laying it out, choosing a cell, showing changed
// candidates.

#include <QApplication>
#include <benchmark/benchmark.h>
#include <memory>

#include "document/window/MainFrame.h"
#include "document/window/ctrlCell.h"
#include "document/window/wGrid.h"
#include "platform/qt/QtHost.h"

namespace {

class BenchFrame : public MainFrame {
  public:
    bool InitialisationMode() const override { return true; }
    bool MasksHidden() const override { return hidden; }
    bool ManualMasks() const override { return false; }
    ctrlCell* Cell() const override { return cell_; }
    void Cell(ctrlCell* cell) override { cell_ = cell; }
    void cmdValue_Click(int /*index*/) override {}
    void ToggleCandidate(int /*digit*/) override {}
    void UpdateColors() override {}
    void ShowStanding() override {}
    void ShowDocument(const QString& /*path*/, const QString& /*caption*/) override {}

    bool hidden = false;

  private:
    ctrlCell* cell_ = nullptr;
};

constexpr QSize usualSize(655, 573);

void OpenAWindow(benchmark::State& state) {
    BenchFrame frame;
    for (auto _ : state) {
        wGrid grid(frame, std::make_unique<GridDocument>());
        grid.resize(usualSize);
        grid.show();
        QCoreApplication::processEvents();
    }
}
BENCHMARK(OpenAWindow)->Unit(benchmark::kMillisecond);

void PaintAWindow(benchmark::State& state) {
    BenchFrame frame;
    wGrid grid(frame, std::make_unique<GridDocument>());
    grid.resize(usualSize);
    QImage image(usualSize, QImage::Format_RGB32);
    for (auto _ : state) grid.render(&image);
}
BENCHMARK(PaintAWindow)->Unit(benchmark::kMillisecond);

void ResizeAWindow(benchmark::State& state) {
    BenchFrame frame;
    wGrid grid(frame, std::make_unique<GridDocument>());
    grid.resize(usualSize);
    grid.show();
    int step = 0;
    for (auto _ : state) {
        ++step;
        grid.resize(usualSize + QSize(step % 40, step % 30));
        QCoreApplication::processEvents();
    }
}
BENCHMARK(ResizeAWindow)->Unit(benchmark::kMillisecond);

void ChooseACell(benchmark::State& state) {
    BenchFrame frame;
    wGrid grid(frame, std::make_unique<GridDocument>());
    int index = 0;
    for (auto _ : state) grid.ctrlCells(index++ % 81 + 1).DoSelect();
}
BENCHMARK(ChooseACell)->Unit(benchmark::kMicrosecond);

void HideAndShowCandidates(benchmark::State& state) {
    BenchFrame frame;
    wGrid grid(frame, std::make_unique<GridDocument>());
    grid.resize(usualSize);
    grid.show();
    for (auto _ : state) {
        frame.hidden = !frame.hidden;
        grid.UpdateGrid();
        QCoreApplication::processEvents();
    }
}
BENCHMARK(HideAndShowCandidates)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    QApplication application(argc, argv);
    const platform_qt::QtHost host;
    const platform::HostScope scope(host.Interfaces());
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
