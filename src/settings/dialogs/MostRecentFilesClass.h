// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "settings/Settings.h"

class QAction;
class QWidget;

// The recently used files as entries of a window's menu. The window carries an action "mnuFileMRU" (entry 0,
// always hidden) in a menu and a separator "mnuFileSepMRU"; entries 1..n follow entry 0 and are found by
// their names "mnuFileMRU(i)" at run time, so the list itself keeps none. Entry i's data holds the bytes of
// the whole path, its caption is a shortened one. A triggered entry calls the window's slot
// mnuFileMRU_Click(int).
class MostRecentFilesClass {
  public:
    int MaxRecent() const { return maxRecent_; }
    void MaxRecent(int count) { maxRecent_ = count; }
    const std::string& ParamSep() const { return paramSep_; }
    void ParamSep(const std::string& separator) { paramSep_ = separator; }
    const std::string& ErrorMsg() const { return errorMsg_; }
    void ErrorMsg(const std::string& text) { errorMsg_ = text; }

    // Puts the path at the top of the list.
    void Add(QWidget& window, const std::string& path);

    // Fills the list from, or writes it to, a profile file. A list that could not be loaded is not written:
    // the file may hold entries that this one lacks.
    void Load(QWidget& window, const std::string& file);
    void Save(QWidget& window, const std::string& file);
    // The same, to the settings file, as one step with what else there is to write.
    void Save(QWidget& window, Settings::ProfileChanges changes);

    // Reports entry `index` as missing and removes it.
    void Delete(QWidget& window, int index);

    // The whole path of entry `index`; empty if there is none.
    static std::string PathOf(const QWidget& window, int index);

    // The caption of a path: its first folder, "..." and its end when it is long.
    static std::string ShortCaption(std::string_view path, std::string_view separator);

  private:
    int maxRecent_ = 5;
    std::string paramSep_ = ",";
    bool loaded_ = false;
    std::string errorMsg_ = "Le fichier \"*\" n'existe plus ou a été déplacé";
};
