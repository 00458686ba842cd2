// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ZippedPackage.h"

#include "Failure.h"

#include <quazip/quazip.h>
#include <quazip/quazipfile.h>
#include <zlib.h>

namespace bench {

const QString tableName = QStringLiteral("resources.arsc");
const QString manifestName = QStringLiteral("AndroidManifest.xml");

namespace {

void writeMember(QuaZip &archive, const QString &name, const QByteArray &content, int method)
{
    QuaZipFile file(&archive);
    if (!file.open(QIODevice::WriteOnly, QuaZipNewInfo(name), nullptr, 0, method)
        || file.write(content) != content.size())
        fail(QStringLiteral("could not write %1 into %2").arg(name, archive.getZipName()));
}

void openForReading(QuaZip &archive)
{
    if (!archive.open(QuaZip::mdUnzip))
        fail(QStringLiteral("could not open %1").arg(archive.getZipName()));
}

} // namespace

void writePackage(const QString &fileName, const QByteArray &table, const QByteArray &manifest,
                  const QVector<OtherMember> &others)
{
    constexpr int Stored = 0;
    QuaZip archive(fileName);
    if (!archive.open(QuaZip::mdCreate))
        fail(QStringLiteral("could not write %1").arg(fileName));
    writeMember(archive, manifestName, manifest, Z_DEFLATED);
    writeMember(archive, tableName, table, Stored);
    for (const OtherMember &other : others)
        writeMember(archive, other.name, other.content, Stored);
    archive.close();
}

QByteArray member(const QString &fileName, const QString &name)
{
    QuaZip archive(fileName);
    openForReading(archive);
    QuaZipFile file(&archive);
    if (!archive.setCurrentFile(name, QuaZip::csDefault) || !file.open(QIODevice::ReadOnly))
        fail(QStringLiteral("no %1 in %2").arg(name, fileName));
    const QByteArray content = file.readAll();
    if (content.size() != file.usize())
        fail(QStringLiteral("could not read %1 in %2").arg(name, fileName));
    return content;
}

int memberCount(const QString &fileName)
{
    QuaZip archive(fileName);
    openForReading(archive);
    return archive.getEntriesCount();
}

} // namespace bench
