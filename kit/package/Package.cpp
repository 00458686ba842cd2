// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Package.h>

#include "archive/PackageError.h"
#include "format/AndroidAttributes.h"
#include "icon/IconRenderer.h"
#include "language/LabelLookup.h"
#include "package/LauncherData.h"
#include "package/PackageData.h"

#include <QSet>

namespace SorrelKit {

namespace {

constexpr int FirstSdkVersion = 1;
constexpr int PreviewSdkVersion = 10000;
constexpr int MaxStandIns = 4;

int sdkVersion(const PackageData &data, quint32 id, int fallback)
{
    const ResolvedValue value = data.resolved(data.manifest().childAttribute(QStringLiteral("uses-sdk"), id));
    if (const auto version = value.value.integer())
        return *version;
    if (value.text.isEmpty())
        return fallback;
    bool isNumber = false;
    const int version = value.text.toInt(&isNumber);
    return isNumber ? version : PreviewSdkVersion;
}

quint32 versionPart(const PackageData &data, quint32 id)
{
    return quint32(data.resolved(data.manifest().root().attribute(id)).value.integer().value_or(0));
}

} // namespace

Package::Package(const QString &fileName) : d(QSharedPointer<PackageData>::create(fileName)) {}
Package::Package(QIODevice *device) : d(QSharedPointer<PackageData>::create(device)) {}
Package::Package(const Package &other) = default;
Package &Package::operator=(const Package &other) = default;
Package::~Package() = default;

Package::Error Package::error() const
{
    return Error(loaded().error());
}

QString Package::errorString() const
{
    const QString fault = loaded().fault();
    const QString text = PackageError::text(d->error());
    return fault.isEmpty() ? text : text + QStringLiteral(": ") + fault;
}

bool Package::isValid() const
{
    return !loaded().manifest().root().isNull();
}

QString Package::packageName() const
{
    return loaded().manifest().packageName();
}

QString Package::versionName() const
{
    return loaded().text(d->manifest().root().attribute(Attr::VersionName));
}

qint64 Package::versionCode() const
{
    loaded();
    return qint64(quint64(versionPart(*d, Attr::VersionCodeMajor)) << 32 | versionPart(*d, Attr::VersionCode));
}

int Package::minSdkVersion() const
{
    return sdkVersion(loaded(), Attr::MinSdkVersion, FirstSdkVersion);
}

int Package::targetSdkVersion() const
{
    return sdkVersion(loaded(), Attr::TargetSdkVersion, minSdkVersion());
}

QStringList Package::permissions() const
{
    QStringList permissions;
    QSet<QString> known;
    for (const XmlElement &child : loaded().manifest().root().children) {
        if (child.name != QLatin1String("uses-permission") && child.name != QLatin1String("uses-permission-sdk-23"))
            continue;
        const QString name = Manifest::text(child, Attr::Name);
        if (!name.isEmpty() && !known.contains(name))
            permissions.append(name);
        known.insert(name);
    }
    return permissions;
}

QList<Feature> Package::features() const
{
    QList<Feature> features;
    for (const XmlElement &child : loaded().manifest().root().children) {
        const QString name = Manifest::text(child, Attr::Name);
        if (child.name == QLatin1String("uses-feature") && !name.isEmpty())
            features.append({name, d->isTrue(child.attribute(Attr::Required), true)});
    }
    return features;
}

quint32 Package::openGlEsVersion() const
{
    qint32 version = 0;
    for (const XmlElement &child : loaded().manifest().root().children) {
        if (child.name == QLatin1String("uses-feature"))
            version = qMax(version, d->resolved(child.attribute(Attr::GlEsVersion)).value.integer().value_or(0));
    }
    return quint32(version);
}

QStringList Package::nativeAbis() const
{
    loaded();
    return d->nativeAbis();
}

QStringList Package::splits() const
{
    return loaded().splits();
}

QMap<QString, QString> Package::labels() const
{
    return LabelLookup(loaded().resolver()).labels(d->manifest().applicationAttribute(Attr::Label));
}

QString Package::label(const QLocale &locale) const
{
    const QString label =
        LabelLookup(loaded().resolver()).label(d->manifest().applicationAttribute(Attr::Label), LanguageTag(locale));
    return label.isEmpty() ? packageName() : label;
}

QImage Package::icon(int size, IconMask mask, QString *error) const
{
    loaded();
    IconRenderer renderer(d->resolver(), d->files());
    const std::optional<ResolvedValue> own = d->applicationIcon();
    IconRequest request(size);
    request.setMask(mask);
    QImage image = renderer.icon(own.value_or(ResolvedValue()), request);
    QString text = renderer.error().text();
    if (image.isNull()) {
        for (const ResolvedValue &icon : d->launcherIcons(MaxStandIns)) {
            image = renderer.icon(icon, request);
            // An application's icon that cannot be drawn stays a fault; one that it does not have is none.
            if (!image.isNull() && !own)
                text = renderer.error().text();
            if (!image.isNull())
                break;
        }
    }
    if (error != nullptr)
        *error = text;
    return image;
}

QList<Launcher> Package::launchers() const
{
    QList<Launcher> launchers;
    const QVector<Manifest::LauncherEntry> entries = loaded().manifest().launchers();
    for (const Manifest::LauncherEntry &entry : entries) {
        auto *const data = new LauncherData;
        data->package = d;
        data->entry = entry;
        data->launcherCount = int(entries.size());
        launchers.append(Launcher(data));
    }
    return launchers;
}

const PackageData &Package::loaded() const
{
    d->load();
    return *d;
}

} // namespace SorrelKit
