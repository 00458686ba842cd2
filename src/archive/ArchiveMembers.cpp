// SPDX-License-Identifier: LGPL-2.1-or-later
#include "archive/ArchiveMembers.h"

#include <quazip/quazip.h>
#include <quazip/quazipfile.h>
#include <quazip/unzip.h>

namespace {

// Up to 16 KiB beyond the data that the decoder has used: minizip reads a buffer at a time.
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

QByteArray ArchiveMembers::content(QuaZip *archive, qint64 maxBytes, Budget *budget, qint64 expectedBytes)
{
    constexpr qint64 PieceSize = 64 << 10;
    QuaZipFile file(archive);
    int method = Stored;
    int level = 0;
    if (budget->workLeft() == 0 || !file.open(QIODevice::ReadOnly, &method, &level, false))
        return {};
    const qint64 workPerByte = method == Stored ? Budget::ByteWork : Budget::PackedByteWork;
    // Reading takes no more from the archive than the directory says, and no more than the archive has.
    if (qBound(qint64(0), file.csize(), archive->getIoDevice()->size()) > budget->workLeft() / workPerByte)
        return {};
    const qint64 start = position(archive);
    const qint64 most = qMin(maxBytes, budget->workLeft() / Budget::ByteWork);
    QByteArray bytes;
    bytes.reserve(int(expectedBytes));
    while (bytes.size() <= most) {
        // One byte above the limit shows that the member is too long.
        const QByteArray piece = file.read(qMin(PieceSize, most + 1 - bytes.size()));
        if (piece.isEmpty())
            break;
        // Qt 6 appends to a copy when the capacity is too small, and holds both for a while. reserve() moves the bytes.
        const qint64 needed = bytes.size() + piece.size();
        if (bytes.capacity() < needed)
            bytes.reserve(int(qMin(2 * needed, most + 1)));
        bytes += piece;
    }
    budget->chargeWork(qMax(Budget::ByteWork * bytes.size(), workPerByte * (position(archive) - start)));
    return bytes.size() > most ? QByteArray() : bytes;
}
