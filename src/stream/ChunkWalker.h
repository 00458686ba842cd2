// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CHUNKWALKER_H
#define CHUNKWALKER_H

#include "format/ResourceTypes.h"

class Extractor;

/**
 * Walks one chunk (see ChunkView) and the chunks nested in it, in the order of the file. While a chunk is current, its
 * end is the reader's boundary, and the next step skips the bytes that the caller left unread:
 * @code
 * ChunkWalker chunk(reader);
 * while (chunk.next()) {
 *     switch (chunk.type()) {
 *     case ChunkType::Xml: chunk.enter(); break;   // its children come next
 *     case ChunkType::StringPool: pool.load(reader, chunk.headerSize()); break;
 *     }
 * }
 * @endcode
 * The nesting is kept in the reader's boundaries, so chunks nested without end take no stack. When the reader has
 * failed, the walker closes the open chunks and ends.
 */
class ChunkWalker
{
public:
    explicit ChunkWalker(Extractor *reader);
    ~ChunkWalker();

    /**
     * Finishes the current chunk and goes to the next: after enter() its first child, else its sibling or the sibling
     * of its container. False when the outermost chunk has ended or its header could not be read.
     */
    bool next();
    /// Makes the current chunk a container: next() goes to the chunk at the reader's position in it.
    void enter();

    ChunkType type() const { return m_type; }
    /// Header size of the current chunk, sign-extended from 16 bits.
    int headerSize() const { return m_headerSize; }

private:
    Q_DISABLE_COPY(ChunkWalker)

    void closeCurrent();
    void closeContainers();
    bool open();

    Extractor *m_reader;
    ChunkType m_type = ChunkType::Untyped;
    int m_headerSize = 0;
    int m_containers = 0;
    bool m_started = false;
    bool m_current = false;
};

#endif
