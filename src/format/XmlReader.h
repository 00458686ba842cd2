// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef XMLREADER_H
#define XMLREADER_H

#include "format/XmlElement.h"

#include <QByteArray>
#include <QHash>

class ChunkView;
class StringPoolView;

/**
 * Reads a binary XML document: a chunk (0x0003, or 0 as some tools leave it) of a string pool, a map of resource ids, and
 * a chunk for each start (0x0102) and end (0x0103) of an element. Others, namespaces and texts among them, are passed over.
 *
 * Meets raw input. Ends of elements are taken in turn, whatever name they have.
 */
class XmlReader
{
public:
    /// Elements nested in each other at most; libsorrel's limit.
    static constexpr int MaxDepth = 256;
    /// Elements and attributes of a document at most; libsorrel's limit.
    static constexpr int MaxNodes = 100000;
    /// Characters of all names and texts at most. A text may be used by any number of attributes.
    static constexpr qint64 MaxCharacters = 16 << 20;

    /// Whether @p bytes begin as a document does. Files are told apart by this, as their names may be shortened until
    /// nothing is left of them.
    static bool isDocument(const QByteArray &bytes);

    /// Reads the document in @p bytes; @p maxCharacters takes the place of MaxCharacters where it is less.
    explicit XmlReader(const QByteArray &bytes, qint64 maxCharacters = MaxCharacters);

    /// The root; a null element when there is none. Of a damaged document, what stands before the fault.
    const XmlElement &root() const { return m_root; }
    /// What is wrong with the document, in English; empty when nothing is.
    QString fault() const { return m_fault; }
    /// Characters of all names and texts that were read, which is what reading takes beside the bytes.
    qint64 characters() const { return m_characters; }

private:
    void readNodes(const ChunkView &document);
    bool readStart(const ChunkView &chunk, const StringPoolView &strings, const ByteView &ids, XmlElement *element);
    /// Hands the innermost of the elements that are @p open to the one around it.
    void close(QVector<XmlElement> *open);
    /// Sets the texts of @p attribute, which was written as the string @p raw.
    void readText(quint32 raw, const StringPoolView &strings, XmlAttribute *attribute);
    QString string(const StringPoolView &strings, quint32 index);

    const qint64 m_maxCharacters;
    QHash<quint32, QString> m_strings; ///< by index, so that those which are used often share their characters
    XmlElement m_root;
    QString m_fault;
    int m_nodes = 0;
    qint64 m_characters = 0;
};

#endif
