// A small window from which the two files named on the command line can be dragged. Says "accepted" on the
// standard error output when what is under the pointer takes them. Stays until it is ended: the data is
// fetched after the drop.

#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QUrl>
#include <QWidget>
#include <cstdio>

namespace {

class DragSource : public QWidget {
  protected:
    void mousePressEvent(QMouseEvent* /*event*/) override {
        const QStringList arguments = QCoreApplication::arguments();
        auto* drag = new QDrag(this);
        drag->setMimeData(new QMimeData);
        drag->mimeData()->setUrls({QUrl::fromLocalFile(arguments[1]), QUrl::fromLocalFile(arguments[2])});
        connect(drag, &QDrag::actionChanged, this, [](Qt::DropAction action) {
            if (action == Qt::CopyAction) std::fputs("accepted\n", stderr);
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
