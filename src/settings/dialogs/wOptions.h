// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <array>
#include <cstdint>
#include <utility>

#include "settings/Settings.h"

class LevelOptions;
class QAbstractButton;
class QCheckBox;
class QComboBox;
class QFrame;
class QLineEdit;
class QTabWidget;

// Edits the preferences. Made anew for every showing; only "Ok" writes, and it may be
// invoked unseen: that is how a first start writes the defaults.
class wOptions : public QDialog {
    Q_OBJECT

  public:
    explicit wOptions(QWidget* owner);

    // Ticked by a changed colour; ticked from outside, "Ok" writes the colours as they stand.
    QCheckBox& chkColorChanged() const { return *chkColorChanged_; }
    // The help topic of the page on view.
    int HelpContext() const { return helpContext_; }

  public slots:
    void cmdCommands_Click(int index);  // 1 "Ok", 0 "Annuler"
    void tbsOnglets_Click();
    void lblColors_Click(int index);

  signals:
    // New colours were confirmed; the shared table holds them.
    void ColorsChanged();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QFrame* AddPage(int index);
    void BuildDivers(QFrame& page);
    void BuildCouleurs(QFrame& page);
    void BuildImpression(QFrame& page);
    void BuildNiveau(QFrame& page);
    template <class Row>
    static QCheckBox* AddCheckBox(QFrame& page, const Row& row, const char* caption);

    // The layout fields in the order in which they are written.
    std::array<std::pair<Settings::Measure, QLineEdit*>, 3> Fields() const;
    void Form_Load();
    // For the ear: what each colour is for, and which it is.
    void NameSwatches();
    void Save();
    // False for a typed character that the layout fields do not take.
    bool txtResolMsg_KeyPress(int keyAscii) const;

    QTabWidget* tbsOnglets_;
    std::array<QAbstractButton*, 7> lblColors_{};
    std::array<std::uint32_t, 7> colors_{};
    QCheckBox* chkColorChanged_ = nullptr;
    QCheckBox* chkNoSplash_ = nullptr;
    QCheckBox* chkLinesWidth_ = nullptr;
    QCheckBox* chkConfigOnNew_ = nullptr;
    QCheckBox* chkLevelAsk_ = nullptr;
    QLineEdit* txtMarginLeft_ = nullptr;
    QLineEdit* txtMarginTop_ = nullptr;
    QLineEdit* txtGridSize_ = nullptr;
    LevelOptions* levels_ = nullptr;
    QComboBox* cboResolLoop_ = nullptr;
    int helpContext_ = 0;
};
