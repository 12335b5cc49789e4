// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>
#include <QWidget>
#include <array>

class QGroupBox;

// A palette button's meaning for the current cell.
enum class DigitState {
    Neutral,   // grey: not applicable, or neither of the others
    Allowed,   // green: the cell's value, or a digit that the cell may take
    Excluded,  // red: a digit that the user excluded
};

// A button that shows its state by its colour and by a mark - a tick, a stroke - so that it is told apart
// without seeing colours. Disabled and neutral it fades. For the ear it has a name of its own, which follows
// its state.
class PaletteButton : public QAbstractButton {
    Q_OBJECT

  public:
    enum class Column { Value, Mask };

    // index 0..9, 0 the clear button.
    PaletteButton(QWidget* parent, Column column, int index);

    DigitState State() const { return state_; }
    void State(DigitState state);

    // What a press would do, and what the state says.
    QString SpokenName() const;
    QString SpokenState() const;

  signals:
    // An arrow key, by the columns and rows that it leads on.
    void Arrow(int columns, int rows);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QColor Fill() const;

    Column column_;
    int index_;
    DigitState state_ = DigitState::Neutral;
};

// The panel with the columns "Valeur" and "Masque" of ten buttons each, the clear button first. Each column
// is one stop of the Tab key; the arrows walk inside and across.
class Palette : public QWidget {
    Q_OBJECT

  public:
    explicit Palette(QWidget* parent);

    // index 0..9, 0 the clear button.
    PaletteButton& cmdValue(int index) const { return Button(0, index); }
    PaletteButton& cmdMask(int index) const { return Button(1, index); }

    // Where the Tab key stops first; null when no button is of use.
    PaletteButton* FirstStop() const;
    // After the buttons' states have changed. Without a current cell no button is of use, and none is a stop.
    void PlaceTabStops(bool hasCell);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  signals:
    void cmdValue_Clicked(int index);
    void cmdMask_Clicked(int index);

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    using Buttons = std::array<PaletteButton*, 10>;

    void picPalette_Resize();
    void PlaceButtons(const QGroupBox& frame, const Buttons& buttons) const;
    int CaptionHeight() const;
    // From button `row` of a column on by the arrow that was pressed.
    void Walk(std::size_t column, int row, int columns, int rows);
    PaletteButton& Button(std::size_t column, int row) const {
        return *columns_[column][static_cast<std::size_t>(row)];
    }

    QGroupBox* frmValue_;
    QGroupBox* frmMask_;
    std::array<Buttons, 2> columns_{};
    std::array<int, 2> stops_{};  // the row of each column where the Tab key stops
};
