// SPDX-License-Identifier: LGPL-2.1-or-later
#include "stream/ChunkWalker.h"

#include "format/ChunkView.h"
#include "stream/Extractor.h"

ChunkWalker::ChunkWalker(Extractor *reader) : m_reader(reader) {}

ChunkWalker::~ChunkWalker()
{
    closeCurrent();
    closeContainers();
}

bool ChunkWalker::next()
{
    closeCurrent();
    while (m_containers > 0 && (m_reader->remaining() < 1 || m_reader->failed())) {
        m_reader->popBoundary();
        --m_containers;
    }
    if (m_started && m_containers == 0)
        return false;
    m_started = true;
    return open();
}

void ChunkWalker::enter()
{
    Q_ASSERT(m_current);
    m_current = false;
    ++m_containers;
}

void ChunkWalker::closeCurrent()
{
    if (m_current)
        m_reader->popBoundary();
    m_current = false;
}

void ChunkWalker::closeContainers()
{
    for (; m_containers > 0; --m_containers)
        m_reader->popBoundary();
}

bool ChunkWalker::open()
{
    m_type = ChunkType(m_reader->get16());
    m_headerSize = m_reader->get16();
    m_reader->pushBoundary64(qint64(m_reader->get32()) - ChunkView::HeaderSize);
    m_current = !m_reader->failed();
    // The boundary of a chunk that could not be opened stays on the stack. The innermost container closes it in place
    // of its own, and so on, so that the outermost boundary remains.
    if (!m_current)
        closeContainers();
    return m_current;
}
