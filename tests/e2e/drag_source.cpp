// A small window from which the files named on the command line can be dragged. Says "accepted" on the
// standard output when what is under the pointer takes them. Stays until it is ended: the data is fetched
// after the drop.

#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>
#include <QWidget>
#include <cstdio>

namespace {

class DragSource : public QWidget {
  protected:
    void mousePressEvent(QMouseEvent* /*event*/) override {
        auto* files = new QMimeData;
        QList<QUrl> urls;
        for (const QString& file : QCoreApplication::arguments().mid(1))
            urls.append(QUrl::fromLocalFile(file));
        files->setUrls(urls);
        auto* drag = new QDrag(this);
        drag->setMimeData(files);
        connect(drag, &QDrag::actionChanged, this, [](Qt::DropAction action) {
            if (action == Qt::CopyAction) std::puts("accepted");
            std::fflush(stdout);
        });
        drag->exec(Qt::CopyAction);
    }
};

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    DragSource source;
    source.setWindowTitle(QStringLiteral("drag source"));
    source.setGeometry(1100, 60, 200, 200);
    source.show();
    return QApplication::exec();
}
