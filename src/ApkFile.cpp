// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ApkFile.h"

#include "AndroidNamespace.h"
#include "ApkError.h"
#include "ApkLauncherInfoData.h"
#include "IconLookup.h"
#include "LocaleLookup.h"
#include "ResourceReference.h"

#include <QDomElement>
#include <QFileInfo>
#include <QHash>

#include <quazip/quazip.h>
#include <quazip/quazipfile.h>

#include <memory>

namespace {

constexpr int LabelReferenceDepth = 5;

QDomDocument errorDocument(const QString &message)
{
    QDomDocument document;
    QDomElement element = document.createElement(QStringLiteral("error"));
    element.appendChild(document.createTextNode(message));
    document.appendChild(element);
    return document;
}

QString androidAttribute(const QDomElement &element, const QString &name)
{
    return element.attributeNS(androidNamespace, name, QString());
}

bool hasChildWithAndroidAttribute(const QDomElement &parent, const QString &tag, const QString &attribute,
                                  const QString &value)
{
    for (QDomElement child = parent.firstChildElement(tag); !child.isNull(); child = child.nextSiblingElement(tag)) {
        if (androidAttribute(child, attribute) == value)
            return true;
    }
    return false;
}

bool isLauncherFilter(const QDomElement &filter)
{
    const QString name = QStringLiteral("name");
    return hasChildWithAndroidAttribute(filter, QStringLiteral("category"), name,
                                        QStringLiteral("android.intent.category.LAUNCHER"))
           && hasChildWithAndroidAttribute(filter, QStringLiteral("action"), name,
                                           QStringLiteral("android.intent.action.MAIN"));
}

// The attribute of the first of filter, activity and application that has it.
QString innermostAttribute(const QDomElement &filter, const QString &name)
{
    QDomElement element = filter;
    QString value = androidAttribute(element, name);
    for (int level = 0; level < 2 && value.isEmpty(); ++level) {
        element = element.parentNode().toElement();
        value = androidAttribute(element, name);
    }
    return value;
}

QString className(const QDomElement &activity, const QString &package)
{
    const QLatin1Char dot('.');
    const bool isAlias = activity.tagName() == QLatin1String("activity-alias");
    QString name = androidAttribute(activity, isAlias ? QStringLiteral("targetActivity") : QStringLiteral("name"));
    if (!name.contains(dot))
        name.prepend(dot);
    return name.startsWith(dot) ? package + name : name;
}

/// Which launchers Android shows. What a reference says is remembered while this object lives.
class VisibilityRules
{
public:
    explicit VisibilityRules(const ApkResources &resources) : m_resources(resources) {}

    // Only the activity's "enabled" is resolved; that of the application, and "exported", count as written: kept so.
    bool isShown(const QDomElement &activity, const QDomElement &application)
    {
        const QString no = QStringLiteral("false");
        const QString enabled = QStringLiteral("enabled");
        return resolved(androidAttribute(activity, enabled)) != no && androidAttribute(application, enabled) != no
               && androidAttribute(activity, QStringLiteral("exported")) != no;
    }

private:
    QString resolved(const QString &value)
    {
        if (!ResourceReference::isMarked(value))
            return value;
        if (!m_known.contains(value))
            m_known.insert(value, m_resources.lookupAllByConfig(value).value(QString()));
        return m_known.value(value);
    }

    const ApkResources &m_resources;
    QHash<QString, QString> m_known;
};

} // namespace

class ApkFilePrivate
{
public:
    explicit ApkFilePrivate(std::unique_ptr<QuaZip> archive) : zip(std::move(archive)) {}

    bool isOpen() const;
    bool open();
    /// Opens @p file, a file of this archive, on the member @p name.
    bool openMember(QuaZipFile &file, const QString &name);

    std::unique_ptr<QuaZip> zip;
    QDomDocument manifest;
    bool manifestLoaded = false;
    qint32 error = ApkError::NoError;
    ApkResources resources;
};

bool ApkFilePrivate::isOpen() const
{
    if (zip->isOpen())
        return true;
    // A device that the caller opened counts as an open archive, although no member is found in it: kept so.
    const QIODevice *device = zip->getIoDevice();
    return device != nullptr && device->isOpen();
}

