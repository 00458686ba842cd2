// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Arguments.h"
#include "PrintableText.h"
#include "ViewerOptions.h"
#include "window/PackageWindow.h"
#include "window/ViewerTranslations.h"

#include <QApplication>

#include <cstdio>

namespace {

constexpr int WrongUsage = 2;

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication::setOrganizationName(QStringLiteral("sorrel"));
    QCoreApplication::setApplicationName(QStringLiteral("sorrel-viewer"));
    QCoreApplication::setApplicationVersion(QStringLiteral(SORREL_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.example.sorrel.viewer"));
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
    Viewer::ViewerOptions early;
    // Qt's own options are errors here.
    early.parse(argumentTexts(argc, argv));
    if (early.isHelp() || early.isVersion()) {
        // Help needs no screen.
        const QCoreApplication application(argc, argv);
        if (early.isVersion())
            early.showVersion();
        early.showHelp();
    }

    QApplication application(argc, argv);
    Viewer::ViewerOptions options;
    if (!options.parse(argumentTexts(argc, argv))) {
        const QString text = printableText(options.errorString());
        std::fprintf(stderr, "sorrel-viewer: %s\nTry 'sorrel-viewer --help'.\n", text.toUtf8().constData());
        return WrongUsage;
    }
    Viewer::ViewerTranslations::install(&application);
    Viewer::PackageWindow window;
    if (options.hasInstallCommand())
        window.setInstallCommand(options.installCommand());
    if (!options.file().isEmpty())
        window.openFile(options.file(), options.compareWith());
    window.show();
    return QApplication::exec();
}
