// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ListTopics.h"

#include "Protocol.h"

#include "archive/ZipArchive.h"

using SorrelKit::ResourceItem;
using SorrelKit::ResourceValue;

namespace {

/// For the directories of the packages in a set, and for those that are compressed in it.
constexpr qint64 MaxSetWork = 64 << 20;
constexpr qint64 MaxSetBytes = 256 << 20;

void addMembers(const QString &prefix, const ZipDirectory &directory, const QSet<int> &replaced,
                Viewer::ItemList *items)
{
    for (int number = 0; number < directory.count(); ++number) {
        if (replaced.contains(number))
            continue;
        if (items->isFull()) {
            items->skip(directory.count() - number);
            return;
        }
        const ZipDirectory::Member member = directory.member(number);
        items->add({
            {QStringLiteral("name"), Viewer::cutText(prefix + ZipDirectory::nameText(member.name))},
            {QStringLiteral("size"), member.size},
            {QStringLiteral("packed"), member.packedSize},
            {QStringLiteral("crc"), qint64(member.crc)},
        });
    }
}

// "com.example:string/ok" has the type "string".
QString typeOf(const QString &name)
{
    const auto start = name.indexOf(QLatin1Char(':')) + 1;
    const auto end = name.indexOf(QLatin1Char('/'), start);
    return end < 0 ? QString() : name.mid(start, end - start);
}

QString valueOf(const ResourceValue &value)
{
    QString text = Viewer::cutText(value.text(), Viewer::Protocol::MaxValueLength);
    for (const ResourceItem &item : value.items()) {
        if (text.size() > Viewer::Protocol::MaxValueLength)
            break;
        text += (text.isEmpty() ? QString() : QStringLiteral(", ")) + item.text();
    }
    return Viewer::cutText(text, Viewer::Protocol::MaxValueLength);
}

bool isDrawableType(const QString &type)
{
    return type == QLatin1String("drawable") || type == QLatin1String("mipmap");
}

} // namespace

QJsonObject Viewer::contentsTopic(const Subject &subject)
{
    ItemList items(Protocol::MaxItems);
    const std::unique_ptr<ZipArchive> archive = ZipArchive::atNativePath(subject.file.path());
    if (!archive->open())
        return {{QStringLiteral("error"), QStringLiteral("the file is no archive")}};
    Budget budget(MaxSetWork, MaxSetBytes);
    QSet<int> replaced;
    for (const QString &path : subject.packagePaths()) {
        const std::unique_ptr<ZipArchive> inner = archive->archive(path, &budget);
        if (inner == nullptr || !inner->open(&budget))
            continue;
        replaced.insert(archive->directory().find(ByteView(path.toUtf8())));
        addMembers(path + QLatin1Char('/'), inner->directory(), {}, &items);
    }
    addMembers(QString(), archive->directory(), replaced, &items);
    return items.toJson();
}

QJsonObject Viewer::ResourceTopic::toJson() const
{
    ItemList items(Protocol::MaxItems);
    const QList<quint32> ids = m_resources.ids();
    for (const quint32 id : ids) {
        if (items.isFull()) {
            items.skip(1);
            continue;
        }
        const QString name = m_resources.name(id);
        const QString type = typeOf(name);
        items.add({
            {QStringLiteral("name"), cutText(name)},
            {QStringLiteral("type"), cutText(type)},
            {QStringLiteral("value"), valueOf(m_resources.defaultValue(id))},
            {QStringLiteral("isDrawable"), isDrawableType(type)},
        });
    }
    return items.toJson();
}

quint32 Viewer::ResourceTopic::find(const QString &name)
{
    if (!m_hasIds) {
        // Several resources may have one name; the lowest id is taken.
        const QList<quint32> ids = m_resources.ids();
        for (auto id = ids.crbegin(); id != ids.crend(); ++id) {
            const QString known = cutText(m_resources.name(*id));
            if (isDrawableType(typeOf(known)))
                m_ids.insert(known, *id);
        }
        m_hasIds = true;
    }
    return m_ids.value(name);
}
