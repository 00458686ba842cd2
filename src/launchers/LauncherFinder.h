// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LAUNCHERFINDER_H
#define LAUNCHERFINDER_H

#include "ApkLauncherInfo.h"
#include "ApkResources.h"

#include <QDomDocument>
#include <QList>
#include <QString>

class QuaZip;

/// The launcher entries of a manifest, as ApkFile::getLauncherInfo() answers them.
class LauncherFinder
{
public:
    /// Characters of the classes of all entries; each class has the package's name in it, which may be long. The list
    /// ends before the entry that would exceed it.
    static constexpr int MaxClassCharacters = 1 << 22;
    /// Elements and attributes of a manifest that leave decoding the whole of ArchiveImages::MaxDecodingBytes. Each one
    /// more takes NodeBytes off it, so that a large manifest, its labels and large pictures keep the bounds together.
    static constexpr int FreeNodes = 8192;
    /// An attribute is two nodes of a DOM, with four strings each, which are larger in Qt 6.
    static constexpr int NodeBytes = 600 + 8 * int(sizeof(QString) - sizeof(void *));

    /// In @p manifest. @p resources resolves its references, @p archive has the icon files, and stays the caller's;
    /// without one, entries have no icons.
    LauncherFinder(const QDomDocument &manifest, const ApkResources &resources, QuaZip *archive);

    /// The entries that Android shows, or all of them, in the order of the manifest.
    QList<ApkLauncherInfo> launchers(bool includeDisabled) const;

private:
    QDomDocument m_manifest;
    ApkResources m_resources;
    QuaZip *m_archive;
};

#endif
