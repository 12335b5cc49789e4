// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "document/DocumentSupport.h"
#include "document/window/MainFrame.h"
#include "document/window/ctrlCell.h"
#include "document/window/wGrid.h"
#include "support/QtSupport.h"
#include "support/ScriptedHost.h"

// A main window's part without a main window: modes are plain fields, calls are recorded.
class FakeFrame : public MainFrame {
  public:
    bool InitialisationMode() const override { return false; }
    bool MasksHidden() const override { return false; }
    bool ManualMasks() const override { return false; }
    ctrlCell* Cell() const override { return cell; }
    void Cell(ctrlCell* current) override { cell = current; }
    void cmdValue_Click(int index) override { entered.push_back(index); }
    void ToggleCandidate(int digit) override { toggled.push_back(digit); }
    void UpdateColors() override {}
    void ShowStanding() override {}
    void ShowDocument(const QString& /*path*/, const QString& /*caption*/) override {}

    ctrlCell* cell = nullptr;
    std::vector<int> entered;
    std::vector<int> toggled;
};

// A shown grid window, closed without a question at the end.
class GridWindow : public testing::Test {
  protected:
    GridWindow() : grid(new wGrid(frame, std::make_unique<GridDocument>())), document(grid->Document()) {
        grid->show();
    }
    ~GridWindow() override { delete grid; }

    std::string State(int index) const { return StateText(document, index); }
    void Set(int index, std::string_view record) const {
        ::Set(document, index, record);
        grid->ShowCells();
    }
    std::string LastBox() const { return host.boxes.empty() ? "" : host.boxes.back().text; }

    ScriptedHost host;
    FakeFrame frame;
    QPointer<wGrid> grid;
    GridDocument& document;  // of the window
};
