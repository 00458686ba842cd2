// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef XMLDECODER_H
#define XMLDECODER_H

#include "document/NamespaceBindings.h"
#include "limits/Limits.h"
#include "stream/StringCache.h"
#include "stream/StringPool.h"

#include <QString>
#include <QVector>

class ApkResourcesData;
class Extractor;
class XmlSink;

/**
 * Decodes one binary XML document (see XmlReader and XmlStartChunk for the format) and passes its nodes to a sink. Line
 * numbers, comments and the indices of the id, class and style attribute are not kept. Chunks of other types, character
 * data (0x0104) among them, are diagnostics and skipped: the sink gets only elements and attributes. An attribute's
 * typed value is used when it has no raw value.
 *
 * Indices that may be -1 are tested before the pool is asked. Indices of names, prefixes and URIs are not: the pool
 * refuses a negative one (see StringPool::get()).
 *
 * An attribute whose name has a known resource id is in the Android namespace under the name of the id, whatever name
 * and namespace the record gives: tools that shrink packages empty the names.
 */
class XmlDecoder
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
    /// Characters of names and rendered references at most; a DOM keeps a copy for every use.
    static constexpr int MaxNameCharacters = 1 << 22;

    /// A decoder for one document. @p sink outlives it.
    explicit XmlDecoder(XmlSink *sink);

    /**
     * Decodes the document at the reader's position; only the first chunk is read. @p resources renders references, and
     * outlives the decoder. A fault is left on @p reader, and the sink has the content before it. Besides the faults of
     * the reader and the pool: "closing tag does not match opening tag", "bad attr size in XML element", and for the
     * ceilings above "elements nested too deeply", "too many attributes in XML element", "too many nodes in XML
     * document", "too long name in XML document" and "too long names in XML document".
     */
    void decode(Extractor *reader, const ApkResourcesData &resources);

    /// The steps of decode(): one chunk with all that is nested in it, and the bodies of three kinds of chunk.
    void parseChunk();
    void parseNamespaceChunk(bool start);
    void parseStartElementChunk();
    void parseEndElementChunk();

    /// Name of the well-known Android attribute with the resource id @p id ("label"), or null for any other id.
    static const char *androidAttributeName(int id);

private:
    Q_DISABLE_COPY(XmlDecoder)

    void skipNodeHeader();
    void parseResourceIdMap(int headerSize);
    QString startElement(int namespaceIndex, const QString &name);
    void parseAttribute();
    quint32 resourceIdOf(int nameIndex) const;
    QString qualifiedName(const QString &uri, const QString &name);
    QString qualifiedAndroidName(int attribute);
    QString referenceText(int id);
    QString nameAt(int index);
    bool isWithinCeilings(int attributeCount);
    bool countNodes(int count);
    void countCharacters(int count);

    XmlSink *m_sink;
    StringPool m_pool;
    StringCache m_strings; ///< of the pool
    Extractor *m_reader = nullptr;
    const ApkResourcesData *m_resources = nullptr;
    QVector<unsigned int> m_resourceIds;
    NamespaceBindings m_namespaces;
    QVector<QString> m_androidNames; ///< qualified, by attribute; cleared when the bindings change
    QVector<QString> m_openElements; ///< their tag names, the innermost last
    int m_nodes = 0;                 ///< elements, attributes and namespaces so far
    int m_nameCharacters = 0;        ///< characters of names and rendered references so far
};

#endif
