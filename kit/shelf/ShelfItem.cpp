// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/ShelfItem.h>

#include "language/LocaleChooser.h"
#include "shelf/index/ShelfItemData.h"
#include "shelf/index/ShelfTexts.h"

namespace SorrelKit {

namespace {

constexpr qint64 NanosecondsPerMillisecond = 1000000;

} // namespace

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
    LocaleChooser chooser;
    QStringList texts;
    const QMap<QString, QString> all = labels();
    for (auto label = all.cbegin(); label != all.cend(); ++label) {
        if (chooser.add(LanguageTag(label.key())))
            texts.append(label.value());
    }
    const int best = chooser.best(LanguageTag(locale));
    if (best >= 0)
        return texts.at(best);
    if (!d->entryName.isEmpty())
        return d->entryName;
    return d->packageName.isEmpty() ? path().section(QLatin1Char('/'), -1) : d->packageName;
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
