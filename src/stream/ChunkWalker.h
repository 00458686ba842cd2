// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CHUNKWALKER_H
#define CHUNKWALKER_H

#include "format/ResourceTypes.h"

class Extractor;

/**
 * Walks one chunk, and the chunks nested in it, in the order of the file. Everything in both of Android's compiled
 * formats is a chunk; each starts with this header:
 *
 * | offset | width | field                                                  |
 * |--------|-------|--------------------------------------------------------|
 * | 0      | u16   | type, one of ResourceTypes::ChunkType                  |
 * | 2      | u16   | size of the chunk's header, these 8 bytes included     |
 * | 4      | u32   | size of the whole chunk, header included               |
 *
 * While a chunk is current, the reader's boundary is its end, and what the caller leaves unread of it is skipped when
 * the walk goes on:
 * @code
 * ChunkWalker chunk(reader);
 * while (chunk.next()) {
 *     switch (chunk.type()) {
 *     case XmlDocumentChunk: chunk.enter(); break;   // its children come next
 *     case StringPoolChunk: pool.load(reader, chunk.headerSize()); break;
 *     }
 * }
 * @endcode
 * The nesting is kept in the reader's own boundaries, so that chunks nested without end cost no stack of the host's.
 * When the reader has failed, the chunks that are open are closed and the walk ends.
 */
class ChunkWalker
{
public:
    explicit ChunkWalker(Extractor *reader);
    ~ChunkWalker();

    /**
     * Finishes the current chunk and goes to the next: its first child after enter(), else its sibling, or that of
     * the container that ends here. False when the outermost chunk has ended, or its header could not be read.
     */
    bool next();
    /// Makes the current chunk a container: next() goes to what stands at the reader's position within it.
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
