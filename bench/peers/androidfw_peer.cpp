// SPDX-License-Identifier: LGPL-2.1-or-later
//
// androidfw_peer --print FILE...: prints the results of Android's own resource library as one line of JSON for each
// package, with those keys of "sorrel info --json" that need no pictures. `peers.py --check` compares the two.

#include "AndroidfwPackage.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>
#include <cstring>

namespace {

QJsonObject launcherToJson(const peer::Launcher &launcher)
{
    QJsonObject labels;
    for (const auto &label : launcher.labels)
        labels.insert(QString::fromStdString(label.first), QString::fromStdString(label.second));
    return {
        {QStringLiteral("class"), QString::fromStdString(launcher.className)},
        {QStringLiteral("labels"), labels},
    };
}

QJsonObject packageToJson(const char *file, const peer::AndroidfwPackage &package)
{
    QJsonArray launchers;
    for (const peer::Launcher &launcher : package.launchers())
        launchers.append(launcherToJson(launcher));
    return {
        {QStringLiteral("file"), QFile::decodeName(file)},
        {QStringLiteral("package"), QString::fromStdString(package.package())},
        {QStringLiteral("minSdkVersion"), package.minSdkVersion()},
        {QStringLiteral("launchers"), launchers},
    };
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc < 3 || std::strcmp(argv[1], "--print") != 0) {
        std::fputs("usage: androidfw_peer --print FILE...\n", stderr);
        return 2;
    }
    int status = 0;
    for (int i = 2; i < argc; ++i) {
        const peer::AndroidfwPackage package(argv[i]);
        if (!package.isOpen()) {
            std::fprintf(stderr, "androidfw_peer: %s: cannot be read\n", argv[i]);
            status = 1;
        }
        const QByteArray line = QJsonDocument(packageToJson(argv[i], package)).toJson(QJsonDocument::Compact);
        std::printf("%s\n", line.constData());
    }
    return status;
}