bool ApkFilePrivate::open()
{
    if (isOpen())
        return true;
    // Opening anything but a file may wait forever: a FIFO, for one, does until somebody writes to it.
    const QString name = zip->getZipName();
    const bool mayBeOpened = name.isEmpty() || QFileInfo(name).isFile();
    if (mayBeOpened && zip->open(QuaZip::mdUnzip))
        return true;
    error = ApkError::CannotOpen;
    return false;
}

bool ApkFilePrivate::openMember(QuaZipFile &file, const QString &name)
{
    return zip->setCurrentFile(name, QuaZip::csDefault) && file.open(QIODevice::ReadOnly);
}

ApkFile::ApkFile(const QString &fileName, QObject *parent)
    : QObject(parent), d(new ApkFilePrivate(std::make_unique<QuaZip>(fileName)))
{
}

ApkFile::ApkFile(QIODevice *device, QObject *parent)
    : QObject(parent), d(new ApkFilePrivate(std::make_unique<QuaZip>(device)))
{
}

ApkFile::~ApkFile()
{
    delete d;
}

bool ApkFile::isOpen() const
{
    return d->isOpen();
}

bool ApkFile::open()
{
    return d->open();
}

int ApkFile::getError() const
{
    return d->error;
}

QString ApkFile::getErrorString() const
{
    return ApkError::text(d->error);
}

ApkResources ApkFile::resources() const
{
    if (d->resources.isValid() || !d->open())
        return d->resources;
    QuaZipFile file(d->zip.get());
    if (!d->openMember(file, QStringLiteral("resources.arsc"))) {
        d->error = ApkError::NoResources;
        return d->resources;
    }
    if (!d->resources.load(&file))
        d->error = ApkError::BadResources;
    return d->resources;
}

QDomDocument ApkFile::getManifest() const
{
    if (d->manifestLoaded)
        return d->manifest;
    const ApkResources table = resources();
    if (!table.isValid())
        return errorDocument(getErrorString());
    QuaZipFile file(d->zip.get());
    if (!d->openMember(file, QStringLiteral("AndroidManifest.xml"))) {
        d->error = ApkError::NoManifest;
        return errorDocument(getErrorString());
    }
    bool ok = true;
    d->manifest = table.loadXml(&file, &ok);
    if (!ok) {
        d->error = ApkError::BadManifest;
        return errorDocument(getErrorString());
    }
    d->manifestLoaded = true;
    return d->manifest;
}

QString ApkFile::mainPackage()
{
    // Not from the answer: of a manifest that broke off, the part that was decoded is in the cache.
    getManifest();
    return d->manifest.documentElement().attribute(QStringLiteral("package"), QString());
}

int ApkFile::minSdkVersion() const
{
    const QString name = QStringLiteral("minSdkVersion");
    const QDomNodeList elements = getManifest().elementsByTagName(QStringLiteral("uses-sdk"));
    for (int i = 0; i < elements.length(); ++i) {
        const QDomElement element = elements.item(i).toElement();
        if (element.hasAttributeNS(androidNamespace, name))
            return androidAttribute(element, name).toInt(nullptr, 10);
    }
    return 1;
}

QList<ApkLauncherInfo> ApkFile::getLauncherInfo(bool includeDisabled)
{
    QList<ApkLauncherInfo> launchers;
    const QDomNodeList filters = getManifest().elementsByTagName(QStringLiteral("intent-filter"));
    VisibilityRules rules(d->resources);
    IconLookup icons(d->resources, d->zip.get());
    LocaleLookup labels(d->resources);
    for (int i = 0; i < filters.length(); ++i) {
        const QDomElement filter = filters.item(i).toElement();
        if (!isLauncherFilter(filter))
            continue;
        const QDomElement activity = filter.parentNode().toElement();
        const QDomElement application = activity.parentNode().toElement();
        if (!activity.tagName().startsWith(QLatin1String("activity"))
            || application.tagName() != QLatin1String("application"))
            continue;
        if (!includeDisabled && !rules.isShown(activity, application))
            continue;

        ApkLauncherInfo info;
        const QString icon = innermostAttribute(filter, QStringLiteral("icon"));
        if (!icon.isEmpty())
            info.d->icons = icons.images(icon);
        info.d->package = mainPackage();
        info.d->className = className(activity, info.d->package);
        const QString label = innermostAttribute(filter, QStringLiteral("label"));
        if (!label.isEmpty())
            info.d->labels = labels.byReference(label, LabelReferenceDepth);
        launchers.append(info);
    }
    return launchers;
}
