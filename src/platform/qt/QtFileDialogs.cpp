// SPDX-License-Identifier: MIT
#include "platform/qt/QtFileDialogs.h"

#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QStringList>
#include <filesystem>
#include <map>

#include "platform/FolderAlias.h"
#include "platform/qt/DialogParts.h"
#include "platform/qt/QtHost.h"

namespace platform_qt {

namespace {

namespace fs = std::filesystem;

// "Description|*.ext|All|*.*" as the toolkit's name filters. "*.*" stands for every file, also one without
// a full stop in its name.
QStringList NameFilters(const QString& filter) {
    QStringList result;
    const QStringList fields = filter.split(QLatin1Char('|'));
    for (qsizetype i = 0; i + 1 < fields.size(); i += 2) {
        const QString pattern = fields[i + 1] == QLatin1String("*.*") ? QStringLiteral("*") : fields[i + 1];
        result.append(QStringLiteral("%1 (%2)").arg(fields[i], pattern));
    }
    return result;
}

QString FirstSuffix(const QString& filter) {
    return filter.section(QLatin1Char('|'), 1, 1).section(QLatin1Char('.'), -1);
}

bool Exists(const fs::path& path) {
    std::error_code failed;
    return fs::exists(path, failed);
}

// The one entry of a folder whose name the toolkit shows like this; the name as it stands if there is none,
// or more than one.
std::string EntryShownAs(const fs::path& folder, const QString& name) {
    std::string found = ToUtf8(name);
    if (Exists(folder / found) || !name.contains(QChar::ReplacementCharacter)) return found;
    int matches = 0;
    std::error_code failed;
    for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end;
         entry.increment(failed)) {
        const std::string bytes = entry->path().filename().string();
        if (FromUtf8(bytes) == name && ++matches == 1) found = bytes;
    }
    return matches == 1 ? found : ToUtf8(name);
}

// The toolkit's dialog, for names of any bytes. It decodes names for good, a byte that is no UTF-8 becomes a
// replacement character, and so it neither finds such a file nor enters such a folder. A chosen name is
// looked up among those that look like it, and such a folder is given to it under a name that it can write.
class BytesFileDialog : public QFileDialog {
  public:
    explicit BytesFileDialog(const platform::FileQuestion& question);

    // Empty text without a choice.
    std::string Chosen() const;
    void accept() override;

  private:
    struct Folder {
        std::string path;
        platform::FolderAlias alias;
    };

    // False: there is no such folder.
    bool Enter(const std::string& folder);
    std::string BytesOf(const QString& path) const;
    void AddSuffix();
    // None in a dialog of the desktop's own.
    QLineEdit* NameField() const { return findChild<QLineEdit*>(QStringLiteral("fileNameEdit")); }

    const QString suffix_;
    const std::string proposed_;
    std::map<QString, Folder> entered_;
};

BytesFileDialog::BytesFileDialog(const platform::FileQuestion& question)
    : QFileDialog(DialogOwner()),
      suffix_(FirstSuffix(FromUtf8(question.filter))),
      proposed_(question.proposedName + '.' + ToUtf8(suffix_)) {
    setWindowTitle(question.save ? QStringLiteral("Enregistrer sous") : QStringLiteral("Ouvrir"));
    setAcceptMode(question.save ? AcceptSave : AcceptOpen);
    setFileMode(question.save ? AnyFile : ExistingFile);
    setNameFilters(NameFilters(FromUtf8(question.filter)));
    if (!Enter(question.folder)) setDirectory(QDir::homePath());
    connect(this, &QFileDialog::directoryEntered, this, [this](const QString& folder) {
        if (!QDir(folder).exists()) Enter(BytesOf(folder));
    });
    if (!question.save) return;
    setDefaultSuffix(suffix_);
    if (!question.proposedName.empty()) selectFile(FromUtf8(proposed_));
}

bool BytesFileDialog::Enter(const std::string& folder) {
    QString name = FromUtf8(folder);
    if (!folder.empty() && !QDir(name).exists()) {
        platform::FolderAlias alias(folder);
        name = FromUtf8(alias.Name());
        if (name.isEmpty()) return false;
        entered_[name] = {folder, std::move(alias)};
    }
    if (folder.empty() || !QDir(name).exists()) return false;
    setDirectory(name);
    return true;
}

std::string BytesFileDialog::BytesOf(const QString& path) const {
    QString rest = path;
    fs::path bytes = "/";
    for (const auto& [name, folder] : entered_) {
        if (path != name && !path.startsWith(name + QLatin1Char('/'))) continue;
        bytes = folder.path;
        rest = path.mid(name.size());
    }
    for (const QString& name : rest.split(QLatin1Char('/'), Qt::SkipEmptyParts))
        bytes /= EntryShownAs(bytes, name);
    // A proposed name that was left as it was, for a file that is yet to be made.
    if (bytes.filename().string() == ToUtf8(FromUtf8(proposed_)) && !Exists(bytes))
        bytes.replace_filename(proposed_);
    return bytes.string();
}

std::string BytesFileDialog::Chosen() const {
    return selectedFiles().isEmpty() ? std::string() : BytesOf(selectedFiles().constFirst());
}

// The toolkit takes what follows any full stop for an extension; of "v1.2" that is right only where the user
// chose to see files of all kinds.
void BytesFileDialog::AddSuffix() {
    QLineEdit* field = NameField();
    if (!field || selectedNameFilter() != nameFilters().constFirst()) return;
    const QString name = field->text();
    const QString ending = QLatin1Char('.') + suffix_;
    if (name.isEmpty() || name.endsWith(QLatin1Char('/')) || name.endsWith(ending, Qt::CaseInsensitive))
        return;
    const QStringList files = selectedFiles();
    if (files.size() == 1 && QFileInfo(files.constFirst()).isDir()) return;
    field->setText(name + ending);
}

// The toolkit looks at files that it can name; it neither finds the others nor asks before they are replaced.
void BytesFileDialog::accept() {
    if (acceptMode() == AcceptSave) AddSuffix();
    const QString shown = selectedFiles().value(0);
    const std::string file = Chosen();
    if (shown.isEmpty() || QFileInfo::exists(shown) || !Exists(file)) return QFileDialog::accept();
    if (Enter(file)) {
        if (QLineEdit* field = NameField()) field->clear();
        return;
    }
    if (acceptMode() == AcceptSave) {
        const QString question = QFileDialog::tr("%1 already exists.\nDo you want to replace it?");
        const auto answer =
            QMessageBox::warning(this, windowTitle(), question.arg(QFileInfo(shown).fileName()),
                                 QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
        if (answer != QMessageBox::Yes) return;
    }
    done(QDialog::Accepted);
}

}  // namespace

std::string QtFileDialogs::Ask(const platform::FileQuestion& question) {
    BytesFileDialog dialog(question);
    HelpOnF1(dialog, [&question] { return question.helpContext; });
    return dialog.exec() == QDialog::Accepted ? dialog.Chosen() : std::string();
}

}  // namespace platform_qt
