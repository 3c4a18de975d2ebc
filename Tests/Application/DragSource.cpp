// A window to drag files from: nolfa-drag-source X Y FILE…
// Sits at that place of the screen; a drag begins where the pointer goes down and moves. Says "shown" when it is there,
// and "dropped" or "refused" after each drag.

#include <QDrag>
#include <QGuiApplication>
#include <QMimeData>
#include <QMouseEvent>
#include <QRasterWindow>
#include <QTimer>
#include <QUrl>
#include <cstdio>

namespace {

class Source : public QRasterWindow {
public:
    explicit Source(QList<QUrl> files)
        : m_files(std::move(files))
    {
        setFlags(Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
    }

protected:
    void mouseMoveEvent(QMouseEvent *event) override
    {
        if (m_isDragging || !event->buttons().testFlag(Qt::LeftButton))
            return;
        m_isDragging = true;
        // The drag has an event loop of its own; this event ends first.
        QTimer::singleShot(0, this, [this] { drag(); });
    }

private:
    void drag()
    {
        auto *data = new QMimeData;
        data->setUrls(m_files);
        auto *const drag = new QDrag(this); // goes when its data was fetched
        drag->setMimeData(data);
        const Qt::DropAction action = drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::CopyAction);
        std::puts(action == Qt::CopyAction ? "dropped" : "refused");
        std::fflush(stdout);
        m_isDragging = false;
    }

    const QList<QUrl> m_files;
    bool m_isDragging = false;
};

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    QList<QUrl> files;
    for (int i = 3; i < argc; ++i)
        files << QUrl::fromLocalFile(QString::fromLocal8Bit(argv[i]));
    if (files.isEmpty()) {
        std::fputs("usage: nolfa-drag-source X Y FILE...\n", stderr);
        return 2;
    }
    Source window(files);
    window.setGeometry(QByteArray(argv[1]).toInt(), QByteArray(argv[2]).toInt(), 100, 100);
    window.show();
    QTimer::singleShot(300, [] {
        std::puts("shown");
        std::fflush(stdout);
    });
    return QGuiApplication::exec();
}
