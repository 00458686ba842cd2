// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DOCUMENTREWRITER_H
#define SORRELKIT_DOCUMENTREWRITER_H

#include "format/XmlNodes.h"

#include <QByteArray>
#include <QVector>

namespace SorrelKit {

/**
 * Rewrites a binary XML document that Android takes (see XmlNodes) so that libsorrel reads all of it: one chunk of the
 * type Xml with the string pool, the map of resource ids, and the nodes up to the end of the root. Attributes have the
 * usual size, every element and namespace has an end, and unknown chunks are missing. So are attributes whose names are
 * not in the pool, which libsorrel refuses. Lines and comments become 0 and none. When only the type of the document is
 * odd, nothing else changes.
 *
 * Meets raw input. Needs the memory of the document and of the result, which has at most XmlReader::MaxNodes attributes,
 * and time in proportion to both.
 */
class DocumentRewriter
{
public:
    /// The rewritten document; @p document itself when nothing is odd about it but its namespaces, which libsorrel takes
    /// as they are, and when Android refuses it.
    static QByteArray rewritten(const QByteArray &document);

private:
    explicit DocumentRewriter(const QByteArray &document) : m_nodes(ByteView(document)) {}

    QByteArray write();
    void writeStart(const ByteView &body);
    /// The string @p index, or none when it is not in the pool.
    quint32 known(quint32 index) const;
    void writeNode(ChunkType type, const ByteView &body, int size);
    void writeChunk(ChunkType type, const ByteView &body);
    /// Writes the ends of the last nodes in @p open until @p count are left.
    void close(QVector<ByteView> *open, int count, ChunkType type);

    XmlNodes m_nodes;
    QByteArray m_output;
};

} // namespace SorrelKit

#endif
