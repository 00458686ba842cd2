// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ApkFile.h"

#include "archive/ArchiveMembers.h"
#include "archive/BufferedFile.h"
#include "archive/PackageError.h"
#include "document/AndroidNamespace.h"
#include "document/DomAttributes.h"
#include "launchers/LauncherFinder.h"

#include <QDomElement>
#include <QFileInfo>

#include <quazip/quazip.h>
#include <quazip/quazipfile.h>

#include <memory>

namespace {

QDomDocument errorDocument(const QString &message)
{
    QDomDocument document;
    QDomElement element = document.createElement(QStringLiteral("error"));
    element.appendChild(document.createTextNode(message));
    document.appendChild(element);
    return document;
}

} // namespace

class ApkFilePrivate
{
public:
    explicit ApkFilePrivate(std::unique_ptr<QuaZip> archive) : zip(std::move(archive)) {}

    bool isOpen() const;
    bool open();
    /// Opens the archive, which was given by the name @p name.
    bool openFile(const QString &name);
    /// Opens @p member, a file of this archive, on the member of the name @p name.
    bool openMember(QuaZipFile &member, const QString &name);

    std::unique_ptr<BufferedFile> file; ///< that the archive is read through when it was given by name
    std::unique_ptr<QuaZip> zip;
    QDomDocument manifest;
    bool manifestLoaded = false;
    qint32 error = PackageError::NoError;
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
    const QString name = zip->getZipName();
    if (!(name.isEmpty() ? zip->open(QuaZip::mdUnzip) : openFile(name))) {
        error = PackageError::CannotOpen;
        return false;
    }
    // So that of several members of one name the last counts, whatever is looked for first.
    ArchiveMembers::visitNames(zip.get(), [](const QString &) { return true; });
    return true;
}

bool ApkFilePrivate::openFile(const QString &name)
{
    // Opening anything but a file may wait forever: a FIFO, for one, does until somebody writes to it.
    if (!QFileInfo(name).isFile())
        return false;
    file = std::make_unique<BufferedFile>(name);
    zip->setIoDevice(file.get());
    if (zip->open(QuaZip::mdUnzip))
        return true;
    zip->setZipName(name);
    file.reset();
    return false;
}

bool ApkFilePrivate::openMember(QuaZipFile &member, const QString &name)
{
    return zip->setCurrentFile(name, QuaZip::csDefault) && member.open(QIODevice::ReadOnly);
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
    return PackageError::text(d->error);
}

ApkResources ApkFile::resources() const
{
    if (d->resources.isValid() || !d->open())
        return d->resources;
    QuaZipFile file(d->zip.get());
    if (!d->openMember(file, QStringLiteral("resources.arsc"))) {
        d->error = PackageError::NoResources;
        return d->resources;
    }
    if (!d->resources.load(&file))
        d->error = PackageError::BadResources;
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
        d->error = PackageError::NoManifest;
        return errorDocument(getErrorString());
    }
    bool ok = true;
    d->manifest = table.loadXml(&file, &ok);
    if (!ok) {
        d->error = PackageError::BadManifest;
        return errorDocument(getErrorString());
    }
    d->manifestLoaded = true;
    return d->manifest;
}

QString ApkFile::mainPackage()
{
    // Not from the answer: of a manifest that broke off, the part that was decoded is in the cache.
    getManifest();
    return d->manifest.documentElement().attribute(QStringLiteral("package"), QLatin1String(""));
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
    const QDomDocument manifest = getManifest();
    return LauncherFinder(manifest, d->resources, d->zip.get()).launchers(includeDisabled);
}
