// SPDX-License-Identifier: LGPL-2.1-or-later
#include "resources/ResourceNames.h"

#include <algorithm>

namespace SorrelKit {

namespace {

QString hexadecimal(quint32 id)
{
    return QStringLiteral("0x%1").arg(id, 8, 16, QLatin1Char('0'));
}

bool isNumber(const QString &text)
{
    return !text.isEmpty() && std::all_of(text.cbegin(), text.cend(), [](QChar character) {
        return character >= QLatin1Char('0') && character <= QLatin1Char('9');
    });
}

} // namespace

QString ResourceNames::name(quint32 id) const
{
    const ResourceIndex::Range range = m_index.values(id);
    if (range.isEmpty())
        return m_index.packageNames().contains(ResourceId::PlatformPackage) ? QString() : m_platform.name(id);
    id = m_index.id(range.first);
    const QString type = typeName(id);
    if (type.isEmpty())
        return hexadecimal(id);
    const QString entry = m_index.entryName(range.first);
    return type + QLatin1Char('/') + (entry.isEmpty() ? QString::number(id & 0xffff) : entry);
}

QString ResourceNames::number(quint32 id) const
{
    const QString type = typeName(id >> 24 != 0 ? id : id | quint32(m_index.packageId()) << 24);
    return type.isEmpty() ? QString() : type + QLatin1Char('/') + QString::number(id & 0xffff);
}

// The name of the type with its package, unless that is the application's own.
QString ResourceNames::typeName(quint32 id) const
{
    const auto packageId = quint8(id >> 24);
    QString type = m_index.typeName(packageId, quint8(id >> 16));
    if (type.isEmpty() || packageId == m_index.packageId())
        return type;
    return m_index.packageNames().value(packageId) + QLatin1Char(':') + type;
}

QString ResourceNames::reference(quint32 id, QChar mark) const
{
    const QString name = this->name(id);
    return mark + (name.isEmpty() ? hexadecimal(id) : name);
}

quint32 ResourceNames::find(const QString &reference) const
{
    const QString text = reference.mid(reference.startsWith(QLatin1Char('@')) ? 1 : 0);
    if (text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive)) {
        bool isId = false;
        const quint32 id = text.mid(2).toUInt(&isId, 16);
        return isId ? existing(id) : 0;
    }
    const auto slash = text.indexOf(QLatin1Char('/'));
    const auto colon = text.left(slash).indexOf(QLatin1Char(':'));
    if (slash < 0)
        return 0;
    const QString type = text.mid(colon + 1, slash - colon - 1);
    const QString entry = text.mid(slash + 1);
    const QString package = text.left(colon);
    const QMap<quint8, QString> &packages = m_index.packageNames();
    for (auto candidate = packages.cbegin(); candidate != packages.cend(); ++candidate) {
        if (colon < 0 ? candidate.key() != m_index.packageId() : candidate.value() != package)
            continue;
        const quint32 id = findEntry(candidate.key(), type, entry);
        if (id != 0)
            return id;
    }
    return 0;
}

quint32 ResourceNames::existing(quint32 id) const
{
    const ResourceIndex::Range range = m_index.values(id);
    return range.isEmpty() ? 0 : m_index.id(range.first);
}

quint32 ResourceNames::findEntry(quint8 packageId, const QString &type, const QString &entry) const
{
    constexpr int TypeIds = 256;
    const bool byNumber = isNumber(entry);
    const uint number = byNumber ? entry.toUInt() : 0;
    if (entry.isEmpty() || (byNumber && (number >= uint(TypeChunk::MaxEntries) || entry.size() > 9)))
        return 0;
    for (int typeId = 0; typeId < TypeIds; ++typeId) {
        if (type.isEmpty() || m_index.typeName(packageId, quint8(typeId)) != type)
            continue;
        const quint32 first = quint32(packageId) << 24 | quint32(typeId) << 16;
        const quint32 id = byNumber ? existing(first | number) : findName(packageId, quint8(typeId), entry);
        if (id != 0)
            return id;
    }
    return 0;
}

quint32 ResourceNames::findName(quint8 packageId, quint8 typeId, const QString &name) const
{
    const ResourceIndex::Range range = m_index.valuesOfType(packageId, typeId);
    quint32 last = 0;
    for (int number = range.first; number < range.end; ++number) {
        const quint32 id = m_index.id(number);
        // The first value names the resource.
        if (number != range.first && id == last)
            continue;
        last = id;
        if (m_index.entryName(number) == name)
            return id;
    }
    return 0;
}

} // namespace SorrelKit
