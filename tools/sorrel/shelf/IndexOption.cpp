// SPDX-License-Identifier: LGPL-2.1-or-later
#include "IndexOption.h"

#include "Console.h"

#include <SorrelKit/Shelf.h>

bool IndexOption::open(const QCommandLineParser &parser, bool isReadOnly, SorrelKit::IndexFile *file) const
{
    QString name = SorrelKit::Shelf::defaultFileName();
    if (isSet(parser)) {
        const FileName given(parser.value(m_index));
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
