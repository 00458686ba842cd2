// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SIGNEDCONTENT_H
#define SORRELKIT_SIGNEDCONTENT_H

#include "archive/ByteSource.h"
#include "trust/block/SigningBlock.h"

#include <QByteArray>

#include <array>

namespace SorrelKit {

/**
 * The bytes of a package that v2 and later schemes sign: the file without the signing block. The end record's offset of
 * the directory is that of the block, as it was before the block was written.
 *
 * Views of the members and the directory are those of the file. The end record is held in memory. One thread at a time.
 */
class SignedContent : public ByteSource
{
public:
    /// Where a section begins in this content, and its bytes.
    struct Section {
        qint64 at = 0;
        qint64 size = 0;
    };

    /// The content of the package in @p source, which outlives this object. Precondition: @p block is good.
    SignedContent(ByteSource &source, const SigningBlock &block);

    /// Whether the block begins and ends at a page of 4096 bytes. Android refuses digests of Merkle trees otherwise.
    bool hasWholePages() const;
    /// The members, the directory, and the end record.
    const std::array<Section, 3> &sections() const { return m_sections; }
    SharedBytes view(qint64 at, qint64 count) override;

private:
    qint64 copy(qint64 at, qint64 count, char *data) override;

    ByteSource *m_source;
    qint64 m_blockAt;
    qint64 m_directoryAt; ///< in the file
    QByteArray m_end;
    std::array<Section, 3> m_sections;
};

} // namespace SorrelKit

#endif
