// SPDX-License-Identifier: LGPL-2.1-or-later
// list-launchers PACKAGE: lists the launcher entries of a package: the class that each entry starts, its label in every
// language, and the sizes of its icon.
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
    // The list is also empty for a package without launchers. The code is only set when the package cannot be read.
    if (package.getError() != 0) {
        err << fileName << ": " << package.getErrorString() << '\n';
        return 1;
    }

    for (const ApkLauncherInfo &launcher : launchers) {
        out << launcher.launcherPackage() << '/' << launcher.launcherClass() << '\n';

        // The default label comes first, because its key is empty.
        const QMap<QString, QString> labels = launcher.labels();
        for (auto label = labels.begin(); label != labels.end(); ++label)
            out << "  " << (label.key().isEmpty() ? QStringLiteral("default") : label.key()) << ": " << label.value()
                << '\n';

        // The icons are the unchanged picture files, in no particular order.
        QList<QImage> icons = launcher.icons();
        std::sort(icons.begin(), icons.end(), [](const QImage &a, const QImage &b) { return a.width() < b.width(); });
        for (const QImage &icon : icons)
            out << "  icon " << icon.width() << 'x' << icon.height() << '\n';
    }
    return 0;
}
