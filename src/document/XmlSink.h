// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef XMLSINK_H
#define XMLSINK_H

#include "stream/Diagnostics.h"

class Extractor;

/**
 * Receives the nodes of a document from an XmlDecoder, in this order for each element: a startElement(), its
 * addAttribute() calls, endAttributes(), the elements in it, endElement(). Elements that the document does not close
 * have no endElement().
 */
class XmlSink
{
public:
    virtual ~XmlSink() = default;

    /**
     * An element outside of namespaces. Returns the tag name that its end must have. An empty string means that @p name
     * is no name: the sink then drops this element with its attributes, and considers all open elements closed.
     */
    virtual QString startElement(const QString &name) = 0;
    /// The same for an element in the namespace @p uri. @p qualifiedName is its prefix, a colon and its name.
    virtual QString startElement(const QString &uri, const QString &qualifiedName) = 0;
    /// An attribute outside of namespaces, of the element that was started last.
    virtual void addAttribute(const QString &name, const QString &value) = 0;
    /// An attribute in the namespace @p uri.
    virtual void addAttribute(const QString &uri, const QString &qualifiedName, const QString &value) = 0;
    /// The element that was started last has all its attributes. It becomes the innermost open element.
    virtual void endAttributes() = 0;
    /// The innermost open element ends.
    virtual void endElement() = 0;

    /// Adds @p oddity to the diagnostics of @p reader. The line on Qt's debug log has its context from the sink.
    virtual void addOddity(Extractor *reader, const Diagnostics::Item &oddity) = 0;
};

#endif
