// SPDX-License-Identifier: MIT
#include "platform/qt/AssociationIcons.h"

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

namespace platform_qt {

std::vector<platform::IconFile> AssociationIcons() {
    QFile drawing(QStringLiteral(":/icons/Ninarix.svg"));
    if (!drawing.open(QIODevice::ReadOnly)) return {};
    const QByteArray content = drawing.readAll();
    std::vector<platform::IconFile> icons{{0, content.toStdString()}};
    QSvgRenderer renderer(content);
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256, 512}) {
        QImage picture(size, size, QImage::Format_ARGB32);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        renderer.render(&painter);
        painter.end();
        QByteArray bytes;
        QBuffer buffer(&bytes);
        if (picture.save(&buffer, "PNG")) icons.push_back({size, bytes.toStdString()});
    }
    return icons;
}

}  // namespace platform_qt
