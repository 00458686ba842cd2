// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DROPPEDNODES_H
#define DROPPEDNODES_H

#include "document/XmlSink.h"
#include "stream/Extractor.h"

/**
 * Drops the nodes of a document, for callers that need only its fault and its diagnostics. Both are the same as with
 * XmlLoader, because the tag names are those that a DOM has.
 */
class DroppedNodes : public XmlSink
{
public:
    QString startElement(const QString &name) override { return name; }
    // The prefix ends at the first colon, although a declared prefix may contain one.
    QString startElement(const QString &, const QString &qualifiedName) override
    {
        return qualifiedName.mid(qualifiedName.indexOf(QLatin1Char(':')) + 1);
    }
    void addAttribute(const QString &, const QString &) override {}
    void addAttribute(const QString &, const QString &, const QString &) override {}
    void endAttributes() override {}
    void endElement() override {}
    void addOddity(Extractor *reader, const Diagnostics::Item &oddity) override
    {
        reader->diagnostics().add(SORREL_LOGGER, oddity);
    }
};

#endif
