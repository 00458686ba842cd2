// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PACKAGEEXTRACTOR_H
#define PACKAGEEXTRACTOR_H

#include <KFileMetaData/ExtractorPlugin>

/**
 * The facts of Android packages, and of sets of packages, for KDE's file managers and its file index: those of
 * PackageProperties. A file that is no package has none.
 *
 * KDE's programs run extractors in processes of their own. The limits of the libraries bound the time and the memory
 * (docs/limits.md).
 */
class PackageExtractor : public KFileMetaData::ExtractorPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.kde.kf5.kfilemetadata.ExtractorPlugin" FILE "sorrelextractor.json")
    Q_INTERFACES(KFileMetaData::ExtractorPlugin)

public:
    explicit PackageExtractor(QObject *parent = nullptr);

    QStringList mimetypes() const override;
    /// Adds the facts to @p result when it takes properties. May be called in several threads.
    void extract(KFileMetaData::ExtractionResult *result) override;
};

#endif
