// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef XMLLOADER_H
#define XMLLOADER_H

#include <SorrelExport.h>

#include "ApkResources.h"
#include "document/XmlDecoder.h"
#include "document/XmlSink.h"

#include <QDomDocument>
#include <QDomElement>
#include <QString>
#include <QVector>

class Extractor;

/// Loads one binary XML document into a DOM, with the nodes of an XmlDecoder. The DOM has only elements and attributes.
class XmlLoader : private XmlSink
{
public:
    /// A loader for one document.
    SORREL_EXPORT XmlLoader();

    /**
     * Loads the document at the reader's position; only the first chunk is read. @p resources renders references. A
     * fault is left on @p reader (XmlDecoder::decode() lists them), and printed on Qt's debug log; document() then has
     * the content before it.
     */
    SORREL_EXPORT void load(Extractor *reader, const ApkResources &resources);

    /// The last document. Copies of a QDomDocument share their tree.
    QDomDocument document() const { return m_document; }

    /// The steps of load(), as in XmlDecoder.
    SORREL_EXPORT void parseChunk();
    SORREL_EXPORT void parseNamespaceChunk(bool start);
    SORREL_EXPORT void parseStartElementChunk();
    SORREL_EXPORT void parseEndElementChunk();

    /// Name of the well-known Android attribute with the resource id @p id ("label"), or null for any other id.
    SORREL_EXPORT static const char *lookupAndroidAttribute(int id);

private:
    Q_DISABLE_COPY(XmlLoader)

    QString startElement(const QString &name) override;
    QString startElement(const QString &uri, const QString &qualifiedName) override;
    void addAttribute(const QString &name, const QString &value) override;
    void addAttribute(const QString &uri, const QString &qualifiedName, const QString &value) override;
    void endAttributes() override;
    void endElement() override;
    void addOddity(Extractor *reader, const Diagnostics::Item &oddity) override;

    XmlDecoder m_decoder;
    ApkResources m_resources; ///< a copy, which the decoder refers to
    QDomDocument m_document;
    QDomElement m_started;               ///< the element that is not in the document yet
    QVector<QDomElement> m_openElements; ///< the innermost last
};

#endif
