// SPDX-License-Identifier: LGPL-2.1-or-later
#include "OpenIndex.h"

#include "Console.h"
#include "FileName.h"

#include <SorrelKit/Shelf.h>

#include <QCoreApplication>

namespace {

// Qt 6 loads no driver without an application object, which takes time to start.
void startApplication()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    static char name[] = "sorrel";
    static char *arguments[] = {name, nullptr};
    static int count = 1;
    static const QCoreApplication application(count, arguments);
#endif
}

} // namespace

bool openIndex(const QString &argument, bool isReadOnly, SorrelKit::IndexFile *file)
{
    startApplication();
    QString name = SorrelKit::Shelf::defaultFileName();
    if (!argument.isEmpty()) {
        const FileName given(argument);
        name = given.forQt();
        if (name.isEmpty()) {
            Console::complain(given.text(), FileName::notForQtText());
            return false;
        }
    }
    const bool isOpen = file->open(name, isReadOnly);
    if (file->error())
        Console::complain(QStringLiteral("index"), file->error().text());
    return isOpen;
}
