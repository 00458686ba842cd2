// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef XMLLOADER_H
#define XMLLOADER_H

#include <SorrelExport.h>

#include "ApkResources.h"
#include "document/NamespaceBindings.h"
#include "format/Limits.h"
#include "stream/StringCache.h"
#include "stream/StringPool.h"

#include <QDomDocument>
#include <QDomElement>
#include <QString>
#include <QVector>

class Extractor;

/**
 * Decodes one binary XML document, as Android's build tools compile manifests and other XML resources, into a DOM.
 * The document is a chunk of type 0x0003 with these chunks in it:
 *
 * | type            | meaning         | body, after the 8-byte chunk header and, for nodes, the node header           |
 * |-----------------|-----------------|--------------------------------------------------------------------------------|
 * | 0x0001          | string pool     | see StringPool; every index below is one into it, -1 for none                 |
 * | 0x0180          | resource-id map | u32 each: the id of the Android attribute whose name is the string at that index |
 * | 0x0100, 0x0101  | namespace start, end | i32 prefix, i32 URI                                                      |
 * | 0x0102          | element start   | see below                                                                      |
 * | 0x0103          | element end     | i32 namespace, i32 name                                                        |
 *
 * Others, character data (0x0104) among them, are told on Qt's debug log and skipped: the DOM holds elements and
 * attributes only. The node header, in all chunks from 0x0100 to 0x017f, is a u32 line number and an i32 comment,
 * both not kept. An element's start, with offsets from the end of the node header:
 *
 * | offset | width         | field                                                                              |
 * |--------|---------------|------------------------------------------------------------------------------------|
 * | 0      | i32, i32      | namespace, name                                                                    |
 * | 8      | u16           | attribute start: offset of the first attribute record                              |
 * | 10     | u16           | attribute size: of a record, at least 20                                           |
 * | 12     | u16           | attribute count                                                                    |
 * | 14     | 3 x u16       | indices of the id, class and style attribute; not used                             |
 * | attribute start + n x attribute size | i32, i32, i32 | namespace, name, raw value                           |
 * | + 12   | 8 bytes       | typed value (see ResourceTypes), used when there is no raw value                   |
 *
 * Indices that may be -1 are tested before the pool is asked; those that are always there, of names, prefixes and URIs,
 * are not: the pool refuses a negative one, see StringPool::get().
 *
 * An attribute whose name has a known resource id is in the Android namespace under the name that belongs to the id,
 * whatever name and namespace the record gives: tools that shrink packages empty the names.
 */
class XmlLoader
{
public:
    /// Elements nested deeper are refused: Qt copies, frees and prints a DOM by recursion, on the host's stack.
    static constexpr int MaxElementDepth = Limits::MaxElementDepth;
    /// Attributes of one element; Qt looks through all of them to add one.
    static constexpr int MaxAttributes = 256;
    /// Elements, attributes, and starts and ends of namespaces of one document; in memory each takes many times the
    /// bytes that it has in the file.
    static constexpr int MaxNodes = Limits::MaxNodes;
    /// Characters of a name, of a prefix or of a namespace's URI, which are compared for every node.
    static constexpr int MaxNameLength = 512;
    /// Characters of names and rendered references, which the DOM keeps once for every use.
    static constexpr int MaxNameCharacters = 1 << 22;

    /// A loader for one document.
    SORREL_EXPORT XmlLoader();

    /**
     * Decodes the document that starts at the reader's position; only the first chunk is read. @p resources renders
     * references. A fault is left on @p reader, and told on Qt's debug log; document() then holds what came before
     * it. Besides those of the reader and the pool: "closing tag does not match opening tag", "bad attr size in XML
     * element", and for the ceilings above "elements nested too deeply", "too many attributes in XML element", "too
     * many nodes in XML document", "too long name in XML document" and "too long names in XML document".
     */
    SORREL_EXPORT void load(Extractor *reader, const ApkResources &resources);

    /// The document decoded last. QDomDocument copies share their tree.
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
    QVector<QString> m_androidNames; ///< qualified, by attribute, while the bindings stay as they are
    QDomDocument m_document;
    QVector<QDomElement> m_openElements; ///< the innermost last
    int m_nodes = 0;                     ///< elements, attributes and namespaces so far
    int m_nameCharacters = 0;            ///< characters of names and rendered references so far
};

#endif
