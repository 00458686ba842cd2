// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PackageExtractor.h"

#include "PackageProperties.h"
#include "UsedPlatform.h"

#include <KFileMetaData/ExtractionResult>

#include <QFile>
#include <QLocale>

#include <new>

using KFileMetaData::ExtractionResult;

namespace {

// The language of the user's messages, which may differ from that of the number format.
QLocale userLocale()
{
    const QStringList languages = QLocale::system().uiLanguages();
    return languages.isEmpty() ? QLocale() : QLocale(languages.constFirst());
}

} // namespace

PackageExtractor::PackageExtractor(QObject *parent) : KFileMetaData::ExtractorPlugin(parent) {}

// KDE reads the same types from sorrelextractor.json before it loads the plugin.
QStringList PackageExtractor::mimetypes() const
{
    return {
        QStringLiteral("application/vnd.android.package-archive"),
        QStringLiteral("application/x-apks"),
        QStringLiteral("application/xapk-package-archive"),
        QStringLiteral("application/vnd.apkm"),
    };
}

void PackageExtractor::extract(ExtractionResult *result)
{
    if (!result->inputFlags().testFlag(ExtractionResult::ExtractMetaData))
        return;
    const QByteArray path = QFile::encodeName(result->inputUrl());
    try {
        const PackageProperties properties(UsedPlatform::package(FileName(path)), userLocale());
        if (!properties.isValid())
            return;
        result->addType(KFileMetaData::Type::Archive);
        result->add(KFileMetaData::Property::Title, properties.title());
        result->add(KFileMetaData::Property::Subject, properties.packageAndVersion());
        result->add(KFileMetaData::Property::Description, properties.permissions());
        const QString signer = properties.signer(QFile(result->inputUrl()).size());
        if (!signer.isEmpty())
            result->add(KFileMetaData::Property::Publisher, signer);
    } catch (const std::bad_alloc &) {
        // The file has the facts that were added.
    }
}
