// SPDX-License-Identifier: LGPL-2.1-or-later
// bench_memory: prints the heap use of loading as a line of JSON, one case for each process:
//
//     bench_memory table VALUES CONFIGURATIONS dense|empty    a generated table
//     bench_memory manifest ACTIVITIES                        a generated manifest
//     bench_memory package FILE                               resources() and getManifest() of a package; the table
//                                                             outlives the ApkFile
//
// "peak" and "held" are bytes above those in use when loading began: the most while loading, and those in use
// afterwards. "rss_before" and "rss_peak" are the resident memory of the process in bytes, as the kernel reports it.

#include "ApkFile.h"
#include "Failure.h"
#include "Floor.h"
#include "GeneratedManifest.h"
#include "GeneratedTable.h"
#include "HeapCounter.h"
#include "Loading.h"
#include "ZippedPackage.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <cstdio>
#include <malloc.h>

namespace {

// The value of a line such as "VmHWM:     1234 kB".
qint64 statusBytes(const QByteArray &key)
{
    QFile file(QStringLiteral("/proc/self/status"));
    file.open(QIODevice::ReadOnly);
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith(key))
            return line.mid(key.size()).simplified().split(' ').value(0).toLongLong() << 10;
    }
    return 0;
}

// Resets the kernel's peak to the memory that is resident now.
void forgetResidentPeak()
{
    malloc_trim(0);
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    if (file.open(QIODevice::WriteOnly))
        file.write("5");
}

/// Counts from construction on.
class Measurement
{
public:
    Measurement()
    {
        forgetResidentPeak();
        m_residentBefore = statusBytes("VmRSS:");
        HeapCounter::forgetPeak();
        m_before = HeapCounter::used();
    }

    /// The peak so far, and the bytes in use now as held.
    QJsonObject result() const
    {
        // Read before the result is formatted, which allocates.
        const std::size_t peak = HeapCounter::peak();
        const std::size_t used = HeapCounter::used();
        return {{QStringLiteral("before"), qint64(m_before)},
                {QStringLiteral("peak"), qint64(peak - m_before)},
                {QStringLiteral("held"), qint64(used) - qint64(m_before)},
                {QStringLiteral("rss_before"), m_residentBefore},
                {QStringLiteral("rss_peak"), statusBytes("VmHWM:")}};
    }

private:
    std::size_t m_before = 0;
    qint64 m_residentBefore = 0;
};

// Runs the setup of the process before anything is counted.
ApkResources warmUp()
{
    const ApkResources table = bench::loadedTable(bench::generatedTable({1000, 1, false}));
    bench::loadedDocument(bench::generatedManifest(1), table);
    return table;
}

QJsonObject tableResult(const bench::TableShape &shape)
{
    const QByteArray bytes = bench::generatedTable(shape);
    const Measurement measurement;
    const ApkResources table = bench::loadedTable(bytes);
    QJsonObject result = measurement.result();
    if (!table.isValid())
        bench::fail(QStringLiteral("the generated table was not loaded"));
    result.insert(QStringLiteral("table_bytes"), bytes.size());
    result.insert(QStringLiteral("values"), shape.values);
    return result;
}

QJsonObject manifestResult(int activities, const ApkResources &table)
{
    const QByteArray bytes = bench::generatedManifest(activities);
    const Measurement measurement;
    const QDomDocument document = bench::loadedDocument(bytes, table);
    QJsonObject result = measurement.result();
    if (document.isNull())
        bench::fail(QStringLiteral("the generated manifest was not loaded"));
    result.insert(QStringLiteral("manifest_bytes"), bytes.size());
    result.insert(QStringLiteral("activities"), activities);
    return result;
}

// Returns the table, which outlives the ApkFile.
ApkResources loadPackage(const QString &fileName)
{
    ApkFile apk(fileName);
    const ApkResources table = apk.resources();
    apk.getManifest();
    if (apk.getError() != 0)
        bench::fail(QStringLiteral("%1: %2").arg(fileName, apk.getErrorString()));
    return table;
}

QJsonObject packageResult(const QString &fileName)
{
    const qint64 tableBytes = bench::member(fileName, bench::tableName).size();
    const qint64 manifestBytes = bench::member(fileName, bench::manifestName).size();
    const Measurement floor;
    bench::FloorTimes times;
    if (!bench::readFloor(fileName, times))
        bench::fail(QStringLiteral("%1 was not read").arg(fileName));
    const QJsonValue floorPeak = floor.result().value(QStringLiteral("peak"));
    const Measurement measurement;
    const ApkResources table = loadPackage(fileName);
    QJsonObject result = measurement.result();
    result.insert(QStringLiteral("floor_peak"), floorPeak);
    result.insert(QStringLiteral("table_bytes"), tableBytes);
    result.insert(QStringLiteral("manifest_bytes"), manifestBytes);
    return result;
}

QJsonObject measured(const QStringList &arguments)
{
    const ApkResources small = warmUp();
    const QString kind = arguments.value(0);
    if (kind == QLatin1String("table") && arguments.size() == 4) {
        return tableResult(
            {arguments.at(1).toInt(), arguments.at(2).toInt(), arguments.at(3) == QLatin1String("empty")});
    }
    if (kind == QLatin1String("manifest") && arguments.size() == 2)
        return manifestResult(arguments.at(1).toInt(), small);
    if (kind == QLatin1String("package") && arguments.size() == 2)
        return packageResult(arguments.at(1));
    return {};
}

} // namespace

int main(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    QJsonObject result = measured(arguments);
    if (result.isEmpty()) {
        std::fputs("usage: bench_memory table VALUES CONFIGURATIONS dense|empty | manifest ACTIVITIES | package FILE\n",
                   stderr);
        return 2;
    }
    arguments.last() = arguments.constLast().section(QLatin1Char('/'), -1);
    result.insert(QStringLiteral("name"), arguments.join(QLatin1Char('/')));
    std::puts(QJsonDocument(result).toJson(QJsonDocument::Compact).constData());
    return 0;
}
