// SPDX-License-Identifier: LGPL-2.1-or-later
#include "OpenIndex.h"

#include "Console.h"
#include "FileName.h"

#include <SorrelKit/Shelf.h>

bool openIndex(const QString &argument, bool isReadOnly, SorrelKit::IndexFile *file)
{
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
