// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Floor.h"

#include "ZippedPackage.h"

#include <quazip/quazip.h>
#include <quazip/quazipfile.h>

#include <chrono>

namespace bench {

namespace {

/// Adds the time since the last call, or since construction.
class StopWatch
{
public:
    void addTo(double &seconds)
    {
        const auto now = Clock::now();
        seconds += std::chrono::duration<double>(now - m_last).count();
        m_last = now;
    }

private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point m_last = Clock::now();
};

bool readToEnd(QuaZip &archive)
{
    constexpr qint64 PieceSize = 64 << 10;
    static char buffer[PieceSize];
    QuaZipFile file(&archive);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    qint64 size = 0;
    qint64 piece = 0;
    while ((piece = file.read(buffer, PieceSize)) > 0)
        size += piece;
    return piece == 0 && size == file.usize();
}

} // namespace

bool readFloor(const QString &fileName, FloorTimes &times)
{
    StopWatch watch;
    QuaZip archive(fileName);
    if (!archive.open(QuaZip::mdUnzip) || !archive.setCurrentFile(tableName, QuaZip::csDefault))
        return false;
    watch.addTo(times.directory);
    if (!readToEnd(archive))
        return false;
    watch.addTo(times.table);
    if (!archive.setCurrentFile(manifestName, QuaZip::csDefault))
        return false;
    watch.addTo(times.directory);
    if (!readToEnd(archive))
        return false;
    watch.addTo(times.manifest);
    return true;
}

} // namespace bench
