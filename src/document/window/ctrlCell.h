// SPDX-License-Identifier: MIT
#pragma once

#include <QBasicTimer>
#include <QColor>
#include <QString>
#include <QWidget>
#include <bitset>
#include <cstdint>

#include "settings/ColorTable.h"

class CellHolder;
class QPainter;
class clsCell;
class wGrid;

// The view of one cell: its value as one large digit or, while it is empty, its candidates as nine small
// ones. One widget that paints them itself. Listens to the bound cell, which it does not own and which must
// outlive it or be unbound first.
class ctrlCell : public QWidget {
    Q_OBJECT

  public:
    // Takes its colours from the table: 0 background, 3 locked, 4 unlocked, 6 candidates. `holder` outlives
    // it.
    ctrlCell(QWidget* parent, CellHolder& holder, const ColorTable::Colors& colors);
    ~ctrlCell() override;

    clsCell* mCell() const { return cell_; }
    void mCell(clsCell* cell);
    wGrid* ParentGrid() const { return parentGrid_; }
    void ParentGrid(wGrid* grid) { parentGrid_ = grid; }

    QColor BackColor() const { return backColor_; }
    void BackColor(const QColor& color);

    // The current cell has a frame, closed while it has the keyboard, broken while it has not. It is told
    // apart without its colour.
    bool Current() const { return current_; }
    void Current(bool current);
    // The frame of the current cell flashes: what was asked of the cell is refused.
    void Flash();

    // 0 and false without a cell. Writing Value without a cell raises error 0x80040001.
    std::uint8_t Value() const;
    void Value(std::uint8_t value);
    bool Locked() const;
    void Locked(bool locked);

    // Whether candidate d is shown; d outside 1..9 reads false and writes nothing. A written state lasts
    // until the next ManageMasks.
    bool Mask(int d) const;
    void Mask(int d, bool visible);

    // In pixels; the same for all cells of a window, whose own sizes differ by one.
    void DigitSizes(double valueSize, double candidateSize);

    // True hides all candidates from the next ManageMasks on.
    bool NoMask() const { return noMask_; }
    void NoMask(bool hide) { noMask_ = hide; }

    void DoSelect();
    // As its key does: enters 1..9, 0 empties the cell.
    void Type(int digit);
    void SetColors(const QColor& background, const QColor& unlocked, const QColor& locked);
    void SetColors(const QColor& background, const QColor& unlocked, const QColor& locked,
                   const QColor& mask);
    void ManageMasks();

    // For assistive technology: "Ligne 3, colonne 5", with ", donnée" for a given; "7" or "vide"; "candidats
    // 2 et 7", empty for a cell with a value.
    QString PlaceText() const;
    QString ValueText() const;
    QString CandidatesText() const;
    // Once a change is shown as a whole: it is told, if there is one.
    void TellChange();

    // The large digit as it is painted; no text for none.
    struct Label {
        QString text;
        QColor color;
    };
    const Label& lblValue() const { return lblValue_; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

  private:
    void mCell_Change(std::uint8_t value);
    void ShowValue(std::uint8_t value);
    // The candidate 1..9 in whose ninth of the view the point lies.
    int CandidateAt(const QPointF& point) const;
    void PaintFrame(QPainter& painter) const;

    clsCell* cell_ = nullptr;
    wGrid* parentGrid_ = nullptr;
    CellHolder& holder_;
    Label lblValue_;
    double valueSize_ = 0;  // pixels
    double candidateSize_ = 0;
    std::bitset<10> shownMasks_;  // by digit
    QColor maskColor_;
    QColor backColor_;
    QColor lockedColor_;
    QColor unlockedColor_;
    bool noMask_ = false;
    bool showsGiven_ = false;
    std::uint8_t toldValue_ = 0;
    bool current_ = false;
    int flashes_ = 0;  // changes of the frame that are still to come
    QBasicTimer tmrFlash_;
};
