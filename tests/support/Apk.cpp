// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"

namespace fixture {

QByteArray emptyTable()
{
    return TableBuilder().strings({}).package(PackageBuilder()).build();
}

QByteArray smallManifest(const QString &name)
{
    return XmlBuilder::manifest()
        .empty(QStringLiteral("manifest"), {plainText(QStringLiteral("package"), name)})
        .build();
}

PackageDevice::PackageDevice(const QByteArray &bytes)
{
    setData(bytes);
}

PackageDevice::PackageDevice(const QByteArray &table, const QByteArray &manifest, const QVector<Member> &others)
    : PackageDevice(package(table, manifest, others))
{
}

bool PackageDevice::open(OpenMode mode)
{
    ++m_timesOpened;
    return QBuffer::open(mode);
}

qint64 PackageDevice::readData(char *data, qint64 size)
{
    const qint64 delivered = QBuffer::readData(data, size);
    m_bytesRead += qMax(qint64(0), delivered);
    return delivered;
}

} // namespace fixture
