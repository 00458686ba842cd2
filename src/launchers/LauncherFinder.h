// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LAUNCHERFINDER_H
#define LAUNCHERFINDER_H

#include "ApkLauncherInfo.h"
#include "ApkResources.h"

#include <QDomDocument>
#include <QList>
#include <QString>

class QuaZip;

/// Finds the launcher entries of a manifest for ApkFile::getLauncherInfo(), within one budget for a call.
class LauncherFinder
{
public:
    /// The work of one call, some 0.7 s: reading and decoding icons, following references, labels, and classes.
    static constexpr qint64 MaxWork = 1 << 27;
    /// The bytes that a call holds: a decoded picture of 4096 x 4096, and names and labels beside it.
    static constexpr qint64 MaxBytes = 65 << 20;
    /// The bytes that a character of a class holds: twice what it takes, so that classes leave room for the rest.
    static constexpr qint64 ClassCharacterBytes = 4;
    /// Elements and attributes of a manifest that hold nothing. Each one more holds NodeBytes, so that a large
    /// manifest, its labels and large pictures keep the bounds together.
    static constexpr int FreeNodes = 8192;
    /// An attribute is two nodes of a DOM, with four strings each, which are larger in Qt 6.
    static constexpr int NodeBytes = 600 + 8 * int(sizeof(QString) - sizeof(void *));

    /// Resolves the references of @p manifest with @p resources. The icon files are in @p archive, which stays the
    /// caller's and may be null: entries have no icons then.
    LauncherFinder(const QDomDocument &manifest, const ApkResources &resources, QuaZip *archive);

    /// The entries that Android shows, or all of them, in the order of the manifest. The list ends before the first
    /// entry whose class does not fit in the budget: each class contains the package's name, which may be long.
    QList<ApkLauncherInfo> launchers(bool includeDisabled) const;

private:
    QDomDocument m_manifest;
    ApkResources m_resources;
    QuaZip *m_archive;
};

#endif
