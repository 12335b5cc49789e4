#pragma once

#include <QLabel>

// A panel of the status bar. The keyboard can be led to it, so that it is read out; it shows that by a frame.
class StatusPanel : public QLabel {
    Q_OBJECT

  public:
    StatusPanel(QWidget* parent, const QString& name);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
};
