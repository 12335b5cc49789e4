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
// without seeing colours; disabled, it keeps its colour and fades its digit.
class PaletteButton : public QAbstractButton {
    Q_OBJECT

  public:
    explicit PaletteButton(QWidget* parent) : QAbstractButton(parent) { setFocusPolicy(Qt::TabFocus); }

    DigitState State() const { return state_; }
    void State(DigitState state);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    DigitState state_ = DigitState::Neutral;
};

// The panel with the columns "Valeur" and "Masque" of ten buttons each, the clear button first.
class Palette : public QWidget {
    Q_OBJECT

  public:
    explicit Palette(QWidget* parent);

    // index 0..9, 0 the clear button.
    PaletteButton& cmdValue(int index) const { return *values_[static_cast<std::size_t>(index)]; }
    PaletteButton& cmdMask(int index) const { return *masks_[static_cast<std::size_t>(index)]; }

    QSize sizeHint() const override { return {150, 480}; }
    QSize minimumSizeHint() const override { return {110, 300}; }

  signals:
    void cmdValue_Clicked(int index);
    void cmdMask_Clicked(int index);

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    using Buttons = std::array<PaletteButton*, 10>;
    void PlaceButtons(const QGroupBox& frame, const Buttons& buttons);

    QGroupBox* frmValue_;
    QGroupBox* frmMask_;
    Buttons values_{};
    Buttons masks_{};
};
