// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef XMLLOADER_H
#define XMLLOADER_H

#include <SorrelExport.h>

#include "ApkResources.h"
#include "document/NamespaceBindings.h"
#include "limits/Limits.h"
#include "stream/StringCache.h"
#include "stream/StringPool.h"

#include <QDomDocument>
#include <QDomElement>
#include <QString>
#include <QVector>

class Extractor;

/**
 * Decodes one binary XML document (see XmlReader and XmlStartChunk for the format) into a DOM. Line numbers, comments
 * and the indices of the id, class and style attribute are not kept. Chunks of other types, character data (0x0104)
 * among them, are diagnostics and skipped: the DOM has only elements and attributes. An attribute's typed value is used
 * when it has no raw value.
 *
 * Indices that may be -1 are tested before the pool is asked. Indices of names, prefixes and URIs are not: the pool
 * refuses a negative one (see StringPool::get()).
 *
 * An attribute whose name has a known resource id is in the Android namespace under the name of the id, whatever name
 * and namespace the record gives: tools that shrink packages empty the names.
 */
class XmlLoader
{
public:
    /// Elements nested in each other at most: Qt copies, frees and prints a DOM by recursion, on the host's stack.
    static constexpr int MaxElementDepth = Limits::MaxElementDepth;
    /// Attributes of an element at most; Qt searches all of them to add one.
    static constexpr int MaxAttributes = 256;
    /// Elements, attributes, and starts and ends of namespaces at most.
    static constexpr int MaxNodes = Limits::MaxNodes;
    /// Characters of a name, a prefix or a URI at most; they are compared for every node.
    static constexpr int MaxNameLength = 512;
    /// Characters of names and rendered references at most; the DOM keeps a copy for every use.
    static constexpr int MaxNameCharacters = 1 << 22;

    /// A loader for one document.
    SORREL_EXPORT XmlLoader();

    /**
     * Decodes the document at the reader's position; only the first chunk is read. @p resources renders references. A
     * fault is left on @p reader, and printed on Qt's debug log; document() then has the content before it. Besides the
     * faults of the reader and the pool: "closing tag does not match opening tag", "bad attr size in XML element", and
     * for the ceilings above "elements nested too deeply", "too many attributes in XML element", "too many nodes in XML
     * document", "too long name in XML document" and "too long names in XML document".
     */
    SORREL_EXPORT void load(Extractor *reader, const ApkResources &resources);

    /// The last document. Copies of a QDomDocument share their tree.
    QDomDocument document() const { return m_document; }

    /// The steps of load(): one chunk with all that is nested in it, and the bodies of three kinds of chunk.
    SORREL_EXPORT void parseChunk();
    SORREL_EXPORT void parseNamespaceChunk(bool start);
    SORREL_EXPORT void parseStartElementChunk();
    SORREL_EXPORT void parseEndElementChunk();

    /// Name of the well-known Android attribute with the resource id @p id ("label"), or null for any other id.
    SORREL_EXPORT static const char *lookupAndroidAttribute(int id);

private:
    Q_DISABLE_COPY(XmlLoader)

    void skipNodeHeader();
    void parseResourceIdMap(int headerSize);
    QDomElement createElement(int namespaceIndex, const QString &name);
    void parseAttribute(QDomElement &element);
    quint32 resourceIdOf(int nameIndex) const;
    QString qualifiedName(const QString &uri, const QString &name);
    QString qualifiedAndroidName(int attribute);
    QString referenceText(int id);
    QString nameAt(int index);
    bool isWithinCeilings(int attributeCount);
    bool countNodes(int count);
    void countCharacters(int count);

    StringPool m_pool;
    StringCache m_strings; ///< of the pool
    Extractor *m_reader = nullptr;
    ApkResources m_resources;
    QVector<unsigned int> m_resourceIds;
    NamespaceBindings m_namespaces;
    QVector<QString> m_androidNames; ///< qualified, by attribute; cleared when the bindings change
    QDomDocument m_document;
    QVector<QDomElement> m_openElements; ///< the innermost last
    int m_nodes = 0;                     ///< elements, attributes and namespaces so far
    int m_nameCharacters = 0;            ///< characters of names and rendered references so far
};

#endif
