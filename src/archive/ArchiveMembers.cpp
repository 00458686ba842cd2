// SPDX-License-Identifier: LGPL-2.1-or-later
#include "archive/ArchiveMembers.h"

#include <quazip/quazip.h>
#include <quazip/quazipfile.h>
#include <quazip/unzip.h>

namespace {

constexpr int Stored = 0;

// Up to a buffer of 16 KiB more than the decoder used: they were read in any case.
qint64 position(QuaZip *archive)
{
    return qint64(unzGetCurrentFileZStreamPos64(archive->getUnzFile()));
}

} // namespace

void ArchiveMembers::visitNames(QuaZip *archive, const std::function<bool(const QString &)> &visit)
{
    for (bool more = archive->goToFirstFile(); more; more = archive->goToNextFile()) {
        const QString name = archive->getCurrentFileName();
        if (name.isEmpty() || !visit(name))
            break;
    }
}

QByteArray ArchiveMembers::content(QuaZip *archive, qint64 maxBytes, Allowance *cost, qint64 expectedBytes)
{
    constexpr qint64 PieceSize = 64 << 10;
    QuaZipFile file(archive);
    int method = Stored;
    int level = 0;
    if (cost->left() == 0 || !file.open(QIODevice::ReadOnly, &method, &level, false))
        return {};
    const qint64 costPerByte = method == Stored ? 1 : PackedByteCost;
    // No more is taken from the archive than the directory says, and than there is.
    if (qBound(qint64(0), file.csize(), archive->getIoDevice()->size()) > cost->left() / costPerByte)
        return {};
    const qint64 start = position(archive);
    const qint64 most = qMin(maxBytes, cost->left());
    QByteArray bytes;
    bytes.reserve(int(expectedBytes));
    while (bytes.size() <= most) {
        // One byte more than may be shows that there is one.
        const QByteArray piece = file.read(qMin(PieceSize, most + 1 - bytes.size()));
        if (piece.isEmpty())
            break;
        // Where the room does not do, Qt 6 appends to a copy, and has both for a while; this moves the bytes.
        const qint64 needed = bytes.size() + piece.size();
        if (bytes.capacity() < needed)
            bytes.reserve(int(qMin(2 * needed, most + 1)));
        bytes += piece;
    }
    cost->spend(qMax(qint64(bytes.size()), costPerByte * (position(archive) - start)));
    return bytes.size() > most ? QByteArray() : bytes;
}
