// SPDX-License-Identifier: LGPL-2.1-or-later
// Shows the launchers of all packages below a folder as a phone does. Usage: home-screen-qml FOLDER [INDEX]
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QStringList>

#include <cstdio>

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    if (arguments.size() != 2 && arguments.size() != 3) {
        std::fputs("usage: home-screen-qml FOLDER [INDEX]\n", stderr);
        return 2;
    }
    QQmlApplicationEngine engine;
    engine.setInitialProperties(
        {{QStringLiteral("folder"), arguments.at(1)}, {QStringLiteral("index"), arguments.value(2)}});
    QObject::connect(
        &engine, &QQmlApplicationEngine::objectCreated, &app,
        [](const QObject *window) {
            if (window == nullptr)
                QCoreApplication::exit(1);
        },
        Qt::QueuedConnection);
    engine.load(QUrl(QStringLiteral("qrc:/main.qml")));
    return app.exec();
}
