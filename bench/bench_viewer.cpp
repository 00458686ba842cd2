// SPDX-License-Identifier: LGPL-2.1-or-later
// bench_viewer empty: opens an empty window, prints "shown" after its first paint, and ends.
// bench_viewer paint FILE: the same for the window of the viewer.
// bench_viewer head FILE: the same when the window shows the label of the package.
#include "window/PackageWindow.h"

#include <QApplication>
#include <QLabel>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

namespace {

[[noreturn]] void end()
{
    // The end of the program is no part of the work.
    std::puts("shown");
    std::fflush(stdout);
    std::_Exit(0);
}

/// Ends the process after the first paint of a window.
class PaintWatcher : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *, QEvent *event) override
    {
        // Filters run before the window paints, and the timer after it.
        if (event->type() == QEvent::Paint)
            QTimer::singleShot(0, end);
        return false;
    }
};

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const QString way = arguments.value(1);
    if (way == QLatin1String("empty")) {
        QWidget window;
        PaintWatcher watcher;
        window.resize(960, 720);
        window.installEventFilter(&watcher);
        window.show();
        return QApplication::exec();
    }
    if (arguments.size() != 3) {
        std::fputs("usage: bench_viewer empty|paint|head [FILE]\n", stderr);
        return 2;
    }
    Viewer::PackageWindow window;
    PaintWatcher watcher;
    window.openFile(arguments.at(2));
    QTimer poll;
    if (way == QLatin1String("head")) {
        const auto *const label = window.findChild<QLabel *>(QStringLiteral("label"));
        QObject::connect(&poll, &QTimer::timeout, label, [label, name = label->text()] {
            if (label->text() != name)
                end();
        });
        poll.start(1);
    } else {
        window.installEventFilter(&watcher);
    }
    window.show();
    return QApplication::exec();
}
