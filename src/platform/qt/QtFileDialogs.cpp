#include "platform/qt/QtFileDialogs.h"

#include <QDir>
#include <QFileDialog>
#include <QStringList>

#include "platform/qt/QtHost.h"

namespace platform_qt {

namespace {

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

}  // namespace

std::string QtFileDialogs::Ask(const platform::FileQuestion& question) {
    QFileDialog dialog(DialogOwner());
    const QString filter = FromUtf8(question.filter);
    dialog.setWindowTitle(question.save ? QStringLiteral("Enregistrer sous") : QStringLiteral("Ouvrir"));
    dialog.setAcceptMode(question.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(question.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setNameFilters(NameFilters(filter));
    dialog.setDirectory(question.folder.empty() || !QDir(FromUtf8(question.folder)).exists()
                            ? QDir::homePath()
                            : FromUtf8(question.folder));
    if (question.save) {
        dialog.setDefaultSuffix(FirstSuffix(filter));
        dialog.selectFile(FromUtf8(question.proposedName));
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    return ToUtf8(QDir::toNativeSeparators(dialog.selectedFiles().constFirst()));
}

}  // namespace platform_qt
