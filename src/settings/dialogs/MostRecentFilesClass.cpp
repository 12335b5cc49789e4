// SPDX-License-Identifier: MIT
#include "settings/dialogs/MostRecentFilesClass.h"

#include <QAction>
#include <QMenu>
#include <QMetaObject>
#include <QWidget>
#include <algorithm>

#include "diagnostics/ErrorHandling.h"
#include "platform/Host.h"
#include "settings/Settings.h"

namespace {

QString EntryName(int index) {
    return index == 0 ? QStringLiteral("mnuFileMRU") : QStringLiteral("mnuFileMRU(%1)").arg(index);
}

QAction* Entry(const QWidget& window, int index) {
    return window.findChild<QAction*>(EntryName(index));
}

int EntryCount(const QWidget& window) {
    int count = 0;
    while (Entry(window, count + 1)) ++count;
    return count;
}

void ShowSeparator(const QWidget& window) {
    if (auto* separator = window.findChild<QAction*>(QStringLiteral("mnuFileSepMRU"))) {
        separator->setVisible(EntryCount(window) > 0);
    }
}

QMenu* MenuOf(const QAction& entry) {
    for (QObject* holder : entry.associatedObjects()) {
        if (auto* menu = qobject_cast<QMenu*>(holder)) return menu;
    }
    throw RuntimeError(91);
}

// Entries are made one behind the other, right after the last one there is.
void AppendEntry(QWidget& window, int index) {
    QAction* last = Entry(window, index - 1);
    if (!last) throw RuntimeError(91);
    QMenu* menu = MenuOf(*last);
    auto* entry = new QAction(&window);
    entry->setObjectName(EntryName(index));
    const auto actions = menu->actions();
    const auto place = actions.indexOf(last) + 1;
    menu->insertAction(place < actions.size() ? actions[place] : nullptr, entry);
    QObject::connect(entry, &QAction::triggered, &window, [&window, index] {
        QMetaObject::invokeMethod(&window, "mnuFileMRU_Click", Q_ARG(int, index));
    });
}

QString AsText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// An "&" of the path shows as "&", it marks no shortcut.
QString AsCaption(std::string_view text) {
    return AsText(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}

std::string PathOfEntry(const QAction& entry) {
    return entry.data().toByteArray().toStdString();
}

void AddEntries(Settings::ProfileChanges& changes, const QWidget& window) {
    for (int i = 1; i <= EntryCount(window); ++i) {
        Settings::Write(changes, Settings::RecentFiles, i, MostRecentFilesClass::PathOf(window, i));
    }
}

// The path's bytes are kept as they are: not every name of a file is a text.
void FillEntry(QAction& entry, const QString& caption, const std::string& path) {
    entry.setText(caption);
    entry.setData(QByteArray::fromStdString(path));
    entry.setToolTip(AsText(path));
    entry.setStatusTip(AsText(path));
}

void MoveEntries(const QWidget& window, int from, int to) {
    FillEntry(*Entry(window, to), Entry(window, from)->text(), PathOfEntry(*Entry(window, from)));
}

bool IsSamePath(const std::string& one, const std::string& other) {
    const QString text = AsText(one);
    if (text.compare(AsText(other), Qt::CaseInsensitive) != 0) return false;
    // Bytes that are no text all look alike.
    return one == other || !text.contains(QChar::ReplacementCharacter);
}

bool IsSeparator(QChar c) {
    return c == QLatin1Char('/') || c == QLatin1Char('\\');
}

}  // namespace

std::string MostRecentFilesClass::ShortCaption(std::string_view path, std::string_view separator) {
    // Counted in characters. Positions count from 1, as in the rule: k is the last separator with more than
    // 20 characters behind it, m the first one from position 4 on.
    const QString text = AsText(path);
    const qsizetype length = text.size();
    qsizetype k = std::max<qsizetype>(length - 21, 0);
    while (k > 0 && !IsSeparator(text[k - 1])) --k;
    qsizetype m = 4;
    while (m <= length && !IsSeparator(text[m - 1])) ++m;

    std::string caption(path);
    if (k > m) caption = (text.left(m) + QLatin1String("...") + text.mid(k - 1)).toStdString();
    if (separator.empty()) return caption;
    const auto first = caption.find(separator);
    if (first == std::string::npos) return caption;
    const auto start = first + separator.size();
    return caption.substr(start, caption.find(separator, start) - start);
}

void MostRecentFilesClass::Add(QWidget& window, const std::string& path) {
    Trap("MostRecentFilesClass", "Add", [&] {
        const int count = EntryCount(window);
        int place = 1;
        while (place <= count && !IsSamePath(path, PathOf(window, place))) ++place;
        QString caption = AsCaption(ShortCaption(path, paramSep_));
        if (place <= count) {
            caption = Entry(window, place)->text();
        } else if (count < maxRecent_) {
            AppendEntry(window, place);
        } else {
            place = count;
        }
        if (place < 1) return;
        for (int i = place; i > 1; --i) MoveEntries(window, i - 1, i);
        FillEntry(*Entry(window, 1), caption, path);
        ShowSeparator(window);
    });
}

void MostRecentFilesClass::Load(QWidget& window, const std::string& file) {
    Trap("MostRecentFilesClass", "Load", [&] {
        const Settings::IniSnapshot stored(file);
        if (!stored.WasRead()) return;
        for (int i = maxRecent_; i >= 1; --i) {
            const std::string path = Settings::Read(Settings::RecentFiles, i, stored);
            if (!path.empty()) Add(window, path);
        }
        ShowSeparator(window);
        loaded_ = true;
    });
}

void MostRecentFilesClass::Save(QWidget& window, const std::string& file) {
    Trap("MostRecentFilesClass", "Save", [&] {
        if (file == IniParamProcs::IniFilePath()) return Save(window, Settings::ProfileChanges(file));
        if (!loaded_) return;
        // The old list always leaves the settings file.
        IniParamProcs::DeleteIniSection(Settings::RecentFiles.section);
        Settings::ProfileChanges changes(file);
        AddEntries(changes, window);
        changes.Commit();
    });
}

void MostRecentFilesClass::Save(QWidget& window, Settings::ProfileChanges changes) {
    Trap("MostRecentFilesClass", "Save", [&] {
        if (loaded_) {
            changes.DeleteSection(Settings::RecentFiles.section);
            AddEntries(changes, window);
        }
        changes.Commit();
    });
}

void MostRecentFilesClass::Delete(QWidget& window, int index) {
    Trap("MostRecentFilesClass", "Delete", [&] {
        const int count = EntryCount(window);
        if (index < 1 || index > count) throw RuntimeError(ErrorNumber::OutOfBounds);
        std::string text;
        for (const char c : errorMsg_) {
            if (c == '*') {
                text += PathOf(window, index);
            } else {
                text += c;
            }
        }
        platform::TheHost().messages->Show(text, platform::MessageStyle::Stop);
        for (int i = index; i < count; ++i) MoveEntries(window, i + 1, i);
        delete Entry(window, count);
        ShowSeparator(window);
    });
}

std::string MostRecentFilesClass::PathOf(const QWidget& window, int index) {
    const QAction* entry = index >= 1 ? Entry(window, index) : nullptr;
    return entry ? PathOfEntry(*entry) : std::string();
}
