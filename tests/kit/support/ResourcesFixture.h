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
