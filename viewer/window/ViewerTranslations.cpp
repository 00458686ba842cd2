// SPDX-License-Identifier: LGPL-2.1-or-later
#include "window/ViewerTranslations.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

// The macro declares a function, so this one is in no namespace.
static void loadViewerWords()
{
    Q_INIT_RESOURCE(sorrel_viewer);
}

namespace Viewer {

void ViewerTranslations::install(QApplication *application)
{
    loadViewerWords();
    const QLocale locale;
    auto *const words = new QTranslator(application);
    if (!words->load(locale, QStringLiteral("sorrel_viewer"), QStringLiteral("_"),
                     QStringLiteral(":/viewer/translations"))) {
        delete words;
        return;
    }
    application->installTranslator(words);
    auto *const ofQt = new QTranslator(application);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    const QString directory = QLibraryInfo::location(QLibraryInfo::TranslationsPath);
#else
    const QString directory = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
#endif
    if (ofQt->load(locale, QStringLiteral("qtbase"), QStringLiteral("_"), directory))
        application->installTranslator(ofQt);
    application->setLayoutDirection(locale.textDirection());
}

} // namespace Viewer
