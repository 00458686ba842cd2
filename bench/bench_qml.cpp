// SPDX-License-Identifier: LGPL-2.1-or-later
// bench_qml frame FILE.qml IMPORTS [FOLDER INDEX]: opens a window, prints "shown" after its first frame, and ends.
// bench_qml page FILE.qml IMPORTS FOLDER INDEX: the same when each launcher on the page has its icon.
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>

#include <cstdio>

namespace {

/// Counts the launchers below @p item, and those whose icon is still loading.
void countIcons(const QQuickItem &item, int &launchers, int &loading)
{
    const QVariant status = item.property("iconStatus");
    if (status.isValid() && item.isVisible()) {
        constexpr int Loading = 2; // Image.Loading
        ++launchers;
        loading += status.toInt() == Loading ? 1 : 0;
    }
    const QList<QQuickItem *> children = item.childItems();
    for (const QQuickItem *child : children)
        countIcons(*child, launchers, loading);
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    if (arguments.size() != 4 && arguments.size() != 6) {
        std::fputs("usage: bench_qml frame|page FILE.qml IMPORTS [FOLDER INDEX]\n", stderr);
        return 2;
    }
    const bool waitsForIcons = arguments.at(1) == QLatin1String("page");
    QQmlApplicationEngine engine;
    engine.addImportPath(arguments.at(3));
    if (arguments.size() == 6)
        engine.setInitialProperties(
            {{QStringLiteral("folder"), arguments.at(4)}, {QStringLiteral("index"), arguments.at(5)}});
    engine.load(QUrl::fromLocalFile(arguments.at(2)));
    if (engine.rootObjects().isEmpty())
        return 1;
    auto *const window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    QObject::connect(window, &QQuickWindow::frameSwapped, window, [window, waitsForIcons] {
        int launchers = 0;
        int loading = 0;
        if (waitsForIcons)
            countIcons(*window->contentItem(), launchers, loading);
        if (waitsForIcons && (launchers == 0 || loading > 0)) {
            window->update();
            return;
        }
        // The end of the program is no part of the work.
        std::puts("shown");
        std::fflush(stdout);
        QCoreApplication::quit();
    });
    return app.exec();
}
