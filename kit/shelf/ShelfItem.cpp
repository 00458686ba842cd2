// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/ShelfItem.h>

#include "shelf/index/LabelPicker.h"
#include "shelf/index/ShelfItemData.h"
#include "shelf/index/ShelfTexts.h"

namespace SorrelKit {

namespace {

constexpr qint64 NanosecondsPerMillisecond = 1000000;

} // namespace

QString ShelfItemData::label(LabelPicker &picker) const
{
    if (const std::optional<QString> best = picker.best(labels))
        return *best;
    if (!entryName.isEmpty())
        return entryName;
    return packageName.isEmpty() ? QString::fromUtf8(path).section(QLatin1Char('/'), -1) : packageName;
}

ShelfItem::ShelfItem() : d(new ShelfItemData) {}
ShelfItem::ShelfItem(ShelfItemData *data) : d(data) {}
ShelfItem::ShelfItem(const ShelfItem &other) = default;
ShelfItem::ShelfItem(ShelfItem &&other) noexcept = default;
ShelfItem &ShelfItem::operator=(const ShelfItem &other) = default;
ShelfItem &ShelfItem::operator=(ShelfItem &&other) noexcept = default;
ShelfItem::~ShelfItem() = default;

qint64 ShelfItem::id() const
{
    return d->id;
}

QString ShelfItem::path() const
{
    return QString::fromUtf8(d->path);
}

QByteArray ShelfItem::nativePath() const
{
    return d->path;
}

ShelfItem::State ShelfItem::state() const
{
    return d->state;
}

int ShelfItem::errorCode() const
{
    return d->errorCode;
}

QString ShelfItem::errorText() const
{
    return d->errorText;
}

QString ShelfItem::packageName() const
{
    return d->packageName;
}

QString ShelfItem::entryName() const
{
    return d->entryName;
}

QMap<QString, QString> ShelfItem::labels() const
{
    return ShelfTexts::toLabels(d->labels);
}

QString ShelfItem::label(const QLocale &locale) const
{
    LabelPicker picker(locale);
    return d->label(picker);
}

QStringList ShelfItem::labelsOf(const QList<ShelfItem> &items, const QLocale &locale)
{
    LabelPicker picker(locale);
    QStringList labels;
    labels.reserve(int(items.size()));
    for (const ShelfItem &item : items)
        labels.append(item.d->label(picker));
    return labels;
}

QString ShelfItem::versionName() const
{
    return d->versionName;
}

qint64 ShelfItem::versionCode() const
{
    return d->versionCode;
}

int ShelfItem::minSdkVersion() const
{
    return d->minSdkVersion;
}

int ShelfItem::targetSdkVersion() const
{
    return d->targetSdkVersion;
}

QStringList ShelfItem::permissions() const
{
    return ShelfTexts::toList(d->permissions);
}

QString ShelfItem::signer() const
{
    return d->signer;
}

qint64 ShelfItem::fileSize() const
{
    return d->fileSize;
}

QDateTime ShelfItem::modified() const
{
    return QDateTime::fromMSecsSinceEpoch(d->modified / NanosecondsPerMillisecond);
}

QByteArray ShelfItem::icon() const
{
    return d->icon;
}

} // namespace SorrelKit
