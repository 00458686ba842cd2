// SPDX-License-Identifier: LGPL-2.1-or-later
#include "platform/PlatformData.h"

#include "format/XmlReader.h"
#include "limits/Limits.h"

#include <algorithm>

namespace SorrelKit {

PlatformData::PlatformData(const QString &fileName) : m_fileName(fileName), m_archive(fileName) {}

const ResourceTables &PlatformData::tables()
{
    std::call_once(m_tableIsRead, [this] { readTable(); });
    return m_tables;
}

Error PlatformData::error()
{
    tables();
    return m_error;
}

const XmlElement &PlatformData::manifest()
{
    std::call_once(m_manifestIsRead, [this] { readManifest(); });
    return m_manifest;
}

void PlatformData::readTable()
{
    if (isNone())
        return;
    const std::lock_guard<std::mutex> lock(m_reading);
    if (!m_archive.open()) {
        m_error = Error(Error::Code::CannotOpen);
        return;
    }
    const SharedBytes bytes = m_archive.content(QStringLiteral("resources.arsc"), Limits::MaxTableBytes);
    const auto table = QSharedPointer<const ResourceTable>::create(bytes.view(), bytes.owner());
    const QVector<ResourceTable::Package> &packages = table->packages();
    const bool isPlatform = std::any_of(packages.cbegin(), packages.cend(), [](const ResourceTable::Package &package) {
        return package.id == ResourceId::PlatformPackage;
    });
    if (table->fault() != FormatFault::None)
        m_error = Error(Error::Code::BadTable, formatFaultText(table->fault()));
    else if (!isPlatform)
        m_error = Error(Error::Code::BadTable, QStringLiteral("no package has the id 0x01"));
    if (isPlatform)
        m_tables.append(table);
}

void PlatformData::readManifest()
{
    if (isNone())
        return;
    QByteArray bytes;
    {
        const std::lock_guard<std::mutex> lock(m_reading);
        if (m_archive.open())
            bytes = m_archive.file(QStringLiteral("AndroidManifest.xml"), Limits::MaxManifestBytes);
    }
    const XmlReader reader(bytes);
    if (reader.fault() == FormatFault::None && reader.root().name == QLatin1String("manifest"))
        m_manifest = reader.root();
}

QByteArray PlatformData::file(const QString &path, qint64 maxBytes, Budget *budget)
{
    const std::lock_guard<std::mutex> lock(m_reading);
    return m_archive.open() ? m_archive.file(path, maxBytes, budget) : QByteArray();
}

} // namespace SorrelKit
