// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/block/SignedContent.h"

#include "trust/block/MerkleTree.h"

#include <QtEndian>

#include <cstring>

namespace SorrelKit {

SignedContent::SignedContent(ByteSource &source, const SigningBlock &block)
    : ByteSource(0), m_source(&source), m_blockAt(block.blockAt()), m_directoryAt(block.directoryAt())
{
    constexpr int DirectoryOffsetAt = 16;
    m_end = source.read(block.endAt(), source.size() - block.endAt());
    if (m_end.size() >= DirectoryOffsetAt + int(sizeof(quint32)))
        qToLittleEndian(quint32(m_blockAt), m_end.data() + DirectoryOffsetAt);
    const qint64 directorySize = block.endAt() - m_directoryAt;
    m_sections[0] = {0, m_blockAt};
    m_sections[1] = {m_blockAt, directorySize};
    m_sections[2] = {m_blockAt + directorySize, m_end.size()};
    setSize(m_blockAt + directorySize + m_end.size());
}

bool SignedContent::hasWholePages() const
{
    return m_blockAt % MerkleTree::PageSize == 0 && m_directoryAt % MerkleTree::PageSize == 0;
}

SharedBytes SignedContent::view(qint64 at, qint64 count)
{
    count = bytesFrom(at, count);
    if (count <= m_blockAt - at)
        return m_source->view(at, count);
    const Section &directory = m_sections[1];
    if (at >= directory.at && count <= directory.size - (at - directory.at))
        return m_source->view(m_directoryAt + (at - directory.at), count);
    return SharedBytes(read(at, count));
}

qint64 SignedContent::copy(qint64 at, qint64 count, char *data)
{
    qint64 done = 0;
    for (const Section &section : m_sections) {
        const qint64 from = at + done - section.at;
        const qint64 wanted = qMin(count - done, section.size - from);
        if (from < 0 || wanted <= 0)
            continue;
        const bool isDirectory = &section == &m_sections[1];
        const bool isEnd = &section == &m_sections[2];
        const QByteArray bytes = isEnd ? m_end.mid(int(from), int(wanted))
                                       : m_source->read((isDirectory ? m_directoryAt : 0) + from, wanted);
        std::memcpy(data + done, bytes.constData(), size_t(bytes.size()));
        done += bytes.size();
        if (bytes.size() < wanted)
            break;
    }
    return done;
}

} // namespace SorrelKit
