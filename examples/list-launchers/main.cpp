// SPDX-License-Identifier: LGPL-2.1-or-later
// list-launchers PACKAGE: lists what a home screen shows for a package: the class that each entry starts, its label in
// every language, and the sizes of its icon.
#include <ApkFile.h>
#include <QCoreApplication>
#include <QTextStream>

#include <algorithm>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout), err(stderr);
    if (argc != 2) {
        err << "usage: list-launchers PACKAGE\n";
        return 2;
    }
    const QString fileName = application.arguments().at(1);

    ApkFile package(fileName);
    const bool includeDisabled = false;
    const QList<ApkLauncherInfo> launchers = package.getLauncherInfo(includeDisabled);
    // A package without launchers has an empty list, too. The code tells it from one that cannot be read.
    if (package.getError() != 0) {
        err << fileName << ": " << package.getErrorString() << '\n';
        return 1;
    }

    for (const ApkLauncherInfo &launcher : launchers) {
        out << launcher.launcherPackage() << '/' << launcher.launcherClass() << '\n';

        // The default label has an empty key, and so comes first.
        const QMap<QString, QString> labels = launcher.labels();
        for (auto label = labels.begin(); label != labels.end(); ++label)
            out << "  " << (label.key().isEmpty() ? QStringLiteral("default") : label.key()) << ": " << label.value()
                << '\n';

        // The icons are the picture files, as they are, and in no particular order.
        QList<QImage> icons = launcher.icons();
        std::sort(icons.begin(), icons.end(), [](const QImage &a, const QImage &b) { return a.width() < b.width(); });
        for (const QImage &icon : icons)
            out << "  icon " << icon.width() << 'x' << icon.height() << '\n';
    }
    return 0;
}
