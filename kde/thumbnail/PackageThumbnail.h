// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PACKAGETHUMBNAIL_H
#define PACKAGETHUMBNAIL_H

#include <KIO/ThumbnailCreator>

/**
 * The icon of an Android package, or of a set of packages, as a thumbnail of KDE's file managers and file dialogs.
 *
 * ThumbnailProgram draws the icon in a process of its own, so no package can end, block or fill the process that has
 * the plugin, which makes the thumbnails of other files as well. The user's shape is that of ThumbnailShape.
 */
class PackageThumbnail : public KIO::ThumbnailCreator
{
    Q_OBJECT

public:
    PackageThumbnail(QObject *parent, const QVariantList &arguments);

    /**
     * The icon as a square that fills the shorter side of the requested size, with the requested device pixel ratio.
     * The size counts pixels of the device already, and a side above 1024 counts as 1024.
     *
     * A failure for a package that cannot be read or has no icon, for one that needs too much time or memory, and for a
     * file that is not on this machine.
     */
    KIO::ThumbnailResult create(const KIO::ThumbnailRequest &request) override;
};

#endif
