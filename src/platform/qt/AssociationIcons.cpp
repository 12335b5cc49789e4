#include "platform/qt/AssociationIcons.h"

#include <QBuffer>
#include <QFile>
#include <QIcon>
#include <QPixmap>

namespace platform_qt {

std::vector<platform::IconFile> AssociationIcons() {
    QFile drawing(QStringLiteral(":/icons/Ninarix.svg"));
    if (!drawing.open(QIODevice::ReadOnly)) return {};
    std::vector<platform::IconFile> icons{{0, drawing.readAll().toStdString()}};
    const QIcon icon(drawing.fileName());
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        // In pixels of the file, whatever the screen's scale is.
        const QPixmap picture = icon.pixmap(QSize(size, size), 1.0);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        if (picture.width() == size && picture.save(&buffer, "PNG"))
            icons.push_back({size, bytes.toStdString()});
    }
    return icons;
}

}  // namespace platform_qt
