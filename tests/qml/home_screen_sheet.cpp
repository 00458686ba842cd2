// SPDX-License-Identifier: LGPL-2.1-or-later
// home_screen_sheet PICTURE HOMESCREEN IMPORTS FOLDER: draws the example home-screen-qml on one picture, upright and
// across, light and dark, with the packages below FOLDER.
#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickItemGrabResult>
#include <QQuickView>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

namespace {

constexpr int PictureMargin = 16;

struct SheetView {
    QRect place;
    bool isDark;
};

/// Lets the program work for @p milliseconds.
void pass(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

QImage grabbed(QQuickView &view, const SheetView &wanted)
{
    constexpr int Settled = 1500;
    view.resize(wanted.place.size());
    view.rootObject()->setProperty("dark", wanted.isDark);
    pass(Settled);
    const QSharedPointer<QQuickItemGrabResult> result = view.rootObject()->grabToImage();
    QEventLoop loop;
    QObject::connect(result.data(), &QQuickItemGrabResult::ready, &loop, &QEventLoop::quit);
    loop.exec();
    return result->image();
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    if (arguments.size() != 5) {
        std::fputs("usage: home_screen_sheet PICTURE HOMESCREEN IMPORTS FOLDER\n", stderr);
        return 2;
    }
    const QTemporaryDir scratch;
    QQuickView view;
    view.engine()->addImportPath(arguments.at(3));
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.setInitialProperties({{QStringLiteral("folder"), arguments.at(4)},
                               {QStringLiteral("index"), scratch.filePath(QStringLiteral("index.db"))},
                               {QStringLiteral("focus"), true}});
    view.setSource(QUrl::fromLocalFile(arguments.at(2)));
    if (view.rootObject() == nullptr)
        return 1;
    view.show();
    QElapsedTimer clock;
    clock.start();
    constexpr qint64 Patience = 60000;
    const QObject *const model = view.rootObject()->property("model").value<QObject *>();
    do {
        pass(100);
    } while (model->property("refreshing").toBool() && clock.elapsed() < Patience);

    const SheetView views[] = {
        {QRect(0, 0, 360, 640), false},
        {QRect(360 + PictureMargin, 0, 360, 640), true},
        {QRect(2 * (360 + PictureMargin), 0, 640, 312), false},
        {QRect(2 * (360 + PictureMargin), 312 + PictureMargin, 640, 312), true},
    };
    QRect all;
    for (const SheetView &one : views)
        all |= one.place;
    QImage sheet(all.size(), QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    for (const SheetView &one : views)
        painter.drawImage(one.place.topLeft(), grabbed(view, one));
    painter.end();
    return sheet.save(arguments.at(1)) ? 0 : 1;
}
