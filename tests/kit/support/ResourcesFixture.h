// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef RESOURCESFIXTURE_H
#define RESOURCESFIXTURE_H

#include "Apk.h"
#include "Bytes.h"

#include <SorrelKit/Resources.h>

#include <QStringList>

#include <initializer_list>

namespace fixture {

inline QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

/// A list of texts in UTF-8.
inline QStringList names(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *text : texts)
        list.append(QString::fromUtf8(text));
    return list;
}

/// The resources of a package, and its device.
struct ResourcesFixture {
    explicit ResourcesFixture(const QByteArray &table) : device(table, smallManifest()) {}

    PackageDevice device;
    SorrelKit::Package package{&device};
    SorrelKit::Resources resources{package};
};

/// An item of a map.
inline QByteArray mapItem(qint64 name, int type, qint64 data)
{
    return Bytes().u32(name).u16(8).u8(0).u8(type).u32(data).data();
}

/// A map entry of @p items.
inline QByteArray mapOf(const QVector<QByteArray> &items, qint64 parent = 0, int key = 0)
{
    Bytes bytes;
    bytes.u16(16).u16(1).u32(key).u32(parent).u32(items.size());
    for (const QByteArray &item : items)
        bytes.raw(item);
    return bytes.data();
}

/// Everything about @p resources in lines: the id and name of each resource, and all members of each value and item.
inline QStringList answers(const SorrelKit::Resources &resources)
{
    const QLatin1Char bar('|');
    QStringList lines;
    for (const quint32 id : resources.ids()) {
        lines.append(QString::number(id, 16) + QLatin1Char(' ') + resources.name(id));
        for (const SorrelKit::ResourceValue &value : resources.values(id)) {
            lines.append(value.configuration() + bar + value.typeName() + bar + value.text());
            for (const SorrelKit::ResourceItem &item : value.items())
                lines.append(item.name() + bar + item.typeName() + bar + item.text());
        }
    }
    return lines;
}

} // namespace fixture

#endif
