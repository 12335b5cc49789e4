// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <memory>

#include "printing/PagePainter.h"

class PagePreview;
class QButtonGroup;
class QCheckBox;
class QComboBox;

namespace platform_qt::PrintSystem {
class PrinterQuery;
struct Printers;
}  // namespace platform_qt::PrintSystem

struct PrintChoice {
    bool toFile = false;
    QString printer;
    bool landscape = false;
    bool blackAndWhite = false;
};

// Asks where and how to print, beside a picture of the page. Made anew for every question; only "Ok" writes
// the settings. The printers arrive while the dialog is open; "Fichier PDF" is there from the start.
class wPrinter : public QDialog {
    Q_OBJECT

  public:
    wPrinter(const PrintedGrid& grid, QWidget* owner);
    ~wPrinter() override;

    // True only after "Ok".
    bool Accepted() const { return accepted_; }
    PrintChoice Choice() const;

  public slots:
    void cmdCommands_Click(int index);  // 1 "Ok", 0 "Annuler"

  private:
    QWidget* BuildChoices();
    void Form_Load();
    void FillPrinters(const platform_qt::PrintSystem::Printers& printers);
    void ShowPage();

    QComboBox* cboPrinter_;
    QButtonGroup* optOrientation_;  // 1 "Paysage", 0 "Portrait"
    QCheckBox* chkBlackWhite_ = nullptr;
    PagePreview* preview_;
    std::unique_ptr<platform_qt::PrintSystem::PrinterQuery> query_;
    bool neverChosen_ = true;  // no printer is stored: the system's own comes first
    bool accepted_ = false;
};
